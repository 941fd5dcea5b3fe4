#include "model/sorted_entity_list.h"

#include <cstring>

SortedEntityList::SortedEntityList() : list_(new TList<Entity>) {}

SortedEntityList::~SortedEntityList() { delete list_; }

namespace {

bool same_screen(const Entity& a, const Entity& b) {
  if (a.Screen() == nullptr || b.Screen() == nullptr) return a.Screen() == b.Screen();
  return strcmp(a.Screen(), b.Screen()) == 0;
}

}  // namespace

void SortedEntityList::Insert(Entity& entity) {
  for (TList_Cell<Entity>* cell = list_->Head(); cell != nullptr; cell = cell->Next()) {
    Entity& old = *cell->Data();
    int order = strcoll(entity.Name(), old.Name());
    if (order > 0) continue;
    if (order < 0) {
      list_->Prepend(entity, cell);
      return;
    }
    if (&old == &entity) return;
    list_->Prepend(entity, cell);
    if (same_screen(entity, old)) list_->Delete_Data_Cell(cell);
    return;
  }
  list_->Append(entity);
}

void SortedEntityList::Remove_Cell(Entity& entity) {
  list_->Delete_Cell(entity.FindSelfCell(*list_, 0));
}

void SortedEntityList::Remove_Data_Cell(Entity& entity) {
  list_->Delete_Data_Cell(entity.FindSelfCell(*list_, 0));
}
