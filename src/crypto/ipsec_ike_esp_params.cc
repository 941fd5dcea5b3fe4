#include "crypto/ipsec_ike_esp_params.h"

#include <strings.h>

#include "crypto/ipsec_algorithm_link.h"

IPsecIKEespParams::IPsecIKEespParams(const char* encryption, const char* authentication)
    : encryption_name_(encryption != nullptr ? encryption : ""),
      authentication_name_(authentication != nullptr ? authentication : "") {}

int IPsecIKEespParams::Resolve(Config_Objects kind, TList<Entity>& list, const char** missing) {
  if (kind != CO_ALGORITHM) return 0;
  bool not_installed = false;
  struct Wanted {
    const char* name;
    screen_alg_type type;
    Algorithm** resolved;
  };
  for (const Wanted& wanted : {Wanted{EncryptionName(), ALG_ENCRYPTION, &encryption_},
                               Wanted{AuthenticationName(), ALG_AUTHENTICATION, &authentication_}}) {
    if (wanted.name == nullptr) continue;
    if (LinkIpsecAlgorithm(wanted.name, wanted.type, list, wanted.resolved, &not_installed) != RESOLVE_OK) {
      *missing = wanted.name;
      return RESOLVE_NOT_FOUND;
    }
  }
  return not_installed ? RESOLVE_ALREADY_REPORTED : RESOLVE_OK;
}

namespace {

std::ostream& Value(std::ostream& out, const Algorithm* algorithm) {
  return out << (algorithm != nullptr ? algorithm->Value() : 0) << ' ';
}

}  // namespace

std::ostream& IPsecIKEespParams::GenerateOutput(std::ostream& out) const {
  return Value(Value(out, encryption_), authentication_);
}

std::ostream& IPsecIKEespParams::Print(std::ostream& out) const {
  bool none = strcasecmp(authentication_name_.c_str(), "NONE") == 0;
  return out << "ESP \"" << encryption_name_ << "\" \"" << (none ? "" : authentication_name_) << "\" ";
}

std::ostream& IPsecIKEespParams::Enumerate(std::ostream& out) const {
  out << "ESP(\"" << encryption_name_ << '"';
  if (AuthenticationName() != nullptr) out << ", \"" << authentication_name_ << '"';
  return out << ") ";
}
