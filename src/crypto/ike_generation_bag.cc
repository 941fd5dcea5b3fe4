#include "crypto/ike_generation_bag.h"

#include "crypto/security_parameters.h"
#include "model/address.h"
#include "policy/rule.h"

namespace {

const int kPhaseError = 217;

}  // namespace

IKEGenerationBag::~IKEGenerationBag() {
  if (owned_) delete isakmp_;
}

int IKEGenerationBag::PrepareRule(Rule& rule, bool reverse) {
  if (rule.IKE_RuleNum() != 0) {
    if (reverse) return -1;
    return rule.IKE_RuleNum() != rule_count_ ? kPhaseError : -1;
  }
  rule.IKE_RuleNum(++rule_count_);
  Address* local = nullptr;
  if (const SecurityParameters* decryption = rule.DecryptionParameters())
    local = decryption->DestinationTunnelResolved() != nullptr ? decryption->DestinationTunnelResolved()
                                                                : &rule.Destination();
  else if (const SecurityParameters* encryption = rule.EncryptionParameters())
    local = encryption->SourceTunnelResolved() != nullptr ? encryption->SourceTunnelResolved() : &rule.Source();
  if (local != nullptr) MergeIntoISAKMP(*local);
  return 0;
}

void IKEGenerationBag::MergeIntoISAKMP(Address& local) {
  if (isakmp_ == nullptr) {
    isakmp_ = &local;
    return;
  }
  Address* merged = local.Merge(*isakmp_);
  if (merged == isakmp_) return;
  if (owned_) delete isakmp_;
  isakmp_ = merged;
  owned_ = merged != &local;
}

int IKEGenerationBag::AddRule(const Rule& rule, const SecurityParametersIKE& parameters, const IKEBagEnd& local,
                              const IKEBagEnd& remote) {
  if (rule.IKE_RuleNum() == 0) return kPhaseError;
  bags_.Append(IKEBag(rule.IKE_RuleNum(), parameters, local, remote, rule.Origin()->UniqueID()));
  return 0;
}

std::ostream& IKEGenerationBag::OutputRuleLabel(std::ostream& out, unsigned origin_id) const {
  return out << "\tIKE_LABEL \"" << bags_.FindRuleLabel(origin_id) << "\" ";
}
