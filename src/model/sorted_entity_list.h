// A name-ordered view of entities for listings.  It owns its cells; the
// elements only when Delete_Data is called.
#ifndef FW_MODEL_SORTED_ENTITY_LIST_H
#define FW_MODEL_SORTED_ENTITY_LIST_H

#include <ostream>

#include "model/entity.h"

class SortedEntityList {
 public:
  SortedEntityList();
  SortedEntityList(const SortedEntityList&) = delete;
  SortedEntityList& operator=(const SortedEntityList&) = delete;
  ~SortedEntityList();

  TList<Entity>& List() const { return *list_; }
  // Inserts in collation order.  An object of equal name and equal screen
  // takes the place of the one there, which is deleted.
  void Insert(Entity& entity);
  // Exact lookup; frees the cell only.
  void Remove_Cell(Entity& entity);
  // Exact lookup; frees the cell and the object.
  void Remove_Data_Cell(Entity& entity);
  int Length() const { return list_->Length(); }
  void Delete_Data() { list_->Delete_Data(); }
  std::ostream& Print(std::ostream& out) const { return list_->Print(out); }

 private:
  TList<Entity>* list_;
};

#endif
