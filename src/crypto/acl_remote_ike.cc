#include "crypto/acl_remote_ike.h"

#include <memory>

#include "crypto/certificate.h"
#include "crypto/named_links.h"
#include "crypto/security_parameters_ike.h"
#include "model/address.h"
#include "model/entity_text.h"
#include "model/registry.h"
#include "policy/rule.h"

ACLRemoteIKE::ACLRemoteIKE(const char* user, Access_Level level, const char* address, const IkeProposalNames& names,
                           const char* certificate, IPsecIKEespParams* esp, IPsecIKEahParams* ah, const char* tunnel,
                           bool transport, const char* screen, const char* comment)
    : ACLRemote(user, level, address, certificate, transport ? nullptr : tunnel, transport, screen, comment),
      proposal_(names, esp, ah) {}

int ACLRemoteIKE::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind == CO_ALGORITHM) return proposal_.Resolve(list, false, *this, out);
  return ACLRemote::Resolve(kind, list, out);
}

bool ACLRemoteIKE::RefersTo(Config_Objects kind, const char* name) const {
  return kind == CO_ALGORITHM ? proposal_.Names(name) : ACLRemote::RefersTo(kind, name);
}

void ACLRemoteIKE::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_ALGORITHM) proposal_.Rename(old_name, new_name);
  ACLRemote::RenameReference(kind, old_name, new_name);
}

// In transport mode the entry has no tunnel.
std::ostream& ACLRemoteIKE::Print(std::ostream& out) const {
  out << "ACCESS IKE \"" << Use().Name() << "\" " << LevelText() << " \"" << AddressReference().Name() << "\" ";
  proposal_.PrintPhase2(proposal_.PrintValues(out, CertificateReference(), " ") << ' ', false, "");
  if (TransportMode()) out << " TRANSPORT";
  return entity_text_tail(entity_text_clause(out, " TUNNEL ", TunnelReference()), *this);
}

std::ostream& ACLRemoteIKE::Enumerate(std::ostream& out, Enumerate_Type) const {
  proposal_.PrintPhase2(ListingUserAndAddress(out) << "IPSEC ", true, "") << "IKE(";
  proposal_.PrintValues(out, CertificateReference(), ", ") << ") ";
  if (TransportMode()) out << "TRANSPORT ";
  if (TunnelReference() != nullptr) entity_text_clause(out, "TUNNEL ", TunnelReference()) << ' ';
  return entity_text_comment(ListingPermission(out), *this) << '\n';
}

Rule* ACLRemoteIKE::GenerateRule(Certificate& local_certificate, Service& service, const Address& local_address) {
  const char* tunnel = TunnelReference() != nullptr ? TunnelReference()->Name() : nullptr;
  std::unique_ptr<SecurityParameters> parameters(proposal_.Parameters(
      CertificateReference().Name(), local_certificate.Name(), {tunnel, nullptr, nullptr, nullptr, TransportMode()}));
  LinkNamedObjects(*parameters, {{CO_ADDRESS, {ResolvedTunnel()}},
                                 {CO_CERTIFICATE, {ResolvedCertificate(), &local_certificate}}});
  parameters->Direction(DIRECTION_DECRYPT);
  Rule* rule = AdminRule(service, local_address, *parameters);
  rule_id_ = static_cast<unsigned>(rule->UniqueID());
  return rule;
}

void ACLRemoteIKE::GenerateDataRest(std::ostream& out, const Registry& registry) const {
  registry.IKEGenBag().OutputRuleLabel(out, rule_id_) << ";\n";
}
