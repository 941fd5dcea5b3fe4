#include "crypto/skip_algorithms.h"

#include <iostream>

#include "crypto/algorithm.h"
#include "crypto/named_links.h"

namespace {

struct AlgorithmSlot {
  Config_Objects kind;
  const char* word;
  bool must_be_installed;
};

const AlgorithmSlot kSlots[4] = {
    {CO_ALG_KEY, "KEY ALGORITHM", true},
    {CO_ALG_DATA, "DATA ALGORITHM", true},
    {CO_ALG_MAC, "MAC ALGORITHM", true},
    {CO_ALG_COMP, "COMPRESSION ALGORITHM", false},
};

}  // namespace

SkipAlgorithms::SkipAlgorithms(const char* const names[4], const char* const placeholders[4]) {
  for (int slot = 0; slot < 4; ++slot)
    names_[slot] = NewNameReference(names[slot] != nullptr ? names[slot] : placeholders[slot]);
}

SkipAlgorithms::~SkipAlgorithms() {
  for (Entity* name : names_) delete name;
}

int SkipAlgorithms::Slot(Config_Objects kind) {
  for (int slot = 0; slot < 4; ++slot)
    if (kSlots[slot].kind == kind) return slot;
  return -1;
}

int SkipAlgorithms::Resolve(Config_Objects kind, TList<Entity>& list, const Entity& owner, std::ostream& out) {
  int slot = Slot(kind);
  if (slot < 0 || names_[slot] == nullptr) return 0;
  resolved_[slot] = static_cast<Algorithm*>(names_[slot]->FindSelf(list, 0));
  if (resolved_[slot] == nullptr) {
    owner.NotDefined(out, names_[slot]->Name(), kSlots[slot].word);
    return 1;
  }
  return kSlots[slot].must_be_installed && resolved_[slot]->IsInstalled(std::cout) != 0;
}

std::ostream& SkipAlgorithms::Print(std::ostream& out, const char* const words[], int count) const {
  for (int slot = 0; slot < count; ++slot)
    out << words[slot] << '"' << (Name(slot) != nullptr ? Name(slot) : "NONE") << '"';
  return out;
}

bool SkipAlgorithms::RefersTo(Config_Objects kind, const char* name) const {
  int slot = Slot(kind);
  return slot >= 0 && NameReferenceIs(names_[slot], name);
}

void SkipAlgorithms::Rename(Config_Objects kind, const char* old_name, const char* new_name) {
  int slot = Slot(kind);
  if (slot >= 0) RenameNameReference(names_[slot], old_name, new_name);
}
