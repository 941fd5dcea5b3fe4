// Linking the name references of the encryption clauses to the objects
// they name.  Shared by the security parameter classes, the gateways and
// the access entries, which each hold several references.
#ifndef FW_CRYPTO_NAMED_LINKS_H
#define FW_CRYPTO_NAMED_LINKS_H

#include <initializer_list>

#include "crypto/crypto_types.h"
#include "model/entity.h"
#include "model/name_reference.h"

class Algorithm;
class SecurityParameters;

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
