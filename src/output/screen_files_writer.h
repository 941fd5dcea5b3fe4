// ScreenFilesWriter writes the small settings files of the compiled screen:
// Screen, snmp_timer, Dest, Slaves and HA.  Each operation writes the
// content of one file; the predicates say whether the file is wanted.
#ifndef FW_OUTPUT_SCREEN_FILES_WRITER_H
#define FW_OUTPUT_SCREEN_FILES_WRITER_H

#include <ostream>

class Ferrowall;
class Registry;

class ScreenFilesWriter {
 public:
  // The receivers of SNMP traps the product can serve.
  static const int kMaxSNMPReceivers = 5;

  // Screen: the HA role, the master, the SNMP receivers and the log size.
  // More receivers than the product serves are cut, with a warning on
  // `warnings`.
  static std::ostream& GenerateScreenFile(std::ostream& out, const Ferrowall& screen,
                                          std::ostream& warnings);
  // snmp_timer is wanted when there is a receiver and a timer.
  static bool WantsSNMPTimer(const Ferrowall& screen);
  static std::ostream& GenerateSNMPTimer(std::ostream& out, const Ferrowall& screen);
  // Dest: "DEST_CHECK 0" or "DEST_CHECK 1".
  static std::ostream& GenerateDest(std::ostream& out, const Ferrowall& screen);
  // Slaves: each screen that has `screen` as master, an ADMIN_IP and no HA
  // secondary role, with the first address of its ADMIN_IP.
  static std::ostream& GenerateSlaves(std::ostream& out, const Ferrowall& screen,
                                      const Registry& registry);
  // The primary of the HA pair `screen` belongs to: its master when it is
  // the secondary, itself when it is the primary; null otherwise.
  static const Ferrowall* HAPrimary(const Ferrowall& screen);
  // HA: the primary as host 1, then its secondaries in list order.
  static std::ostream& GenerateHA(std::ostream& out, const Ferrowall& primary,
                                  const Registry& registry);

 private:
  // Whether `candidate`'s resolved master bears `name`.
  static bool HasMaster(const Ferrowall& candidate, const char* name);
  // "HA_HOST \"name\" <number>" and the HA address when there is one.
  static std::ostream& HAHost(std::ostream& out, const Ferrowall& host, int number);
};

#endif
