// TrafficIndex files numbered rule traffics by their service values, so
// that the traffics that may meet a given one, or hold a given packet, are
// found without looking at all of them.  Values fall into buckets of 256
// of one kind; a traffic whose services span many buckets is wide and is
// offered for every question.  Numbers must be added in ascending order,
// and every answer keeps that order, which is the order of the rules.
#ifndef FW_POLICY_TRAFFIC_INDEX_H
#define FW_POLICY_TRAFFIC_INDEX_H

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "policy/rule_traffic.h"

class TrafficIndex {
 public:
  void Add(const RuleTraffic& traffic, size_t number);

  // The numbers below `below` whose services may meet the traffic's.
  std::vector<size_t> Candidates(const RuleTraffic& traffic, size_t below) const;

  // Offers `visit` the numbers whose services may hold the service value,
  // until it answers true; returns whether one did.
  template <class Visit>
  bool Walk(uint64_t value, Visit visit) const {
    static const std::vector<size_t> kNone;
    auto found = buckets_.find(value >> kBucketBits);
    const std::vector<size_t>& narrow = found != buckets_.end() ? found->second : kNone;
    size_t i = 0, j = 0;
    while (i < narrow.size() || j < wide_.size()) {
      bool take_narrow = j == wide_.size() || (i < narrow.size() && narrow[i] < wide_[j]);
      if (visit(take_narrow ? narrow[i++] : wide_[j++])) return true;
    }
    return false;
  }

 private:
  static const int kBucketBits = 8;
  static const uint64_t kMostBuckets = 16;
  static bool Wide(const RuleTraffic& traffic);

  std::vector<size_t> wide_;
  std::unordered_map<uint64_t, std::vector<size_t>> buckets_;
};

#endif
