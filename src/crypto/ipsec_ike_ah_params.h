// IPsecIKEahParams names the authentication algorithm of the AH protocol
// that IKE negotiates for a rule or a screen.
#ifndef FW_CRYPTO_IPSEC_IKE_AH_PARAMS_H
#define FW_CRYPTO_IPSEC_IKE_AH_PARAMS_H

#include <ostream>
#include <string>

#include "model/entity.h"

class Algorithm;

class IPsecIKEahParams {
 public:
  // A null name leaves the protocol without an algorithm.
  explicit IPsecIKEahParams(const char* algorithm);

  const char* AlgorithmName() const { return algorithm_name_.empty() ? nullptr : algorithm_name_.c_str(); }
  Algorithm* AlgorithmResolved() const { return algorithm_; }

  // Kind CO_ALGORITHM: links the algorithm of `list` by name.  0; 1 when it
  // is missing, with its name in `*missing`; 3 when it isn't installed.
  int Resolve(Config_Objects kind, TList<Entity>& list, const char** missing);

  // The value of an action line tail: the algorithm's number and a blank.
  std::ostream& GenerateOutput(std::ostream& out) const;
  // `AH "alg" ` as the language writes it, and `AH("alg") ` for listings.
  std::ostream& Print(std::ostream& out) const;
  std::ostream& Enumerate(std::ostream& out) const;

 private:
  std::string algorithm_name_;
  Algorithm* algorithm_ = nullptr;
};

#endif
