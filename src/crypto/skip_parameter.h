// SkipParameter is a rule's SKIP block: the certificates of the two ends,
// the key, data, MAC and compression algorithms of one SKIP version, and
// the ends of the base class.  The certificates decide the direction: the
// end whose key this host holds is this screen.  Version 1 is refused by
// every resolve pass.
#ifndef FW_CRYPTO_SKIP_PARAMETER_H
#define FW_CRYPTO_SKIP_PARAMETER_H

#include "crypto/security_parameters.h"

class Algorithm;
class Certificate;

// The names a SKIP clause gives; mac and compression are null in version 1.
struct SkipNames {
  const char* source_certificate;
  const char* destination_certificate;
  const char* key;
  const char* data;
  const char* mac;
  const char* compression;
};

class SkipParameter : public SecurityParameters {
 public:
  SkipParameter(Skip_Version version, const SkipNames& names, const SecurityEnds& ends);
  ~SkipParameter() override;

  // Besides the base's kinds, CO_CERTIFICATE links both certificates, which
  // must be SKIP certificates.  Version 1 answers RESOLVE_ALREADY_REPORTED
  // on every pass, after a message on stderr.
  Resolve_Error Resolve(Config_Objects kind, TList<Entity>& list, const char** name) override;
  // The algorithm of the list of `kind`, when `version` is this block's.
  Resolve_Error ResolveSKIPAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                                      const char** name) override;
  int Refer(Config_Objects kind, const char* name) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  std::ostream& Enumerate(std::ostream& out) const override;
  std::ostream& Print(std::ostream& out) const override;
  // "SKIP\t", then the decrypting half and the encrypting half; `other`
  // gives the half this block isn't, an empty half standing in for null.
  // With `other` this very block, only its own half is written.
  std::ostream& GenerateOutput(std::ostream& out, SecurityParameters* other, unsigned ike_label) override;
  // Encrypt when the source certificate is local, decrypt when the
  // destination certificate is; only the decrypting end may name a group,
  // and only in version 2.
  Security_Direction SetDirection(const Ferrowall& screen) override;
  SecurityParameters* Clone() const override;
  // Also the two certificates change places.
  void ReverseDirection() override;
  bool UsesCertificateGroup() const override;

  Skip_Version Version() const { return version_; }
  // The refusal of version 1 on the standard error stream.
  static void ReportVersion1();
  Certificate* SourceCertificateResolved() const { return source_certificate_resolved_; }
  Certificate* DestinationCertificateResolved() const { return destination_certificate_resolved_; }
  Algorithm* KeyAlg() const { return resolved_[0]; }
  Algorithm* DataAlg() const { return resolved_[1]; }
  Algorithm* MacAlg() const { return resolved_[2]; }
  Algorithm* CompressionAlg() const { return resolved_[3]; }

 private:
  SkipParameter(const SkipParameter& other);

  // The certificates and algorithms as the language writes them.
  std::ostream& PrintNames(std::ostream& out) const;
  Security_Direction DirectionOfCertificates() const;
  bool AlgorithmsFit() const;
  std::ostream& Half(std::ostream& out);

  Skip_Version version_;
  Entity* source_certificate_;
  Entity* destination_certificate_;
  // Key, data, MAC and compression, in the order of the SKIP lists.
  Algorithm* algorithms_[4];
  Certificate* source_certificate_resolved_ = nullptr;
  Certificate* destination_certificate_resolved_ = nullptr;
  Algorithm* resolved_[4] = {nullptr, nullptr, nullptr, nullptr};
};

#endif
