#include "model/name_reference.h"

#include <cstring>

Entity* NewNameReference(const char* name) {
  return name != nullptr ? new Entity(name, nullptr, nullptr, 0) : nullptr;
}

Entity* CopyNameReference(const Entity* reference) {
  return reference != nullptr ? NewNameReference(reference->Name()) : nullptr;
}

bool NameReferenceIs(const Entity* reference, const char* name) {
  return reference != nullptr && name != nullptr && strcmp(reference->Name(), name) == 0;
}

void RenameNameReference(Entity* reference, const char* old_name, const char* new_name) {
  if (NameReferenceIs(reference, old_name)) reference->Name(new_name);
}
