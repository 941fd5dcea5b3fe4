// SecurityParametersMan is a rule's manual IPsec block: fixed indexes and
// keys for the forward and for the reverse flow, either of which may be
// missing, and which may be one object serving both.  Only the screen
// clauses decide the direction: a manual block must name this screen as
// its source or its destination screen.
#ifndef FW_CRYPTO_SECURITY_PARAMETERS_MAN_H
#define FW_CRYPTO_SECURITY_PARAMETERS_MAN_H

#include "crypto/security_parameters.h"

class IPsecManParameters;

class SecurityParametersMan : public SecurityParameters {
 public:
  // Takes both; `forward` and `reverse` may be the same object.
  SecurityParametersMan(IPsecManParameters* forward, IPsecManParameters* reverse, const SecurityEnds& ends);
  ~SecurityParametersMan() override;

  // Besides the base's kinds, CO_KEY and CO_ALGORITHM link the material of
  // both flows.
  Resolve_Error Resolve(Config_Objects kind, TList<Entity>& list, const char** name) override;
  int Refer(Config_Objects kind, const char* name) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  std::ostream& Enumerate(std::ostream& out) const override;
  std::ostream& Print(std::ostream& out) const override;
  // "IPSEC\t", the decrypt flag, the forward and the reverse material and
  // the tunnels; the other block and the label play no part.
  std::ostream& GenerateOutput(std::ostream& out, SecurityParameters* other, unsigned ike_label) override;
  Security_Direction SetDirection(const Ferrowall& screen) override;
  SecurityParameters* Clone() const override;
  // The forward and the reverse material change places too.
  void ReverseDirection() override;
  void DumpKeys(std::ostream& out) const override;
  // The forward material of two manual blocks, compared.
  int Conflicts(const SecurityParameters& other) const override;

  const IPsecManParameters* Forward() const { return forward_; }
  const IPsecManParameters* Reverse() const { return reverse_; }

 private:
  SecurityParametersMan(const SecurityParametersMan& other);

  bool Shared() const { return forward_ != nullptr && forward_ == reverse_; }
  // Each flow's material, the shared one once.
  template <class Visit>
  void ForEachFlow(Visit visit) const;

  IPsecManParameters* forward_;
  IPsecManParameters* reverse_;
};

#endif
