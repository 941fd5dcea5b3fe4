#include "policy/shadowed_rules.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>
#include <vector>

#include "policy/rule.h"
#include "policy/rule_traffic.h"
#include "policy/traffic_index.h"

namespace {

using Box = std::array<TrafficInterval, RuleTraffic::kDimensions>;

// A rule whose uncovered remainder breaks into more pieces than this is
// taken as not covered, rather than followed at any cost.
const size_t kMostPieces = 4096;

struct Entry {
  const Rule* origin;
  RuleTraffic traffic;
};

bool Meet(const TrafficInterval& a, const TrafficInterval& b) { return a.low <= b.high && b.low <= a.high; }

bool Meet(const RuleTraffic::Intervals& a, const RuleTraffic::Intervals& b) {
  size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    if (Meet(a[i], b[j])) return true;
    if (a[i].high < b[j].high) ++i; else ++j;
  }
  return false;
}

bool Meet(const RuleTraffic& a, const RuleTraffic& b) {
  for (int dimension = 0; dimension < RuleTraffic::kDimensions; ++dimension) {
    auto which = static_cast<RuleTraffic::Dimension>(dimension);
    if (!Meet(a.In(which), b.In(which))) return false;
  }
  return true;
}

// The boxes whose union is the traffic: one for each choice of an interval
// in every dimension.
std::vector<Box> Boxes(const RuleTraffic& traffic) {
  std::vector<Box> boxes(1);
  for (int dimension = 0; dimension < RuleTraffic::kDimensions; ++dimension) {
    std::vector<Box> grown;
    for (const Box& box : boxes) {
      for (const TrafficInterval& interval : traffic.In(static_cast<RuleTraffic::Dimension>(dimension))) {
        grown.push_back(box);
        grown.back()[dimension] = interval;
      }
    }
    boxes.swap(grown);
  }
  return boxes;
}

// Appends to `rest` what of `box` lies outside `cut`; true if anything of
// it lay inside.
bool Subtract(Box box, const Box& cut, std::vector<Box>* rest) {
  for (int dimension = 0; dimension < RuleTraffic::kDimensions; ++dimension) {
    if (!Meet(box[dimension], cut[dimension])) {
      rest->push_back(box);
      return false;
    }
  }
  for (int dimension = 0; dimension < RuleTraffic::kDimensions; ++dimension) {
    TrafficInterval& side = box[dimension];
    if (side.low < cut[dimension].low) {
      rest->push_back(box);
      rest->back()[dimension].high = cut[dimension].low - 1;
      side.low = cut[dimension].low;
    }
    if (side.high > cut[dimension].high) {
      rest->push_back(box);
      rest->back()[dimension].low = cut[dimension].high + 1;
      side.high = cut[dimension].high;
    }
  }
  return true;
}

// Removes the candidate's traffic from `remainder`; true if it took any.
bool Take(const RuleTraffic& candidate, std::vector<Box>* remainder) {
  bool took = false;
  for (const Box& cut : Boxes(candidate)) {
    std::vector<Box> rest;
    for (const Box& box : *remainder) took |= Subtract(box, cut, &rest);
    remainder->swap(rest);
    if (remainder->empty() || remainder->size() > kMostPieces) break;
  }
  return took;
}

// The entries of other origins before entry `index` that cover it, in
// order, or nothing when they don't.
std::vector<size_t> Covering(const std::vector<Entry>& entries, const std::vector<size_t>& candidates, size_t index) {
  const Entry& entry = entries[index];
  std::vector<Box> remainder = Boxes(entry.traffic);
  std::vector<size_t> used;
  for (size_t candidate : candidates) {
    const Entry& earlier = entries[candidate];
    if (earlier.origin == entry.origin || !Meet(earlier.traffic, entry.traffic)) continue;
    if (Take(earlier.traffic, &remainder)) used.push_back(candidate);
    if (remainder.empty()) return used;
    if (remainder.size() > kMostPieces) break;
  }
  return {};
}

}  // namespace

std::vector<ShadowedRules::Finding> ShadowedRules::Find(const TList<Entity>& rules) {
  std::vector<Entry> entries;
  TrafficKinds kinds;
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next()) {
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    entries.push_back({rule.Origin(), RuleTraffic(rule, kinds)});
  }
  // Per written rule: whether every piece so far is covered, and by whom.
  struct Verdict {
    bool covered = true;
    std::vector<size_t> covering;
  };
  std::map<size_t, Verdict> verdicts;  // by the index of the rule's first piece
  std::unordered_map<const Rule*, size_t> first_piece;
  TrafficIndex index;
  for (size_t at = 0; at < entries.size(); ++at) {
    const Entry& entry = entries[at];
    Verdict& verdict = verdicts[first_piece.emplace(entry.origin, at).first->second];
    if (verdict.covered) {
      std::vector<size_t> covering =
          entry.traffic.Empty() ? std::vector<size_t>() : Covering(entries, index.Candidates(entry.traffic, at), at);
      verdict.covered = !covering.empty();
      verdict.covering.insert(verdict.covering.end(), covering.begin(), covering.end());
    }
    index.Add(entry.traffic, at);
  }
  std::vector<Finding> findings;
  for (auto& [first, verdict] : verdicts) {
    if (!verdict.covered) continue;
    Finding finding{entries[first].origin, {}};
    std::sort(verdict.covering.begin(), verdict.covering.end());
    for (size_t piece : verdict.covering) {
      const Rule* origin = entries[piece].origin;
      if (std::find(finding.covering.begin(), finding.covering.end(), origin) == finding.covering.end())
        finding.covering.push_back(origin);
    }
    findings.push_back(finding);
  }
  return findings;
}
