// IKEGenerationBag carries what the IKE files of a compile need across its
// stages: the labels given to the interface copies of IKE rules (1 upward,
// in the order of preparation, before any interface table is written), the
// union of the local addresses the IKE daemon serves (ISAKMPSERVERS of the
// tables), and the entries written to the daemon's configuration.
#ifndef FW_CRYPTO_IKE_GENERATION_BAG_H
#define FW_CRYPTO_IKE_GENERATION_BAG_H

#include <ostream>

#include "crypto/ike_bag_list.h"

class Address;
class Rule;

class IKEGenerationBag {
 public:
  IKEGenerationBag() = default;
  IKEGenerationBag(const IKEGenerationBag&) = delete;
  IKEGenerationBag& operator=(const IKEGenerationBag&) = delete;
  ~IKEGenerationBag();

  // Labels the interface copy `rule` and adds its local end to the ISAKMP
  // addresses.  0 when it was labelled now; -1 when it was before; 217
  // when it was labelled out of order.  `reverse` marks the second visit
  // of a reverse interface, which finds its copies labelled.
  int PrepareRule(Rule& rule, bool reverse);
  // Keeps the entry of a labelled copy for the secret file; 217 for a copy
  // without a label.
  int AddRule(const Rule& rule, const SecurityParametersIKE& parameters, const IKEBagEnd& local,
              const IKEBagEnd& remote);
  int GenerateIKEPreshared(std::ostream& out) const { return bags_.GenerateIKEPreshared(out); }
  // "\tIKE_LABEL \"<label>\" " with the label of the first entry kept for
  // the rule of `origin_id`, 0 when there is none.
  std::ostream& OutputRuleLabel(std::ostream& out, unsigned origin_id) const;

  // The last label given; 0 while no rule uses IKE.
  unsigned RuleCount() const { return rule_count_; }
  // The merged local addresses, or null.
  const Address* ISAKMPAddress() const { return isakmp_; }

 private:
  void MergeIntoISAKMP(Address& local);

  unsigned rule_count_ = 0;
  IKEBagList bags_;
  Address* isakmp_ = nullptr;
  bool owned_ = false;  // whether isakmp_ was made here
};

#endif
