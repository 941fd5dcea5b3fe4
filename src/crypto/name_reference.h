// Name references of the encryption clauses: a bare Entity that carries
// the written name until a resolve pass links it.  Shared by the security
// parameter classes, which each hold several.
#ifndef FW_CRYPTO_NAME_REFERENCE_H
#define FW_CRYPTO_NAME_REFERENCE_H

#include <initializer_list>

#include "crypto/crypto_types.h"
#include "model/entity.h"

class Algorithm;
class SecurityParameters;

// A reference to `name`; null for a null name.
Entity* NewNameReference(const char* name);
// A reference with the name of `reference`; null for null.
Entity* CopyNameReference(const Entity* reference);
// Whether `reference` is there and carries `name`.
bool NameReferenceIs(const Entity* reference, const char* name);
// Renames `reference` when it carries `old_name`.
void RenameNameReference(Entity* reference, const char* old_name, const char* new_name);
// The object of `list` that `reference` names, by name alone; null when
// there is none or no reference.
Entity* FindNamed(const Entity* reference, const TList<Entity>& list);
// Links an IKE phase 1 algorithm of `type`, which must be installed for
// IKE itself; one that isn't is reported on the standard output and sets
// `*refused`.  Null when `list` has no such name.
Algorithm* LinkIkePhase1(const Entity* reference, screen_alg_type type, TList<Entity>& list, bool* refused);

// Objects of one sort that new parameters are linked to.
struct NamedObjects {
  Config_Objects kind;
  std::initializer_list<Entity*> objects;
};
// Gives `parameters`, which name objects already found elsewhere, those
// very objects, each sort against a list of only its objects so that names
// of different sorts never meet.  SKIP algorithms are of version 2.
void LinkNamedObjects(SecurityParameters& parameters, std::initializer_list<NamedObjects> sorts);

#endif
