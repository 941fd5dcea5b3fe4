// PacketWalk answers which rule decides a packet: it walks the distributed
// rules of the packet's interface in list order, as the filter does, and
// the first rule whose traffic holds the packet decides; past the last
// rule the default refuses.  The rules of every interface are flattened
// once and indexed, so that a packet is tested only against the rules
// whose services may take it.
//
// A protocol name selects the kind of traffic of the state engine of that
// name, and the destination port is the engine's value; a protocol number
// is the value of the engines whose values are protocols.  A packet
// without a time meets no rule that has one.
#ifndef FW_SCREEN_PACKET_WALK_H
#define FW_SCREEN_PACKET_WALK_H

#include <string>
#include <unordered_map>
#include <vector>

#include "model/entity.h"
#include "policy/rule_traffic.h"
#include "policy/traffic_index.h"
#include "screen/packet.h"

class Registry;
class Rule;

class PacketWalk {
 public:
  // Reads the interfaces' rule lists, which must be distributed.
  explicit PacketWalk(const Registry& registry);

  // False, with the reason in `fault`, for an unknown interface or
  // protocol; otherwise the deciding rule, null for the default.
  bool Decide(const Packet& packet, const Rule** decider, std::string* fault);

 private:
  struct Entry {
    const Rule* rule;
    RuleTraffic traffic;
  };
  struct Rules {
    std::vector<Entry> entries;
    TrafficIndex index;
  };
  void AddInterfaces(const TList<Entity>& family);
  // The packet's service value, or false for a protocol of no engine.
  bool ServiceValue(const Packet& packet, uint64_t* value) const;

  TrafficKinds kinds_;
  std::unordered_map<std::string, Rules> interfaces_;
  std::unordered_map<std::string, int> protocols_;
  int protocol_number_kind_ = -1;
};

#endif
