// VPNNodeIKE is a gateway whose pairs negotiate their keys with IKE: its
// proposal, and the screen that stands at this gateway, if any.
#ifndef FW_CRYPTO_VPN_NODE_IKE_H
#define FW_CRYPTO_VPN_NODE_IKE_H

#include "crypto/ike_proposal.h"
#include "crypto/vpn_node.h"

class Ferrowall;

class VPNNodeIKE : public VPNNode {
 public:
  // Takes `esp` and `ah`, either of which may be null; `screen` and
  // `tunnel` may be null.
  VPNNodeIKE(const char* vpn, const char* address, const IkeProposalNames& names, const char* certificate,
             IPsecIKEespParams* esp, IPsecIKEahParams* ah, const char* tunnel, const char* screen,
             const char* comment);
  ~VPNNodeIKE() override;

  // Besides the base's kinds: CO_ALGORITHM links the proposal, the method
  // first; CO_SCREEN the screen.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  SecurityParameters* GenerateSecurityParameters(const VPNNode& peer) const override;
  IPSEC_TYPE Type() const override { return IPSEC_IKE; }
  std::ostream& Print(std::ostream& out) const override;
  // The full line whatever `type` asks: a gateway has no name to list
  // alone.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;

 protected:
  bool RefersTo(Config_Objects kind, const char* name) const override;

 private:
  Entity* screen_;
  Ferrowall* screen_resolved_ = nullptr;
  IkeProposal proposal_;
};

#endif
