#include "model/range_list.h"

RangeList::RangeList(TList<Range>* list) : list_(list != nullptr ? list : new TList<Range>) {}

RangeList::~RangeList() {
  list_->Delete_Data();
  delete list_;
}

// The overlap test uses the argument's own bounds, not those of the growing
// copy: a time range as given is already on the grain, and an argument of
// another type simply merges with nothing.
void RangeList::Insert(const Range& range) {
  Range* copy = new Range(range.Start(), range.End(), RT_TIME, RS_ADDRESSES);
  TList_Cell<Range>* cell = list_->Head();
  while (cell != nullptr) {
    TList_Cell<Range>* next = cell->Next();
    Range& element = *cell->Data();
    if (element.Intersects(range) || element.Adjacent(range)) {
      copy->Consume(element);
      list_->Delete_Data_Cell(cell);
    }
    cell = next;
  }
  TList_Cell<Range>* before = list_->Head();
  while (before != nullptr && before->Data()->Start() <= copy->End()) before = before->Next();
  if (before != nullptr) list_->Prepend(*copy, before);
  else list_->Append(*copy);
}

void RangeList::Insert(const RangeList& other) {
  if (&other == this) return;
  for (TList_Cell<Range>* cell = other.list_->Head(); cell != nullptr; cell = cell->Next())
    Insert(*cell->Data());
}

std::ostream& RangeList::Enumerate(std::ostream& out) const {
  out << " {";
  for (TList_Cell<Range>* cell = list_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Enumerate(out << ' ');
  return out << " }";
}
