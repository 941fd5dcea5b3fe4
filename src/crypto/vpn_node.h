// A VPNNode is one gateway of a VPN: the addresses it protects, its
// certificate and, in tunnel mode, its tunnel address.  Every pair of
// gateways of one VPN encrypts between each other; the source gateway of a
// pair makes the security parameters of the pair.  The gateway owns its
// name references; what they resolve to belongs to the registry.
#ifndef FW_CRYPTO_VPN_NODE_H
#define FW_CRYPTO_VPN_NODE_H

#include <ostream>

#include "crypto/crypto_types.h"
#include "crypto/secured_end.h"
#include "model/entity.h"

class SecurityParameters;

class VPNNode : public Entity {
 public:
  ~VPNNode() override;

  // The name of the VPN; "*" when the statement gave none.
  const Entity& Vpn() const { return *vpn_; }
  const Entity& AddressReference() const { return end_.AddressReference(); }
  const Entity& CertificateReference() const { return end_.CertificateReference(); }
  const Entity* TunnelReference() const { return end_.TunnelReference(); }
  Address* ResolvedAddress() const { return end_.ResolvedAddress(); }
  Certificate* ResolvedCertificate() const { return end_.ResolvedCertificate(); }
  Address* ResolvedTunnel() const { return end_.ResolvedTunnel(); }

  // CO_ADDRESS links the address and the tunnel, CO_CERTIFICATE the
  // certificate, which must be of this gateway's kind.  Returns the number
  // of errors, each reported on `out`.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;

  // The parameters of the traffic from this gateway's side to `peer`'s:
  // this gateway's algorithms, the two certificates, tunnels and screens.
  // Null when the peer is of another kind.  The caller owns the result.
  virtual SecurityParameters* GenerateSecurityParameters(const VPNNode& peer) const = 0;
  // The kind of certificate the gateway needs: IPSEC_IKE or IPSEC_SKIP.
  virtual IPSEC_TYPE Type() const = 0;

 protected:
  // `tunnel` may be null; a null address or certificate becomes a
  // placeholder, a null VPN "*".
  VPNNode(const char* vpn, const char* address, const char* certificate, const char* tunnel,
          const char* comment);

  // Whether a reference of `kind` carries `name`; Refer reports a hit.
  virtual bool RefersTo(Config_Objects kind, const char* name) const;
  // The VPN and the address, each quoted and followed by a blank, which
  // statements and listings start with.
  std::ostream& PrintNames(std::ostream& out) const;
  // The comment clause of a statement: the word behind a blank, the comment
  // behind a tab.
  std::ostream& PrintComment(std::ostream& out) const;

 private:
  Entity* vpn_;
  SecuredEnd end_;
};

#endif
