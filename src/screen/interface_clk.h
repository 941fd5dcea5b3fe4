// InterfaceCLK is a stealth interface: the screen bridges on that side and
// has no address of its own there but the one of its stealth network.  It
// is always strict and has no overlap.  Besides the base's rules it keeps
// the rules at the Ethernet level, and the routers the statement lists.
#ifndef FW_SCREEN_INTERFACE_CLK_H
#define FW_SCREEN_INTERFACE_CLK_H

#include "screen/interface.h"

class InterfaceCLK : public Interface {
 public:
  // Takes `routers` (addresses in host byte order; null for none).
  InterfaceCLK(const char* name, const char* protected_name, Log_Type log, SNMP_Type snmp,
               ICMP_Type icmp, TList<unsigned>* routers, const char* screen, const char* comment);
  ~InterfaceCLK() override;

  // As the base, and the Ethernet rules as well.
  void Mark() override;
  void CleanUp() override;
  // The interface address and the stealth broadcast set come from the
  // screen's stealth network; the host isn't asked.
  void SetAddresses(const Ferrowall& screen) override;
  // As the base, and on the Ethernet rules as well.
  void RemoveIntraInterfaceRules() override;
  // As the base, with the routers before the comment.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

  const TList<unsigned>* Routers() const { return routers_; }
  TList<Entity>& EtherRules() const { return *ether_rules_; }

 private:
  void DeleteEtherRules();
  // Each router dotted, behind `word` (which may be empty) and followed by
  // a blank.
  std::ostream& PrintRouters(std::ostream& out, const char* word) const;

  TList<unsigned>* routers_;
  TList<Entity>* ether_rules_;
};

#endif
