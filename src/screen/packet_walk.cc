#include "screen/packet_walk.h"

#include <cstring>

#include "model/registry.h"
#include "policy/rule.h"
#include "screen/interface.h"
#include "services/state_engine.h"

PacketWalk::PacketWalk(const Registry& registry) {
  for (TList_Cell<Entity>* cell = registry.StateEngines().Head(); cell != nullptr; cell = cell->Next()) {
    const StateEngine& engine = *static_cast<const StateEngine*>(cell->Data());
    int kind = kinds_.Of(engine);
    protocols_.emplace(engine.Name(), kind);
    if (protocol_number_kind_ < 0 && strcmp(engine.DiscriminatorLabel(), "protocol") == 0)
      protocol_number_kind_ = kind;
  }
  // A name in two families is the first family's; the reverse interface
  // "Ferrowall" is the routing family's.
  for (TList<Entity>* family : {&registry.GWYInterfaces(), &registry.AdminInterfaces(), &registry.CLKInterfaces()})
    AddInterfaces(*family);
}

void PacketWalk::AddInterfaces(const TList<Entity>& family) {
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
    const Interface& interface = *static_cast<const Interface*>(cell->Data());
    auto added = interfaces_.emplace(interface.Name(), Rules());
    if (!added.second) continue;
    Rules& rules = added.first->second;
    for (TList_Cell<Entity>* rule = interface.Rules().Head(); rule != nullptr; rule = rule->Next()) {
      const Rule& distributed = *static_cast<const Rule*>(rule->Data());
      rules.entries.push_back({&distributed, RuleTraffic(distributed, kinds_)});
      rules.index.Add(rules.entries.back().traffic, rules.entries.size() - 1);
    }
  }
}

bool PacketWalk::ServiceValue(const Packet& packet, uint64_t* value) const {
  const std::string& protocol = packet.protocol;
  if (protocol.find_first_not_of("0123456789") == std::string::npos && protocol.size() <= 3) {
    int number = atoi(protocol.c_str());
    if (protocol_number_kind_ < 0 || number > 255) return false;
    *value = RuleTraffic::ServiceValue(protocol_number_kind_, number);
    return true;
  }
  auto found = protocols_.find(protocol);
  if (found == protocols_.end()) return false;
  *value = RuleTraffic::ServiceValue(found->second, packet.destination_port);
  return true;
}

bool PacketWalk::Decide(const Packet& packet, const Rule** decider, std::string* fault) {
  auto interface = interfaces_.find(packet.interface);
  if (interface == interfaces_.end()) {
    *fault = "no interface " + packet.interface;
    return false;
  }
  RuleTraffic::Point point;
  if (!ServiceValue(packet, &point[RuleTraffic::kService])) {
    *fault = "no protocol " + packet.protocol;
    return false;
  }
  point[RuleTraffic::kSource] = packet.source;
  point[RuleTraffic::kDestination] = packet.destination;
  point[RuleTraffic::kTime] =
      packet.timed ? packet.day * RuleTraffic::kDayMinutes + packet.minute : RuleTraffic::kWeek;
  *decider = nullptr;
  const Rules& rules = interface->second;
  rules.index.Walk(point[RuleTraffic::kService], [&](size_t number) {
    const Entry& entry = rules.entries[number];
    if (!entry.traffic.Takes(point)) return false;
    *decider = entry.rule;
    return true;
  });
  return true;
}
