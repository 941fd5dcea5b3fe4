// IPsecIKEespParams names the encryption and authentication algorithms of
// the ESP protocol that IKE negotiates for a rule or a screen.
#ifndef FW_CRYPTO_IPSEC_IKE_ESP_PARAMS_H
#define FW_CRYPTO_IPSEC_IKE_ESP_PARAMS_H

#include <ostream>
#include <string>

#include "model/entity.h"

class Algorithm;

class IPsecIKEespParams {
 public:
  // A null name leaves that algorithm out.
  IPsecIKEespParams(const char* encryption, const char* authentication);

  const char* EncryptionName() const { return encryption_name_.empty() ? nullptr : encryption_name_.c_str(); }
  const char* AuthenticationName() const {
    return authentication_name_.empty() ? nullptr : authentication_name_.c_str();
  }
  Algorithm* EncryptionResolved() const { return encryption_; }
  Algorithm* AuthenticationResolved() const { return authentication_; }

  // Kind CO_ALGORITHM: links both algorithms of `list` by name.  0; 1 when
  // one is missing, with its name in `*missing`; 3 when one isn't installed.
  int Resolve(Config_Objects kind, TList<Entity>& list, const char** missing);

  // The values of an action line tail: encryption and authentication, each
  // followed by a blank.
  std::ostream& GenerateOutput(std::ostream& out) const;
  // `ESP "enc" "auth" ` as the language writes it, with `""` for no
  // authentication, and `ESP("enc", "auth") ` for listings.
  std::ostream& Print(std::ostream& out) const;
  std::ostream& Enumerate(std::ostream& out) const;

 private:
  std::string encryption_name_;
  std::string authentication_name_;
  Algorithm* encryption_ = nullptr;
  Algorithm* authentication_ = nullptr;
};

#endif
