#include "model/ordered_entity_list.h"

#include "model/message_subject.h"
#include <algorithm>
#include <iostream>

OrderedEntityList::OrderedEntityList() : items_(new TList<Entity>) {}

OrderedEntityList::~OrderedEntityList() {
  items_->Delete_Data();
  delete items_;
}

TList_Cell<Entity>* OrderedEntityList::CellAt(int position) const {
  TList_Cell<Entity>* cell = items_->Head();
  for (int at = 1; cell != nullptr && at < position; ++at) cell = cell->Next();
  return cell;
}

void OrderedEntityList::Insert(int position, Entity& entity) {
  if (position <= 1) {
    items_->Prepend(entity);
    return;
  }
  TList_Cell<Entity>* at = CellAt(position);
  if (at != nullptr) items_->Prepend(entity, at); else items_->Append(entity);
}

void OrderedEntityList::Move(int from, int to) {
  int length = items_->Length();
  if (length == 0) return;
  from = std::clamp(from, 1, length);
  to = std::clamp(to, 1, length);
  TList_Cell<Entity>* moving = CellAt(from);
  TList_Cell<Entity>* target = CellAt(to);
  if (from <= to) items_->Append(*moving->Data(), target); else items_->Prepend(*moving->Data(), target);
  items_->Delete_Cell(moving);
}

std::ostream& OrderedEntityList::EnumerateNum(std::ostream& out, int position) const {
  if (position < 1) return out;
  TList_Cell<Entity>* cell = CellAt(position);
  if (cell != nullptr) out << *cell->Data();
  return out;
}

int OrderedEntityList::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  int errors = 0;
  for (TList_Cell<Entity>* cell = items_->Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    errors += cell->Data()->Resolve(kind, list, out);
  }
  return errors;
}

int OrderedEntityList::ResolveAlgorithms(Config_Objects kind, TList<Entity>& list,
                                         Skip_Version version, std::ostream& out) {
  int errors = 0;
  for (TList_Cell<Entity>* cell = items_->Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    errors += cell->Data()->ResolveAlgorithms(kind, list, version, out);
  }
  return errors;
}

void OrderedEntityList::RenameReference(Config_Objects kind, const char* old_name,
                                        const char* new_name) {
  for (TList_Cell<Entity>* cell = items_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->RenameReference(kind, old_name, new_name);
}

int OrderedEntityList::Refer(Config_Objects kind, const char* name, int print,
                             const char* label) const {
  int count = 0;
  int position = 1;
  for (TList_Cell<Entity>* cell = items_->Head(); cell != nullptr; cell = cell->Next(), ++position) {
    if (!cell->Data()->Refer(kind, name, 0)) continue;
    ++count;
    if (print) {
      std::cout << position << '\t' << label << '\t';
      cell->Data()->Enumerate(std::cout, ENUM_FULL);
    }
  }
  return count;
}

std::ostream& OrderedEntityList::Enumerate(std::ostream& out, Enumerate_Type type) const {
  for (TList_Cell<Entity>* cell = items_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Enumerate(out, type);
  return out;
}
