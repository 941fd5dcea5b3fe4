// IPsecManParameters is one direction of a manual IPsec block: the fixed
// security parameter indexes of ESP and AH, their algorithms and the keys
// the configuration names for them.  An algorithm written without a key is
// held as "NONE".
#ifndef FW_CRYPTO_IPSEC_MAN_PARAMETERS_H
#define FW_CRYPTO_IPSEC_MAN_PARAMETERS_H

#include <cstdint>
#include <ostream>

#include "model/entity.h"

class Algorithm;
class Certificate;

// The names of a manual clause; any may be null.
struct ManualNames {
  const char* esp_encryption;
  const char* esp_authentication;
  const char* ah_algorithm;
  const char* esp_encryption_key;
  const char* esp_authentication_key;
  const char* ah_key;
};

class IPsecManParameters {
 public:
  IPsecManParameters(uint32_t esp_spi, uint32_t ah_spi, const ManualNames& names);
  IPsecManParameters(const IPsecManParameters& other);
  IPsecManParameters& operator=(const IPsecManParameters&) = delete;
  ~IPsecManParameters();

  // Kind CO_ALGORITHM links the three algorithms (ESP encryption, ESP
  // authentication, AH authentication), kind CO_KEY the three keys.  The
  // first missing name is `*name`; RESOLVE_ALREADY_REPORTED when the host
  // lacks an algorithm.
  Resolve_Error Resolve(Config_Objects kind, TList<Entity>& list, const char** name);
  // Kind CO_KEY: whether a key reference names `name`.
  int Refer(Config_Objects kind, const char* name) const;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name);
  // The clause as the language writes it, and as listings show it.
  std::ostream& Print(std::ostream& out) const;
  std::ostream& Enumerate(std::ostream& out) const;
  // The algorithm values, the indexes in use and the key names of a tail.
  std::ostream& GenerateOutput(std::ostream& out) const;
  // "IPSEC" and the text of each key not yet written to this table.
  void DumpKeys(std::ostream& out) const;
  // 1 for an ESP index this and `other` share with different ESP material,
  // plus 1 for such an AH index.
  int Conflicts(const IPsecManParameters& other) const;

  uint32_t EspSpi() const { return esp_spi_; }
  uint32_t AhSpi() const { return ah_spi_; }

 private:
  // The three algorithms and the three keys, each in the order ESP
  // encryption, ESP authentication, AH.
  enum { kEspEncryption = 0, kEspAuthentication = 1, kAh = 2, kParts = 3 };

  bool SameMaterial(const IPsecManParameters& other, int part) const;
  // `ESP "alg" KEYS "key"` and the like, for the saved text.
  std::ostream& PrintAlgorithm(std::ostream& out, int part) const;

  uint32_t esp_spi_;
  uint32_t ah_spi_;
  Entity* algorithms_[kParts];
  Entity* keys_[kParts];
  Algorithm* algorithms_resolved_[kParts] = {nullptr, nullptr, nullptr};
  Certificate* keys_resolved_[kParts] = {nullptr, nullptr, nullptr};
};

#endif
