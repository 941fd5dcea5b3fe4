// SecuredEnd is where an encrypting party stands: the addresses behind
// it, the certificate it is known by and, in tunnel mode, its tunnel
// address.  Gateways of a VPN and remote administrators are such ends.
// It owns its name references; what they resolve to belongs to the
// registry.
#ifndef FW_CRYPTO_SECURED_END_H
#define FW_CRYPTO_SECURED_END_H

#include <ostream>

#include "crypto/crypto_types.h"
#include "model/entity.h"

class Address;
class Certificate;

class SecuredEnd {
 public:
  // `tunnel` may be null; a null address or certificate becomes a
  // placeholder.
  SecuredEnd(const char* address, const char* certificate, const char* tunnel);
  SecuredEnd(const SecuredEnd&) = delete;
  SecuredEnd& operator=(const SecuredEnd&) = delete;
  ~SecuredEnd();

  const Entity& AddressReference() const { return *address_; }
  const Entity& CertificateReference() const { return *certificate_; }
  const Entity* TunnelReference() const { return tunnel_; }
  Address* ResolvedAddress() const { return address_resolved_; }
  Certificate* ResolvedCertificate() const { return certificate_resolved_; }
  Address* ResolvedTunnel() const { return tunnel_resolved_; }

  // CO_ADDRESS links the address and the tunnel, CO_CERTIFICATE the
  // certificate, which must be of `type`: one of another type is reported
  // as `wrong_type` and its name in double quotes.  Names not found are
  // reported on `out` as undefined in the name of `owner`.  Returns the
  // number of errors.
  int Resolve(Config_Objects kind, TList<Entity>& list, IPSEC_TYPE type, const char* wrong_type,
              const Entity& owner, std::ostream& out);
  bool RefersTo(Config_Objects kind, const char* name) const;
  void Rename(Config_Objects kind, const char* old_name, const char* new_name);

 private:
  Entity* address_;
  Entity* certificate_;
  Entity* tunnel_;
  Address* address_resolved_ = nullptr;
  Certificate* certificate_resolved_ = nullptr;
  Address* tunnel_resolved_ = nullptr;
};

#endif
