#include "services/filter_params.h"

#include <algorithm>
#include <vector>

#include "services/int_list.h"
#include "services/state_engine.h"

int FilterParams::unique_id_counter_ = 0;

namespace {

// Below this many range pairs a plain double loop is the faster answer.
const long kSmallPairCount = 64;

// The ranges of a set sorted by start, with the highest end reached up to
// each position.  That answers "does any range meet r" and "does one range
// cover r" by a binary search, whatever overlaps the set holds.
class SortedView {
 public:
  explicit SortedView(const TList<Range>& list) : list_(list) {
    for (TList_Cell<Range>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
      const Range& range = *cell->Data();
      if (!entries_.empty() && range.Type() != type_) mixed_types_ = true;
      type_ = range.Type();
      entries_.push_back(Entry{range.Start(), range.End()});
    }
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry& a, const Entry& b) { return a.start < b.start; });
    uint32_t reach = 0;
    for (Entry& entry : entries_) entry.reach = reach = std::max(reach, entry.end);
  }

  bool Covers(const Range& range) const {
    size_t below = StartingAtOrBelow(range.Start());
    return below > 0 && entries_[below - 1].reach >= range.End();
  }

  // Ranges of another type never meet; a list of mixed types takes the walk.
  bool Meets(const Range& range) const {
    if (mixed_types_) {
      for (TList_Cell<Range>* cell = list_.Head(); cell != nullptr; cell = cell->Next())
        if (cell->Data()->Intersects(range)) return true;
      return false;
    }
    if (entries_.empty() || range.Type() != type_) return false;
    size_t below = StartingAtOrBelow(range.End());
    return below > 0 && entries_[below - 1].reach >= range.Start();
  }

 private:
  struct Entry {
    uint32_t start;
    uint32_t end;
    uint32_t reach = 0;
  };

  size_t StartingAtOrBelow(uint32_t value) const {
    return std::upper_bound(entries_.begin(), entries_.end(), value,
                            [](uint32_t v, const Entry& entry) { return v < entry.start; }) -
           entries_.begin();
  }

  const TList<Range>& list_;
  std::vector<Entry> entries_;
  Range_Type type_ = RT_NUMBER;
  bool mixed_types_ = false;
};

bool few_pairs(const TList<Range>& mine, const TList<Range>& theirs) {
  return static_cast<long>(mine.Length()) * theirs.Length() <= kSmallPairCount;
}

bool any_range_meets(const TList<Range>& mine, const TList<Range>& theirs) {
  if (few_pairs(mine, theirs)) {
    for (TList_Cell<Range>* a = mine.Head(); a != nullptr; a = a->Next())
      for (TList_Cell<Range>* b = theirs.Head(); b != nullptr; b = b->Next())
        if (a->Data()->Intersects(*b->Data())) return true;
    return false;
  }
  SortedView view(theirs);
  for (TList_Cell<Range>* a = mine.Head(); a != nullptr; a = a->Next())
    if (view.Meets(*a->Data())) return true;
  return false;
}

bool single_range_covers(const TList<Range>& list, const Range& range) {
  for (TList_Cell<Range>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    if (range.SubsetOf(*cell->Data())) return true;
  return false;
}

bool each_range_covered(const TList<Range>& mine, const TList<Range>& theirs) {
  if (few_pairs(mine, theirs)) {
    for (TList_Cell<Range>* a = mine.Head(); a != nullptr; a = a->Next())
      if (!single_range_covers(theirs, *a->Data())) return false;
    return true;
  }
  SortedView view(theirs);
  for (TList_Cell<Range>* a = mine.Head(); a != nullptr; a = a->Next())
    if (!view.Covers(*a->Data())) return false;
  return true;
}

Range* plain_copy(const Range& range) {
  return new Range(range.Start(), range.End(), RT_NUMBER, RS_ADDRESSES);
}

}  // namespace

FilterParams::FilterParams(StateEngine* engine, TList<int>* params, TList<Range>* ranges,
                           int broadcast, Filter_Direction direction)
    : unique_id_(-1),
      placeholder_(engine == nullptr ? StateEngine::Placeholder(nullptr) : nullptr),
      state_engine_(engine != nullptr ? engine : placeholder_.get()),
      params_(params != nullptr ? params : new TList<int>),
      ranges_(ranges != nullptr ? ranges : new TList<Range>),
      broadcast_(broadcast),
      direction_(direction) {}

