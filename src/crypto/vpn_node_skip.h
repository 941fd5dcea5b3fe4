// VPNNodeSkip is a gateway whose pairs encrypt with SKIP version 2: the
// key, data, MAC and compression algorithms of its side.
#ifndef FW_CRYPTO_VPN_NODE_SKIP_H
#define FW_CRYPTO_VPN_NODE_SKIP_H

#include "crypto/skip_algorithms.h"
#include "crypto/vpn_node.h"

class VPNNodeSkip : public VPNNode {
 public:
  // `algorithms` are the key, data, MAC and compression names, in this
  // order; a null one becomes a placeholder.  `tunnel` may be null.
  VPNNodeSkip(const char* vpn, const char* address, const char* certificate, const char* const algorithms[4],
              const char* tunnel, const char* comment);

  // Besides the base's kinds: each of the four SKIP algorithm kinds links
  // its algorithm from the version 2 list; all but compression must be
  // installed.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  SecurityParameters* GenerateSecurityParameters(const VPNNode& peer) const override;
  IPSEC_TYPE Type() const override { return IPSEC_SKIP; }
  std::ostream& Print(std::ostream& out) const override;
  // The full line whatever `type` asks: a gateway has no name to list
  // alone.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;

 protected:
  bool RefersTo(Config_Objects kind, const char* name) const override;

 private:
  // The certificate, the algorithms each behind its word of `words`, and
  // the tunnel.
  std::ostream& PrintSkip(std::ostream& out, const char* const words[4]) const;

  SkipAlgorithms algorithms_;
};

#endif
