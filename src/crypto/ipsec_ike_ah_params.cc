#include "crypto/ipsec_ike_ah_params.h"

#include "crypto/ipsec_algorithm_link.h"

IPsecIKEahParams::IPsecIKEahParams(const char* algorithm) : algorithm_name_(algorithm != nullptr ? algorithm : "") {}

int IPsecIKEahParams::Resolve(Config_Objects kind, TList<Entity>& list, const char** missing) {
  if (kind != CO_ALGORITHM || AlgorithmName() == nullptr) return 0;
  bool not_installed = false;
  if (LinkIpsecAlgorithm(AlgorithmName(), ALG_AUTHENTICATION, list, &algorithm_, &not_installed) != RESOLVE_OK) {
    *missing = AlgorithmName();
    return RESOLVE_NOT_FOUND;
  }
  return not_installed ? RESOLVE_ALREADY_REPORTED : RESOLVE_OK;
}

std::ostream& IPsecIKEahParams::GenerateOutput(std::ostream& out) const {
  return out << (algorithm_ != nullptr ? algorithm_->Value() : 0) << ' ';
}

std::ostream& IPsecIKEahParams::Print(std::ostream& out) const {
  return out << "AH \"" << (AlgorithmName() != nullptr ? AlgorithmName() : "NONE") << "\" ";
}

std::ostream& IPsecIKEahParams::Enumerate(std::ostream& out) const {
  return out << "AH(\"" << (AlgorithmName() != nullptr ? AlgorithmName() : "NONE") << "\") ";
}
