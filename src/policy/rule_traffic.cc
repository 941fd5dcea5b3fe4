#include "policy/rule_traffic.h"

#include <algorithm>

#include "model/address.h"
#include "model/day_of_week.h"
#include "model/range.h"
#include "model/time.h"
#include "policy/rule.h"
#include "services/filter_params.h"
#include "services/service.h"
#include "services/state_engine.h"

int TrafficKinds::Of(const StateEngine& engine) {
  auto key = std::make_pair(engine.Class(), std::string(engine.DiscriminatorLabel()));
  return kinds_.emplace(key, static_cast<int>(kinds_.size())).first->second;
}

namespace {

// Sorts and joins what overlaps or touches.
void Normalise(RuleTraffic::Intervals& intervals) {
  std::sort(intervals.begin(), intervals.end(),
            [](const TrafficInterval& a, const TrafficInterval& b) { return a.low < b.low; });
  size_t kept = 0;
  for (const TrafficInterval& next : intervals) {
    if (kept > 0 && next.low <= intervals[kept - 1].high + 1) {
      intervals[kept - 1].high = std::max(intervals[kept - 1].high, next.high);
    } else {
      intervals[kept++] = next;
    }
  }
  intervals.resize(kept);
}

void AddRanges(const TList<Range>& ranges, uint64_t offset, RuleTraffic::Intervals& into) {
  for (TList_Cell<Range>* cell = ranges.Head(); cell != nullptr; cell = cell->Next())
    into.push_back({offset + cell->Data()->Start(), offset + cell->Data()->End()});
}

void AddService(const Service* service, TrafficKinds& kinds, RuleTraffic::Intervals& into) {
  if (service == nullptr) return;
  for (TList_Cell<FilterParams>* cell = service->Filters().Head(); cell != nullptr; cell = cell->Next()) {
    const FilterParams& set = *cell->Data();
    AddRanges(set.Ranges(), RuleTraffic::ServiceValue(kinds.Of(*set.stateEngine()), 0), into);
  }
}

void AddTime(Time* time, RuleTraffic::Intervals& into) {
  if (time == nullptr) {
    into.push_back({0, RuleTraffic::kWeek});
    return;
  }
  time->Reduce();
  for (int day = SUNDAY; day <= SATURDAY; ++day)
    AddRanges(time->DayList(static_cast<Day>(day)).List(), (day - SUNDAY) * RuleTraffic::kDayMinutes, into);
}

bool Contains(const RuleTraffic::Intervals& intervals, uint64_t point) {
  auto after = std::upper_bound(intervals.begin(), intervals.end(), point,
                                [](uint64_t value, const TrafficInterval& interval) { return value < interval.low; });
  return after != intervals.begin() && (after - 1)->high >= point;
}

}  // namespace

RuleTraffic::RuleTraffic(const Rule& rule, TrafficKinds& kinds) {
  AddRanges(rule.Source().Ranges(), 0, dimensions_[kSource]);
  AddRanges(rule.Destination().Ranges(), 0, dimensions_[kDestination]);
  AddService(rule.SvcResolved(), kinds, dimensions_[kService]);
  AddTime(rule.TimeResolved(), dimensions_[kTime]);
  for (Intervals& intervals : dimensions_) Normalise(intervals);
}

bool RuleTraffic::Takes(const Point& packet) const {
  for (int dimension = 0; dimension < kDimensions; ++dimension)
    if (!Contains(dimensions_[dimension], packet[dimension])) return false;
  return true;
}

bool RuleTraffic::Empty() const {
  for (const Intervals& intervals : dimensions_)
    if (intervals.empty()) return true;
  return false;
}
