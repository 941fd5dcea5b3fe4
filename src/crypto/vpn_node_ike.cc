#include "crypto/vpn_node_ike.h"

#include <tuple>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "crypto/name_reference.h"
#include "crypto/security_parameters_ike.h"
#include "model/address.h"
#include "screen/ferrowall.h"

namespace {

Entity* AlgorithmReference(const char* name) { return NewNameReference(name != nullptr ? name : "NONE"); }

const char* NameOf(const Entity* reference) { return reference != nullptr ? reference->Name() : nullptr; }

}  // namespace

VPNNodeIKE::VPNNodeIKE(const char* vpn, const char* address, const VpnIkeNames& names, const char* certificate,
                       IPsecIKEespParams* esp, IPsecIKEahParams* ah, const char* tunnel, const char* screen,
                       const char* comment)
    : VPNNode(vpn, address, certificate, tunnel, comment),
      screen_(NewNameReference(screen)),
      encryption_(AlgorithmReference(names.encryption)),
      hash_(AlgorithmReference(names.hash)),
      method_(AlgorithmReference(names.method)),
      group_(names.group),
      ah_(ah),
      esp_(esp) {}

VPNNodeIKE::~VPNNodeIKE() {
  delete screen_;
  delete encryption_;
  delete hash_;
  delete method_;
  delete ah_;
  delete esp_;
}

int VPNNodeIKE::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind == CO_ALGORITHM) return ResolveAlgorithms(list, out);
  if (kind != CO_SCREEN) return VPNNode::Resolve(kind, list, out);
  if (screen_ == nullptr) return 0;
  screen_resolved_ = dynamic_cast<Ferrowall*>(FindNamed(screen_, list));
  return screen_resolved_ == nullptr ? Undefined(out, *screen_, "FERROWALL") : 0;
}

int VPNNodeIKE::ResolveAlgorithms(TList<Entity>& list, std::ostream& out) {
  int errors = 0;
  method_resolved_ = static_cast<Algorithm*>(FindNamed(method_, list));
  if (method_resolved_ == nullptr) errors += Undefined(out, *method_, "ALGORITHM");
  for (auto [reference, type, resolved] : {std::tuple{encryption_, ALG_ENCRYPTION, &encryption_resolved_},
                                           std::tuple{hash_, ALG_AUTHENTICATION, &hash_resolved_}}) {
    bool refused = false;
    *resolved = LinkIkePhase1(reference, type, list, &refused);
    if (*resolved == nullptr) errors += Undefined(out, *reference, "ALGORITHM");
    errors += refused;
  }
  const char* missing = nullptr;
  if (ah_ != nullptr) errors += Phase2Errors(ah_->Resolve(CO_ALGORITHM, list, &missing), missing, out);
  if (esp_ != nullptr) errors += Phase2Errors(esp_->Resolve(CO_ALGORITHM, list, &missing), missing, out);
  return errors;
}

int VPNNodeIKE::Phase2Errors(int answer, const char* missing, std::ostream& out) const {
  if (answer == RESOLVE_NOT_FOUND) NotDefined(out, missing, "ALGORITHM");
  return answer != RESOLVE_OK;
}

bool VPNNodeIKE::RefersTo(Config_Objects kind, const char* name) const {
  if (kind == CO_SCREEN) return NameReferenceIs(screen_, name);
  if (kind == CO_ALGORITHM)
    return NameReferenceIs(encryption_, name) || NameReferenceIs(hash_, name) || NameReferenceIs(method_, name);
  return VPNNode::RefersTo(kind, name);
}

void VPNNodeIKE::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_SCREEN) RenameNameReference(screen_, old_name, new_name);
  if (kind == CO_ALGORITHM)
    for (Entity* algorithm : {encryption_, hash_, method_}) RenameNameReference(algorithm, old_name, new_name);
  VPNNode::RenameReference(kind, old_name, new_name);
}

// Algorithms, ESP and AH come from this side of the pair; certificates,
// tunnels and screens name both ends.
SecurityParameters* VPNNodeIKE::GenerateSecurityParameters(const VPNNode& peer) const {
  const VPNNodeIKE* other = dynamic_cast<const VPNNodeIKE*>(&peer);
  if (other == nullptr) return nullptr;
  IkeNames names = {encryption_->Name(), hash_->Name(), group_, method_->Name(), CertificateReference().Name(),
                    other->CertificateReference().Name()};
  SecurityEnds ends = {NameOf(TunnelReference()), NameOf(other->TunnelReference()), NameOf(screen_),
                       NameOf(other->screen_), false};
  SecurityParameters* parameters =
      new SecurityParametersIKE(names, esp_ != nullptr ? new IPsecIKEespParams(*esp_) : nullptr,
                                ah_ != nullptr ? new IPsecIKEahParams(*ah_) : nullptr, ends);
  Link(*parameters, {{CO_SCREEN, {screen_resolved_, other->screen_resolved_}},
                     {CO_ADDRESS, {ResolvedTunnel(), other->ResolvedTunnel()}},
                     {CO_CERTIFICATE, {ResolvedCertificate(), other->ResolvedCertificate()}},
                     {CO_ALGORITHM,
                      {encryption_resolved_, hash_resolved_, method_resolved_,
                       esp_ != nullptr ? esp_->EncryptionResolved() : nullptr,
                       esp_ != nullptr ? esp_->AuthenticationResolved() : nullptr,
                       ah_ != nullptr ? ah_->AlgorithmResolved() : nullptr}}});
  return parameters;
}
