#include "crypto/vpn_node_skip.h"

#include <iostream>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/name_reference.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"

namespace {

struct AlgorithmSlot {
  Config_Objects kind;
  const char* placeholder;
  const char* word;
  bool must_be_installed;
};

const AlgorithmSlot kSlots[4] = {
    {CO_ALG_KEY, "Missing Key Algorithm", "KEY ALGORITHM", true},
    {CO_ALG_DATA, "Missing Data Algorithm", "DATA ALGORITHM", true},
    {CO_ALG_MAC, "Missing MAC Algorithm", "MAC ALGORITHM", true},
    {CO_ALG_COMP, "Missing Compression Algorith", "COMPRESSION ALGORITHM", false},
};

const char* NameOf(const Entity* reference) { return reference != nullptr ? reference->Name() : nullptr; }

}  // namespace

VPNNodeSkip::VPNNodeSkip(const char* vpn, const char* address, const char* certificate,
                         const char* const algorithms[4], const char* tunnel, const char* comment)
    : VPNNode(vpn, address, certificate, tunnel, comment) {
  for (int slot = 0; slot < 4; ++slot)
    algorithms_[slot] = NewNameReference(algorithms[slot] != nullptr ? algorithms[slot] : kSlots[slot].placeholder);
}

VPNNodeSkip::~VPNNodeSkip() {
  for (Entity* algorithm : algorithms_) delete algorithm;
}

int VPNNodeSkip::Slot(Config_Objects kind) {
  for (int slot = 0; slot < 4; ++slot)
    if (kSlots[slot].kind == kind) return slot;
  return -1;
}

int VPNNodeSkip::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  int slot = Slot(kind);
  if (slot < 0) return VPNNode::Resolve(kind, list, out);
  resolved_[slot] = static_cast<Algorithm*>(FindNamed(algorithms_[slot], list));
  if (resolved_[slot] == nullptr) return Undefined(out, *algorithms_[slot], kSlots[slot].word);
  return kSlots[slot].must_be_installed && resolved_[slot]->IsInstalled(std::cout) != 0;
}

bool VPNNodeSkip::RefersTo(Config_Objects kind, const char* name) const {
  int slot = Slot(kind);
  return slot >= 0 ? NameReferenceIs(algorithms_[slot], name) : VPNNode::RefersTo(kind, name);
}

void VPNNodeSkip::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  int slot = Slot(kind);
  if (slot >= 0) RenameNameReference(algorithms_[slot], old_name, new_name);
  VPNNode::RenameReference(kind, old_name, new_name);
}

// The algorithms come from this side of the pair; certificates and
// tunnels name both ends.  SKIP pairs name no screens.
SecurityParameters* VPNNodeSkip::GenerateSecurityParameters(const VPNNode& peer) const {
  if (peer.Type() != IPSEC_SKIP) return nullptr;
  SkipNames names = {CertificateReference().Name(), peer.CertificateReference().Name(), algorithms_[0]->Name(),
                     algorithms_[1]->Name(),         algorithms_[2]->Name(),             algorithms_[3]->Name()};
  SecurityEnds ends = {NameOf(TunnelReference()), NameOf(peer.TunnelReference()), nullptr, nullptr, false};
  SecurityParameters* parameters = new SkipParameter(SKIP_V2, names, ends);
  LinkNamedObjects(*parameters, {{CO_ADDRESS, {ResolvedTunnel(), peer.ResolvedTunnel()}},
                                  {CO_CERTIFICATE, {ResolvedCertificate(), peer.ResolvedCertificate()}},
                                  {CO_ALG_KEY, {resolved_[0]}},
                                  {CO_ALG_DATA, {resolved_[1]}},
                                  {CO_ALG_MAC, {resolved_[2]}},
                                  {CO_ALG_COMP, {resolved_[3]}}});
  return parameters;
}
