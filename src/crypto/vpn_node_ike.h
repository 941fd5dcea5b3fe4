// VPNNodeIKE is a gateway whose pairs negotiate their keys with IKE: the
// phase 1 encryption, hash, Diffie-Hellman group and authentication
// method, the phase 2 ESP and AH algorithms, and the screen that stands at
// this gateway, if any.
#ifndef FW_CRYPTO_VPN_NODE_IKE_H
#define FW_CRYPTO_VPN_NODE_IKE_H

#include "crypto/vpn_node.h"

class Algorithm;
class Ferrowall;
class IPsecIKEahParams;
class IPsecIKEespParams;

// The IKE clause of a gateway; null algorithm names become "NONE".
struct VpnIkeNames {
  const char* encryption;
  const char* hash;
  unsigned group;
  const char* method;
};

class VPNNodeIKE : public VPNNode {
 public:
  // Takes `esp` and `ah`, either of which may be null; `screen` and
  // `tunnel` may be null.
  VPNNodeIKE(const char* vpn, const char* address, const VpnIkeNames& names, const char* certificate,
             IPsecIKEespParams* esp, IPsecIKEahParams* ah, const char* tunnel, const char* screen,
             const char* comment);
  ~VPNNodeIKE() override;

  // Besides the base's kinds: CO_ALGORITHM links the method, the phase 1
  // algorithms (which must be installed for IKE) and the phase 2 ones;
  // CO_SCREEN the screen.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  SecurityParameters* GenerateSecurityParameters(const VPNNode& peer) const override;
  IPSEC_TYPE Type() const override { return IPSEC_IKE; }

 protected:
  bool RefersTo(Config_Objects kind, const char* name) const override;

 private:
  int ResolveAlgorithms(TList<Entity>& list, std::ostream& out);
  // 0, or 1 after reporting a phase 2 algorithm that `answer` says is
  // missing; one that isn't installed was reported when it was linked.
  int Phase2Errors(int answer, const char* missing, std::ostream& out) const;

  Entity* screen_;
  Entity* encryption_;
  Entity* hash_;
  Entity* method_;
  Ferrowall* screen_resolved_ = nullptr;
  Algorithm* encryption_resolved_ = nullptr;
  Algorithm* hash_resolved_ = nullptr;
  unsigned group_;
  Algorithm* method_resolved_ = nullptr;
  IPsecIKEahParams* ah_;
  IPsecIKEespParams* esp_;
};

#endif
