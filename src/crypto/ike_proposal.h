// IkeProposal is what a gateway or a remote access entry offers IKE: the
// phase 1 encryption, hash, Diffie-Hellman group and authentication
// method, and the phase 2 ESP and AH algorithms.  It owns its name
// references and its phase 2 parameters; the algorithms belong to the
// registry.
#ifndef FW_CRYPTO_IKE_PROPOSAL_H
#define FW_CRYPTO_IKE_PROPOSAL_H

#include <ostream>

#include "crypto/security_parameters.h"
#include "model/entity.h"

class Algorithm;
class IPsecIKEahParams;
class IPsecIKEespParams;
class SecurityParametersIKE;

// The phase 1 names of a proposal; a null one becomes "NONE".
struct IkeProposalNames {
  const char* encryption;
  const char* hash;
  unsigned group;
  const char* method;
};

class IkeProposal {
 public:
  // Takes `esp` and `ah`, either of which may be null.
  IkeProposal(const IkeProposalNames& names, IPsecIKEespParams* esp, IPsecIKEahParams* ah);
  IkeProposal(const IkeProposal&) = delete;
  IkeProposal& operator=(const IkeProposal&) = delete;
  ~IkeProposal();

  // Links the algorithms of `list`: the phase 1 ones must be installed for
  // IKE, and the method is linked first or, without `method_first`, after
  // them.  Each name not found is reported on `out` as undefined in the
  // name of `owner`.  Returns the number of errors.
  int Resolve(TList<Entity>& list, bool method_first, const Entity& owner, std::ostream& out);
  // Whether one of the algorithms is called `name`.
  bool Names(const char* name) const;
  void Rename(const char* old_name, const char* new_name);

  // The phase 1 values with `certificate` as the last one, joined by
  // `separator`.
  std::ostream& PrintValues(std::ostream& out, const Entity& certificate, const char* separator) const;
  // The ESP and AH clauses there are, each behind `lead`, in the listing
  // form or in the statement form.
  std::ostream& PrintPhase2(std::ostream& out, bool listing, const char* lead) const;

  // New parameters with this proposal between the two certificates, their
  // algorithms the very objects this proposal resolved to.  The caller
  // links the certificates, tunnels and screens.
  SecurityParametersIKE* Parameters(const char* source_certificate, const char* destination_certificate,
                                    const SecurityEnds& ends) const;

 private:
  // 0, or 1 after reporting a phase 2 algorithm that `answer` says is
  // missing; one that isn't installed was reported when it was linked.
  static int Phase2Errors(int answer, const char* missing, const Entity& owner, std::ostream& out);

  Entity* encryption_;
  Entity* hash_;
  Entity* method_;
  Algorithm* encryption_resolved_ = nullptr;
  Algorithm* hash_resolved_ = nullptr;
  unsigned group_;
  Algorithm* method_resolved_ = nullptr;
  IPsecIKEahParams* ah_;
  IPsecIKEespParams* esp_;
};

#endif
