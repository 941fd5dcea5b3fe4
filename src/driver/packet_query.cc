#include "driver/packet_query.h"

#include <iostream>

#include "driver/configuration.h"
#include "model/address.h"
#include "model/range.h"
#include "model/registry.h"
#include "policy/nat.h"
#include "policy/policy.h"
#include "policy/rule.h"

PacketQuery::PacketQuery(const Configuration& config, const StatementNumbers& rules, const StatementNumbers& nats)
    : config_(config), rules_(rules), nats_(nats), walk_(*config.TheRegistry()) {}

bool PacketQuery::Answer(const std::string& text, std::ostream& out) {
  Packet packet;
  std::string fault;
  const Rule* decider = nullptr;
  if (!Packet::Read(text, &packet, &fault) || !walk_.Decide(packet, &decider, &fault)) {
    std::cerr << "fw_config: " << text << ": " << fault << std::endl;
    return false;
  }
  out << text << " -> ";
  if (decider == nullptr) {
    out << "DENY by default\n";
    return true;
  }
  out << (decider->Action() == ACTION_ALLOW ? "ALLOW" : "DENY") << " by ";
  // Copies lead back to the written rule; the rules the compile makes for
  // administration lead to themselves and have no number.
  const Rule& written = *decider->Origin();
  if (rules_.Of(written) != 0) rules_.Describe(out, "rule", written);
  else out << "administrative rule: " << *decider;
  // A refused packet goes nowhere to be translated.
  const Nat* nat = decider->Action() == ACTION_ALLOW ? Translation(packet) : nullptr;
  if (nat != nullptr) nats_.Describe(out << "  translated by ", "NAT", *nat);
  return true;
}

const Nat* PacketQuery::Translation(const Packet& packet) const {
  Range source(packet.source, packet.source, RT_ADDRESS, RS_ADDRESSES);
  Range destination(packet.destination, packet.destination, RT_ADDRESS, RS_ADDRESSES);
  for (TList_Cell<Entity>* cell = config_.ThePolicy()->Nats().Items().Head(); cell != nullptr; cell = cell->Next()) {
    const Nat& nat = *static_cast<const Nat*>(cell->Data());
    if (nat.Resolved(NAT_ORIGINAL_SOURCE)->Contains(source) &&
        nat.Resolved(NAT_ORIGINAL_DESTINATION)->Contains(destination))
      return &nat;
  }
  return nullptr;
}
