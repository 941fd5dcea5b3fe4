#include "crypto/vpn_node_ike.h"

#include "crypto/certificate.h"
#include "crypto/named_links.h"
#include "crypto/security_parameters_ike.h"
#include "model/address.h"
#include "model/entity_text.h"
#include "screen/ferrowall.h"

namespace {

const char* NameOf(const Entity* reference) { return reference != nullptr ? reference->Name() : nullptr; }

}  // namespace

VPNNodeIKE::VPNNodeIKE(const char* vpn, const char* address, const IkeProposalNames& names,
                       const char* certificate, IPsecIKEespParams* esp, IPsecIKEahParams* ah, const char* tunnel,
                       const char* screen, const char* comment)
    : VPNNode(vpn, address, certificate, tunnel, comment), screen_(NewNameReference(screen)), proposal_(names, esp, ah) {}

VPNNodeIKE::~VPNNodeIKE() { delete screen_; }

int VPNNodeIKE::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind == CO_ALGORITHM) return proposal_.Resolve(list, true, *this, out);
  if (kind != CO_SCREEN) return VPNNode::Resolve(kind, list, out);
  if (screen_ == nullptr) return 0;
  screen_resolved_ = dynamic_cast<Ferrowall*>(FindNamed(screen_, list));
  if (screen_resolved_ != nullptr) return 0;
  NotDefined(out, screen_->Name(), "FERROWALL");
  return 1;
}

bool VPNNodeIKE::RefersTo(Config_Objects kind, const char* name) const {
  if (kind == CO_SCREEN) return NameReferenceIs(screen_, name);
  if (kind == CO_ALGORITHM) return proposal_.Names(name);
  return VPNNode::RefersTo(kind, name);
}

void VPNNodeIKE::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_SCREEN) RenameNameReference(screen_, old_name, new_name);
  if (kind == CO_ALGORITHM) proposal_.Rename(old_name, new_name);
  VPNNode::RenameReference(kind, old_name, new_name);
}

// The newer order of the proposal, with the group, which the grammar tells
// from the older by that number.
std::ostream& VPNNodeIKE::Print(std::ostream& out) const {
  proposal_.PrintValues(PrintNames(out << "VPNGATEWAY IKE "), CertificateReference(), " ");
  entity_text_clause(proposal_.PrintPhase2(out, false, " "), " TUNNEL ", TunnelReference());
  return PrintComment(entity_text_clause(out, " SCREEN ", screen_));
}

std::ostream& VPNNodeIKE::Enumerate(std::ostream& out, Enumerate_Type) const {
  proposal_.PrintPhase2(PrintNames(out) << "IPSEC", true, " ") << " IKE(";
  entity_text_clause(proposal_.PrintValues(out, CertificateReference(), ", ") << ')', " SCREEN ", screen_);
  return entity_text_comment(entity_text_clause(out, " TUNNEL ", TunnelReference()), *this) << '\n';
}

// The proposal comes from this side of the pair; certificates, tunnels and
// screens name both ends.
SecurityParameters* VPNNodeIKE::GenerateSecurityParameters(const VPNNode& peer) const {
  const VPNNodeIKE* other = dynamic_cast<const VPNNodeIKE*>(&peer);
  if (other == nullptr) return nullptr;
  SecurityEnds ends = {NameOf(TunnelReference()), NameOf(other->TunnelReference()), NameOf(screen_),
                       NameOf(other->screen_), false};
  SecurityParameters* parameters =
      proposal_.Parameters(CertificateReference().Name(), other->CertificateReference().Name(), ends);
  LinkNamedObjects(*parameters, {{CO_SCREEN, {screen_resolved_, other->screen_resolved_}},
                                 {CO_ADDRESS, {ResolvedTunnel(), other->ResolvedTunnel()}},
                                 {CO_CERTIFICATE, {ResolvedCertificate(), other->ResolvedCertificate()}}});
  return parameters;
}
