// SecurityParametersIKE is a rule's IKE block: the phase 1 encryption and
// hash algorithms, the Diffie-Hellman group, the authentication method, the
// certificates of the two ends (or, with a pre-shared key, the key alone)
// and the phase 2 algorithms.  The screen clauses decide the direction
// first; with certificates, which end holds its private identity here must
// agree.
#ifndef FW_CRYPTO_SECURITY_PARAMETERS_IKE_H
#define FW_CRYPTO_SECURITY_PARAMETERS_IKE_H

#include "crypto/security_parameters.h"

class Algorithm;
class Certificate;
class IPsecIKEahParams;
class IPsecIKEespParams;

// The names of an IKE clause.  A null `peer` means a pre-shared key, which
// `certificate` then names.
struct IkeNames {
  const char* encryption;
  const char* hash;
  unsigned group;
  const char* method;
  const char* certificate;
  const char* peer;
};

class SecurityParametersIKE : public SecurityParameters {
 public:
  // Takes `esp` and `ah`, either of which may be null.
  SecurityParametersIKE(const IkeNames& names, IPsecIKEespParams* esp, IPsecIKEahParams* ah,
                        const SecurityEnds& ends);
  ~SecurityParametersIKE() override;

  // Besides the base's kinds: CO_CERTIFICATE links the two IKE
  // certificates, CO_KEY the pre-shared key, CO_ALGORITHM the method, the
  // phase 1 algorithms (which must be valid for IKE) and the phase 2 ones.
  Resolve_Error Resolve(Config_Objects kind, TList<Entity>& list, const char** name) override;
  int Refer(Config_Objects kind, const char* name) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  std::ostream& Enumerate(std::ostream& out) const override;
  std::ostream& Print(std::ostream& out) const override;
  // "IKE\t", the decrypt flag, the algorithm values, the two certificate
  // names, the phase 2 values, the tunnels and `ike_label`.
  std::ostream& GenerateOutput(std::ostream& out, SecurityParameters* other, unsigned ike_label) override;
  Security_Direction SetDirection(const Ferrowall& screen) override;
  SecurityParameters* Clone() const override;
  // With certificates, the two certificates change places too; a
  // pre-shared key stays.
  void ReverseDirection() override;
  bool UsesCertificateGroup() const override;
  // The phase 1 proposal of an ike/config entry, without a line end.
  std::ostream& GenerateIKEXform(std::ostream& out) const;

  bool PreShared() const { return pre_shared_; }
  Certificate* SourceCertificateResolved() const { return source_certificate_resolved_; }
  Certificate* DestinationCertificateResolved() const { return destination_certificate_resolved_; }

 private:
  SecurityParametersIKE(const SecurityParametersIKE& other);

  Resolve_Error ResolveCertificates(Config_Objects kind, TList<Entity>& list, const char** name);
  Resolve_Error ResolveAlgorithms(TList<Entity>& list, const char** name);
  // The direction when only one end's certificate is local here; the
  // screen clauses say which end this screen is (-1, 0 or 1 each).
  Security_Direction DirectionOfCertificates(int destination, int source) const;

  Entity* source_certificate_;
  Entity* destination_certificate_;
  Entity* method_;
  Entity* encryption_;
  Entity* hash_;
  Algorithm* encryption_resolved_ = nullptr;
  Algorithm* hash_resolved_ = nullptr;
  unsigned group_;
  Algorithm* method_resolved_ = nullptr;
  bool pre_shared_;
  Certificate* source_certificate_resolved_ = nullptr;
  Certificate* destination_certificate_resolved_ = nullptr;
  IPsecIKEahParams* ah_;
  IPsecIKEespParams* esp_;
};

#endif
