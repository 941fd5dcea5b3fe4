#include "crypto/ike_bag_list.h"

void IKEBagList::Append(const IKEBag& bag) {
  for (const IKEBag& kept : bags_)
    if (kept.Equal(bag)) return;
  bags_.push_back(bag);
}

int IKEBagList::GenerateIKEPreshared(std::ostream& out) const {
  for (const IKEBag& bag : bags_)
    if (int status = bag.GenerateIKEPreshared(out)) return status;
  return 0;
}

unsigned IKEBagList::FindRuleLabel(unsigned origin_id) const {
  for (const IKEBag& bag : bags_)
    if (bag.OriginId() >= 0 && static_cast<unsigned>(bag.OriginId()) == origin_id) return bag.Label();
  return 0;
}
