// Links the name of an IPsec (phase 0) algorithm to the registry object and
// asks whether the host runs it; shared by the IKE and manual parameters.
#ifndef FW_CRYPTO_IPSEC_ALGORITHM_LINK_H
#define FW_CRYPTO_IPSEC_ALGORITHM_LINK_H

#include "crypto/algorithm.h"

// Finds `name` in `list` and gives it `type` and phase 0.  RESOLVE_OK with
// `*resolved` set, or RESOLVE_NOT_FOUND; `*not_installed` is raised when the
// host can't run it.
Resolve_Error LinkIpsecAlgorithm(const char* name, screen_alg_type type, TList<Entity>& list,
                                 Algorithm** resolved, bool* not_installed);

#endif
