// Name references: a bare Entity that carries a written name until a
// resolve pass links it to the object of that name.  Rules, security
// blocks, gateways and access entries hold their references this way.
#ifndef FW_MODEL_NAME_REFERENCE_H
#define FW_MODEL_NAME_REFERENCE_H

#include "model/entity.h"

// A reference to `name`; null for a null name.
Entity* NewNameReference(const char* name);
// A reference with the name of `reference`; null for null.
Entity* CopyNameReference(const Entity* reference);
// Whether `reference` is there and carries `name`.
bool NameReferenceIs(const Entity* reference, const char* name);
// Renames `reference` when it carries `old_name`.
void RenameNameReference(Entity* reference, const char* old_name, const char* new_name);

#endif
