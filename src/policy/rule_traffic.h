// RuleTraffic is the traffic that one rule can decide, flattened for
// questions that are asked many times: four dimensions of sorted, disjoint
// intervals, the source and destination addresses, the service and the
// minutes of the week in which the rule holds.  A point of the four is one
// packet.
//
// A service value is its kind of traffic in the high word and the value
// (port, ICMP type, program number) in the low word.  A kind is an engine
// class together with what its values mean: a packet names its protocol,
// not an engine, so it meets every engine that could take it.  A minute of
// the week is the day (Sunday 0) times kDayMinutes plus the minute; a rule
// without a time holds at kWeek as well, the minute of packets without one.
#ifndef FW_POLICY_RULE_TRAFFIC_H
#define FW_POLICY_RULE_TRAFFIC_H

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

class Rule;
class StateEngine;

struct TrafficInterval {
  uint64_t low;
  uint64_t high;
};

// The kinds of traffic met so far, numbered from 0 in order of meeting.
class TrafficKinds {
 public:
  int Of(const StateEngine& engine);

 private:
  std::map<std::pair<int, std::string>, int> kinds_;
};

class RuleTraffic {
 public:
  enum Dimension { kSource, kDestination, kService, kTime, kDimensions };
  using Point = std::array<uint64_t, kDimensions>;
  using Intervals = std::vector<TrafficInterval>;

  static const uint64_t kDayMinutes = 1441;
  static const uint64_t kWeek = 7 * kDayMinutes;

  // Reads the rule's resolved addresses, service and time.
  RuleTraffic(const Rule& rule, TrafficKinds& kinds);

  static uint64_t ServiceValue(int kind, uint32_t value) { return static_cast<uint64_t>(kind) << 32 | value; }

  bool Takes(const Point& packet) const;
  const Intervals& In(Dimension dimension) const { return dimensions_[dimension]; }
  bool Empty() const;

 private:
  std::array<Intervals, kDimensions> dimensions_;
};

#endif
