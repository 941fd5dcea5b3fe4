// NameIndex answers which cells of a list hold objects of a name, in list
// order, without walking the list.  The list keeps it current as cells come
// and go; a rename anywhere makes every index stale, to be built anew on its
// next use, as renames are rare and an object doesn't know its lists.
#ifndef FW_MODEL_NAME_INDEX_H
#define FW_MODEL_NAME_INDEX_H

#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/entity.h"

class NameIndex : public TList_Index<Entity> {
 public:
  using Cells = std::vector<TList_Cell<Entity>*>;

  // The current index of `list`, built when it is missing or stale; null
  // for a list too short to gain from one.
  static const NameIndex* Of(const TList<Entity>& list);

  // The cells of objects named `name`, in list order; null for none.
  const Cells* Find(const char* name) const;

  bool Linked(TList_Cell<Entity>* cell, Where where) override;
  bool Unlinked(TList_Cell<Entity>* cell) override;

 private:
  explicit NameIndex(const TList<Entity>& list);
  bool Stale() const;

  // The keys are views of the objects' own names: a rename makes the index
  // stale before a key can dangle, and a key whose object leaves the list
  // moves to the name of the next object in its bucket.
  std::unordered_map<std::string_view, Cells> cells_;
  unsigned long renames_;
};

#endif
