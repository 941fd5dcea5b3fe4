// RangeList is the sorted set of time ranges of one day.  It owns its list
// and the ranges in it.  Ranges built with Insert are sorted by start, never
// overlap and never touch.
#ifndef FW_MODEL_RANGE_LIST_H
#define FW_MODEL_RANGE_LIST_H

#include <ostream>

#include "model/range.h"
#include "model/t_list.h"

class RangeList {
 public:
  // Takes `list` with its ranges; null starts empty.
  explicit RangeList(TList<Range>* list = nullptr);
  RangeList(const RangeList&) = delete;
  RangeList& operator=(const RangeList&) = delete;
  ~RangeList();

  const TList<Range>& List() const { return *list_; }
  // Adds a time-range copy of `range`, merged with what it overlaps or
  // touches; `range` itself stays the caller's.
  void Insert(const Range& range);
  void Insert(const RangeList& other);
  int Length() const { return list_->Length(); }
  void Delete_Data() { list_->Delete_Data(); }

  // " {", each range in its short form behind a blank, " }".
  std::ostream& Enumerate(std::ostream& out) const;
  // Each range in its spaced form, each followed by a blank.
  std::ostream& Print(std::ostream& out) const { return list_->Print(out); }

 private:
  TList<Range>* list_;
};

#endif
