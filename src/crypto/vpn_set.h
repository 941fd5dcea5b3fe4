// A VPNSet is a VPN as the compile sees it: the gateways that name it, in
// the order of the policy.  No VPN is written anywhere; the set is made
// from its gateways.  The set doesn't own them.
#ifndef FW_CRYPTO_VPN_SET_H
#define FW_CRYPTO_VPN_SET_H

#include "model/entity.h"
#include "model/t_list.h"

class VPNNode;

class VPNSet : public Entity {
 public:
  explicit VPNSet(const char* name);

  const TList<VPNNode>& Nodes() const { return nodes_; }
  void Add(VPNNode& node) { nodes_.Append(node); }
  // 1 when two gateways of the set differ in kind, which no pair of them
  // could then agree on.
  int MixedMode() const;

 private:
  TList<VPNNode> nodes_;
};

#endif
