#include "model/name_index.h"

#include <algorithm>

namespace {

// Below this length a walk costs less than keeping an index.
constexpr int kShortList = 16;

bool IsShort(const TList<Entity>& list) {
  int count = 0;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    if (++count > kShortList) return false;
  return true;
}

}  // namespace

NameIndex::NameIndex(const TList<Entity>& list) : renames_(Entity::Renames()) {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    cells_[cell->Data()->Name()].push_back(cell);
}

const NameIndex* NameIndex::Of(const TList<Entity>& list) {
  auto* index = static_cast<NameIndex*>(list.Index());
  if (index != nullptr && !index->Stale()) return index;
  if (IsShort(list)) {
    list.Index(nullptr);
    return nullptr;
  }
  index = new NameIndex(list);
  list.Index(std::unique_ptr<TList_Index<Entity>>(index));
  return index;
}

bool NameIndex::Stale() const { return renames_ != Entity::Renames(); }

const NameIndex::Cells* NameIndex::Find(const char* name) const {
  auto found = cells_.find(name);
  return found != cells_.end() ? &found->second : nullptr;
}

bool NameIndex::Linked(TList_Cell<Entity>* cell, Where where) {
  if (Stale()) return false;
  Cells& cells = cells_[cell->Data()->Name()];
  if (where == kEnd || cells.empty()) {
    cells.push_back(cell);
  } else if (where == kFront) {
    cells.insert(cells.begin(), cell);
  } else {
    return false;  // its place among the others of its name is unknown
  }
  return true;
}

bool NameIndex::Unlinked(TList_Cell<Entity>* cell) {
  if (Stale()) return false;
  auto found = cells_.find(cell->Data()->Name());
  if (found == cells_.end()) return false;
  Cells& cells = found->second;
  cells.erase(std::remove(cells.begin(), cells.end(), cell), cells.end());
  if (cells.empty()) {
    cells_.erase(found);
  } else if (found->first.data() == cell->Data()->Name()) {
    auto node = cells_.extract(found);
    node.key() = cells.front()->Data()->Name();
    cells_.insert(std::move(node));
  }
  return true;
}