FilterParams::FilterParams(const FilterParams& other)
    : unique_id_(-1),
      placeholder_(other.placeholder_),
      state_engine_(other.state_engine_),
      params_(int_list_copy(*other.params_)),
      ranges_(new TList<Range>),
      broadcast_(other.broadcast_),
      direction_(other.direction_) {
  for (TList_Cell<Range>* cell = other.ranges_->Head(); cell != nullptr; cell = cell->Next())
    ranges_->Append(*plain_copy(*cell->Data()));
}

FilterParams::~FilterParams() {
  int_list_free(params_);
  ranges_->Delete_Data();
  delete ranges_;
}

int FilterParams::UniqueID() {
  if (unique_id_ == -1) unique_id_ = unique_id_counter_++;
  return unique_id_;
}

void FilterParams::ResetUniqueId() { unique_id_counter_ = 0; }

void FilterParams::Include(const Range& range) {
  Range* merged = plain_copy(range);
  TList_Cell<Range>* cell = ranges_->Head();
  while (cell != nullptr) {
    TList_Cell<Range>* next = cell->Next();
    const Range& candidate = *cell->Data();
    if (candidate.Intersects(*merged) || candidate.Adjacent(*merged)) {
      merged->Consume(candidate);
      ranges_->Delete_Data_Cell(cell);
    }
    cell = next;
  }
  ranges_->Append(*merged);
}

// The union of a set with itself is the set: nothing to walk.
void FilterParams::Include(const TList<Range>& ranges) {
  if (&ranges == ranges_) return;
  for (TList_Cell<Range>* cell = ranges.Head(); cell != nullptr; cell = cell->Next())
    Include(*cell->Data());
}

// A piece split off goes to the end; it lies beyond the cut, so whether the
// walk reaches it changes nothing.
void FilterParams::Exclude(const Range& cut) {
  TList_Cell<Range>* cell = ranges_->Head();
  while (cell != nullptr) {
    TList_Cell<Range>* next = cell->Next();
    Range& range = *cell->Data();
    if (cut.SupersetOf(range)) {
      ranges_->Delete_Data_Cell(cell);
    } else if (cut.ProperSubsetOf(range)) {
      ranges_->Append(*range.Split(cut));
    } else if (cut.Intersects(range)) {
      range.Exclude(cut);
    }
    cell = next;
  }
}

void FilterParams::Exclude(const TList<Range>& ranges) {
  if (&ranges == ranges_) {
    ranges_->Delete_Data();
    return;
  }
  for (TList_Cell<Range>* cell = ranges.Head(); cell != nullptr; cell = cell->Next())
    Exclude(*cell->Data());
}

bool FilterParams::SameEngineAndParams(const FilterParams& other) const {
  return state_engine_ == other.state_engine_ && int_list_equal(*params_, *other.params_);
}

int FilterParams::Intersects(const FilterParams& other) const {
  if (!SameEngineAndParams(other) || broadcast_ != other.broadcast_) return 0;
  return any_range_meets(*ranges_, *other.ranges_);
}

FilterParams* FilterParams::Intersection(const FilterParams& other) const {
  if (!Intersects(other)) return nullptr;
  TList<Range>* common = new TList<Range>;
  for (TList_Cell<Range>* a = ranges_->Head(); a != nullptr; a = a->Next()) {
    const Range& mine = *a->Data();
    for (TList_Cell<Range>* b = other.ranges_->Head(); b != nullptr; b = b->Next()) {
      const Range& theirs = *b->Data();
      if (!mine.Intersects(theirs)) continue;
      common->Append(*new Range(std::max(mine.Start(), theirs.Start()), std::min(mine.End(), theirs.End()),
                                mine.Type(), mine.Style()));
    }
  }
  return new FilterParams(state_engine_, int_list_copy(*params_), common, broadcast_, FD_FORWARD);
}

int FilterParams::SubsetOf(const FilterParams& other) const {
  if (!SameEngineAndParams(other) || broadcast_ != other.broadcast_) return 0;
  return each_range_covered(*ranges_, *other.ranges_);
}

int FilterParams::Contains(const Range& range) const { return single_range_covers(*ranges_, range); }

int FilterParams::Conflicts(const FilterParams& other) const {
  if (&other == this || broadcast_ != other.broadcast_) return 0;
  const StateEngine& mine = *state_engine_;
  const StateEngine& theirs = *other.state_engine_;
  bool different_treatments = &mine != &theirs
                                  ? mine.Class() == theirs.Class() && mine.SubClass() == theirs.SubClass()
                                  : !int_list_equal(*params_, *other.params_);
  return different_treatments && any_range_meets(*ranges_, *other.ranges_);
}

int FilterParams::Consistent() const {
  return params_->Length() != state_engine_->DefaultParams().Length();
}
