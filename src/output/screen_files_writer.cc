#include "output/screen_files_writer.h"

#include <cstdio>
#include <cstring>

#include "model/address.h"
#include "model/registry.h"
#include "screen/ferrowall.h"
#include "support/fwi18n.h"

namespace {

// Six hexadecimal bytes without leading zeros, joined by colons.
std::ostream& ether_text(std::ostream& out, const unsigned char* ether) {
  char text[18];
  snprintf(text, sizeof text, "%x:%x:%x:%x:%x:%x", ether[0], ether[1], ether[2], ether[3], ether[4],
           ether[5]);
  return out << text;
}

}  // namespace

std::ostream& ScreenFilesWriter::GenerateScreenFile(std::ostream& out, const Ferrowall& screen,
                                                    std::ostream& warnings) {
  if (screen.HA_Primary()) out << "HA primary\n";
  else if (screen.HA_Secondary()) out << "HA secondary\n";
  // Nothing reads the master line back but its presence; the master's name
  // stays the same from one compile to the next.
  if (screen.MasterResolved() != nullptr) out << "MASTER " << screen.MasterResolved()->Name() << '\n';
  const TList<unsigned>* receivers = screen.SNMP_Recipients();
  if (receivers != nullptr && !receivers->Empty()) {
    out << "SNMP_ALERTS";
    int written = 0;
    for (TList_Cell<unsigned>* cell = receivers->Head(); cell != nullptr; cell = cell->Next()) {
      if (written == kMaxSNMPReceivers) {
        warnings << fwi18n_text(48, 62, "Warning: Exceeded maximum of 5 supported SNMP receivers.")
                 << '\n';
        break;
      }
      out << ' ' << dotted_address(*cell->Data());
      ++written;
    }
    out << '\n';
  }
  return out << "LOG_SIZE " << screen.LogSize() << '\n';
}

bool ScreenFilesWriter::WantsSNMPTimer(const Ferrowall& screen) {
  return screen.SNMP_Recipients() != nullptr && !screen.SNMP_Recipients()->Empty() &&
         screen.SNMP_Timer() != 0;
}

std::ostream& ScreenFilesWriter::GenerateSNMPTimer(std::ostream& out, const Ferrowall& screen) {
  return out << screen.SNMP_Timer() << '\n';
}

std::ostream& ScreenFilesWriter::GenerateDest(std::ostream& out, const Ferrowall& screen) {
  return out << "DEST_CHECK " << (screen.dest_check() ? 1 : 0) << '\n';
}

std::ostream& ScreenFilesWriter::GenerateSlaves(std::ostream& out, const Ferrowall& screen,
                                                const Registry& registry) {
  for (TList_Cell<Entity>* cell = registry.Screens().Head(); cell != nullptr; cell = cell->Next()) {
    const Ferrowall& slave = *static_cast<Ferrowall*>(cell->Data());
    if (!HasMaster(slave, screen.Name()) || slave.HA_Secondary()) continue;
    const Address* admin_ip = slave.AdminIP();
    if (admin_ip == nullptr || admin_ip->Ranges().Empty()) continue;
    out << slave.Name() << ' ' << dotted_address(admin_ip->Ranges().Head()->Data()->Start()) << '\n';
  }
  return out;
}

const Ferrowall* ScreenFilesWriter::HAPrimary(const Ferrowall& screen) {
  if (screen.HA_Secondary()) return screen.MasterResolved();
  return screen.HA_Primary() ? &screen : nullptr;
}

std::ostream& ScreenFilesWriter::GenerateHA(std::ostream& out, const Ferrowall& primary,
                                            const Registry& registry) {
  out << "STATUS ON\n";
  if (primary.HA_Ether() != nullptr) ether_text(out << "ETHER_ADDR ", primary.HA_Ether()) << '\n';
  int number = 1;
  HAHost(out, primary, number);
  // A secondary without a master has no primary to compare with, so it is
  // left out like any other stranger.
  for (TList_Cell<Entity>* cell = registry.Screens().Head(); cell != nullptr; cell = cell->Next()) {
    const Ferrowall& secondary = *static_cast<Ferrowall*>(cell->Data());
    if (secondary.HA_Secondary() && HasMaster(secondary, primary.Name()))
      HAHost(out, secondary, ++number);
  }
  return out;
}

bool ScreenFilesWriter::HasMaster(const Ferrowall& candidate, const char* name) {
  const Ferrowall* master = candidate.MasterResolved();
  return master != nullptr && strcmp(master->Name(), name) == 0;
}

std::ostream& ScreenFilesWriter::HAHost(std::ostream& out, const Ferrowall& host, int number) {
  out << "HA_HOST \"" << host.Name() << "\" " << number;
  if (host.HA_IP() != 0) out << ' ' << dotted_address(host.HA_IP());
  return out << '\n';
}
