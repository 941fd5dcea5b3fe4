// IKEBagList keeps the entries written to the IKE daemon's configuration,
// each distinct one once: the secret file needs the keys of each pair of
// ends only once, however many rules share them.
#ifndef FW_CRYPTO_IKE_BAG_LIST_H
#define FW_CRYPTO_IKE_BAG_LIST_H

#include <ostream>
#include <vector>

#include "crypto/ike_bag.h"

class IKEBagList {
 public:
  // Keeps `bag` unless an equal one is kept already.
  void Append(const IKEBag& bag);
  // Each bag's pre-shared entries in order, up to the first failure;
  // returns its status, or 0.
  int GenerateIKEPreshared(std::ostream& out) const;
  // The label of the first bag kept for the rule of `origin_id`; 0 when
  // none is.
  unsigned FindRuleLabel(unsigned origin_id) const;

 private:
  std::vector<IKEBag> bags_;
};

#endif
