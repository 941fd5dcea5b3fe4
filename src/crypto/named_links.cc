#include "crypto/named_links.h"

#include <cstring>
#include <iostream>

#include "crypto/algorithm.h"
#include "crypto/security_parameters.h"

Entity* FindNamed(const Entity* reference, const TList<Entity>& list) {
  return reference != nullptr ? reference->FindSelf(list, 1) : nullptr;
}

Algorithm* LinkIkePhase1(const Entity* reference, screen_alg_type type, TList<Entity>& list, bool* refused) {
  Algorithm* found = static_cast<Algorithm*>(FindNamed(reference, list));
  if (found == nullptr) return nullptr;
  found->SetType(type);
  found->SetPhase(IKE_PHASE_IKE);
  if (found->IsInstalled(std::cout) != 0) *refused = true;
  return found;
}

void LinkNamedObjects(SecurityParameters& parameters, std::initializer_list<NamedObjects> sorts) {
  for (const NamedObjects& sort : sorts) {
    TList<Entity> list;
    for (Entity* object : sort.objects)
      if (object != nullptr) list.Append(*object);
    const char* missing = nullptr;
    bool skip_algorithm = sort.kind == CO_ALG_KEY || sort.kind == CO_ALG_DATA || sort.kind == CO_ALG_MAC ||
                          sort.kind == CO_ALG_COMP;
    if (skip_algorithm) parameters.ResolveSKIPAlgorithms(sort.kind, list, SKIP_V2, &missing);
    else parameters.Resolve(sort.kind, list, &missing);
  }
}
