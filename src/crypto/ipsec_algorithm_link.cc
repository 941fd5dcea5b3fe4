#include "crypto/ipsec_algorithm_link.h"

#include <iostream>

Resolve_Error LinkIpsecAlgorithm(const char* name, screen_alg_type type, TList<Entity>& list,
                                 Algorithm** resolved, bool* not_installed) {
  Entity wanted(name, nullptr, nullptr, 0);
  Algorithm* algorithm = static_cast<Algorithm*>(wanted.FindSelf(list, 1));
  if (algorithm == nullptr) return RESOLVE_NOT_FOUND;
  algorithm->SetType(type);
  algorithm->SetPhase(IKE_PHASE_IPSEC);
  if (algorithm->IsInstalled(std::cout) != 0) *not_installed = true;
  *resolved = algorithm;
  return RESOLVE_OK;
}
