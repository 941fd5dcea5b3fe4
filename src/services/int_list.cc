#include "services/int_list.h"

TList<int>* int_list_copy(const TList<int>& list) {
  TList<int>* copy = new TList<int>;
  for (TList_Cell<int>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    copy->Append(*new int(*cell->Data()));
  return copy;
}

bool int_list_equal(const TList<int>& left, const TList<int>& right) {
  TList_Cell<int>* mine = left.Head();
  TList_Cell<int>* theirs = right.Head();
  for (; mine != nullptr && theirs != nullptr; mine = mine->Next(), theirs = theirs->Next())
    if (*mine->Data() != *theirs->Data()) return false;
  return mine == nullptr && theirs == nullptr;
}

void int_list_free(TList<int>* list) {
  if (list == nullptr) return;
  list->Delete_Data();
  delete list;
}
