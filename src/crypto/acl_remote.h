// An ACLRemote is an access entry for an administrator who comes over the
// network: from which addresses, with which certificate, through which
// tunnel, under which protection.  It gives rise to a rule that lets that
// traffic in, encrypted, and to a line of Remote.Access with the
// addresses.  The derived classes are the kinds of key management.
#ifndef FW_CRYPTO_ACL_REMOTE_H
#define FW_CRYPTO_ACL_REMOTE_H

#include "crypto/acl.h"
#include "crypto/crypto_types.h"
#include "crypto/secured_end.h"

class Address;
class Certificate;
class Rule;
class SecurityParameters;
class Service;

class ACLRemote : public ACL {
 public:
  bool TransportMode() const { return transport_; }
  Address* ResolvedAddress() const { return end_.ResolvedAddress(); }
  Certificate* ResolvedCertificate() const { return end_.ResolvedCertificate(); }
  Address* ResolvedTunnel() const { return end_.ResolvedTunnel(); }

  // Besides the user: CO_ADDRESS links the address and the tunnel,
  // CO_CERTIFICATE the certificate, which must be of the entry's kind.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  int Type() const override { return 1; }
  // The user, the level and the addresses, then the kind's rest.
  void GenerateDataFile(std::ostream& out, const Registry& registry) const override;

  // The rule that lets the administrator's traffic from the entry's
  // address to `local_address` in with `service`, decrypted at this screen
  // with `local_certificate` as its end; null when the entry needs none.
  // The caller owns the rule.
  virtual Rule* GenerateRule(Certificate& local_certificate, Service& service, const Address& local_address) = 0;
  virtual IPSEC_TYPE IPsecType() const = 0;

 protected:
  // `tunnel` may be null; a null address or certificate becomes a
  // placeholder.
  ACLRemote(const char* user, Access_Level level, const char* address, const char* certificate,
            const char* tunnel, bool transport, const char* screen, const char* comment);

  bool RefersTo(Config_Objects kind, const char* name) const override;
  // What follows the addresses in Remote.Access.
  virtual void GenerateDataRest(std::ostream& out, const Registry& registry) const = 0;
  // The start of a listing: the screen, the user and the address, each
  // followed by a blank.
  std::ostream& ListingUserAndAddress(std::ostream& out) const;
  // The allowed rule with `parameters` on its decrypting side.
  Rule* AdminRule(Service& service, const Address& local_address, const SecurityParameters& parameters) const;
  const Entity& AddressReference() const { return end_.AddressReference(); }
  const Entity& CertificateReference() const { return end_.CertificateReference(); }
  const Entity* TunnelReference() const { return end_.TunnelReference(); }

 private:
  bool transport_;
  SecuredEnd end_;
};

#endif
