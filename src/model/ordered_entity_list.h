// A list of owned entities whose 1-based positions mean something: rules,
// address translations, access entries and gateways.
#ifndef FW_MODEL_ORDERED_ENTITY_LIST_H
#define FW_MODEL_ORDERED_ENTITY_LIST_H

#include <ostream>

#include "model/entity.h"

class OrderedEntityList {
 public:
  OrderedEntityList();
  OrderedEntityList(const OrderedEntityList&) = delete;
  OrderedEntityList& operator=(const OrderedEntityList&) = delete;
  // Deletes the elements with the list.
  ~OrderedEntityList();

  TList<Entity>& Items() const { return *items_; }
  void Items(Entity& entity) { items_->Append(entity); }

  // Position 1 or less puts the element first, a position up to the length
  // before the element standing there, a higher one at the end.
  void Insert(int position, Entity& entity);
  // Moves the element at `from` so that it ends up at position `to`; both
  // are clamped into the list.
  void Move(int from, int to);
  // The element at `position` as a statement; nothing outside the list.
  std::ostream& EnumerateNum(std::ostream& out, int position) const;

  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out);
  int ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                        std::ostream& out);
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name);
  // Counts the elements that refer to `name`; with `print` lists them on the
  // standard output with their positions and `label`.
  int Refer(Config_Objects kind, const char* name, int print, const char* label) const;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const;

 private:
  TList_Cell<Entity>* CellAt(int position) const;

  TList<Entity>* items_;
};

#endif
