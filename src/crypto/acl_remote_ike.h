// ACLRemoteIKE is a remote access entry protected by IKE: its proposal,
// tunnel or transport mode, and the id of the rule made for it, by which
// Remote.Access finds the label of the entry's IKE configuration.
#ifndef FW_CRYPTO_ACL_REMOTE_IKE_H
#define FW_CRYPTO_ACL_REMOTE_IKE_H

#include "crypto/acl_remote.h"
#include "crypto/ike_proposal.h"

class ACLRemoteIKE : public ACLRemote {
 public:
  // Takes `esp` and `ah`, either of which may be null.  In transport mode
  // `tunnel` is ignored.
  ACLRemoteIKE(const char* user, Access_Level level, const char* address, const IkeProposalNames& names,
               const char* certificate, IPsecIKEespParams* esp, IPsecIKEahParams* ah, const char* tunnel,
               bool transport, const char* screen, const char* comment);

  // Besides the base's kinds: CO_ALGORITHM links the proposal, the method
  // after the phase 1 algorithms.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // Always a rule; its unique id is kept for Remote.Access.
  Rule* GenerateRule(Certificate& local_certificate, Service& service, const Address& local_address) override;
  IPSEC_TYPE IPsecType() const override { return IPSEC_IKE; }
  std::ostream& Print(std::ostream& out) const override;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // All ones until a rule was made.
  unsigned RuleId() const { return rule_id_; }

 protected:
  bool RefersTo(Config_Objects kind, const char* name) const override;
  // The IKE label of the entry's rule, 0 without one, then ";".
  void GenerateDataRest(std::ostream& out, const Registry& registry) const override;

 private:
  IkeProposal proposal_;
  unsigned rule_id_ = ~0u;
};

#endif
