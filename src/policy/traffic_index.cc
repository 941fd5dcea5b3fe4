#include "policy/traffic_index.h"

#include <algorithm>

bool TrafficIndex::Wide(const RuleTraffic& traffic) {
  uint64_t buckets = 0;
  for (const TrafficInterval& interval : traffic.In(RuleTraffic::kService))
    buckets += (interval.high >> kBucketBits) - (interval.low >> kBucketBits) + 1;
  return buckets > kMostBuckets;
}

void TrafficIndex::Add(const RuleTraffic& traffic, size_t number) {
  if (Wide(traffic)) {
    wide_.push_back(number);
    return;
  }
  for (const TrafficInterval& interval : traffic.In(RuleTraffic::kService)) {
    for (uint64_t bucket = interval.low >> kBucketBits; bucket <= interval.high >> kBucketBits; ++bucket) {
      std::vector<size_t>& members = buckets_[bucket];
      if (members.empty() || members.back() != number) members.push_back(number);
    }
  }
}

std::vector<size_t> TrafficIndex::Candidates(const RuleTraffic& traffic, size_t below) const {
  std::vector<size_t> found;
  if (Wide(traffic)) {
    for (size_t number = 0; number < below; ++number) found.push_back(number);
    return found;
  }
  found = wide_;
  for (const TrafficInterval& interval : traffic.In(RuleTraffic::kService)) {
    for (uint64_t bucket = interval.low >> kBucketBits; bucket <= interval.high >> kBucketBits; ++bucket) {
      auto members = buckets_.find(bucket);
      if (members != buckets_.end()) found.insert(found.end(), members->second.begin(), members->second.end());
    }
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  while (!found.empty() && found.back() >= below) found.pop_back();
  return found;
}
