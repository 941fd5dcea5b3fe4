#include "crypto/vpn_node_skip.h"

#include <iostream>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/named_links.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"
#include "model/entity_text.h"

namespace {

const char* const kPlaceholders[4] = {"Missing Key Algorithm", "Missing Data Algorithm", "Missing MAC Algorithm",
                                      "Missing Compression Algorith"};

const char* const kStatementWords[4] = {" KEYS ", " DATAS ", " MACS ", " COMPRESSIONS "};
const char* const kListingWords[4] = {" KEY ", " DATA ", " MAC ", " COMPRESSION "};

const char* NameOf(const Entity* reference) { return reference != nullptr ? reference->Name() : nullptr; }

}  // namespace

VPNNodeSkip::VPNNodeSkip(const char* vpn, const char* address, const char* certificate,
                         const char* const algorithms[4], const char* tunnel, const char* comment)
    : VPNNode(vpn, address, certificate, tunnel, comment), algorithms_(algorithms, kPlaceholders) {}

int VPNNodeSkip::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  return VPNNode::Resolve(kind, list, out) + algorithms_.Resolve(kind, list, *this, out);
}

bool VPNNodeSkip::RefersTo(Config_Objects kind, const char* name) const {
  return algorithms_.RefersTo(kind, name) || VPNNode::RefersTo(kind, name);
}

void VPNNodeSkip::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  algorithms_.Rename(kind, old_name, new_name);
  VPNNode::RenameReference(kind, old_name, new_name);
}

std::ostream& VPNNodeSkip::PrintSkip(std::ostream& out, const char* const words[4]) const {
  algorithms_.Print(out << '"' << CertificateReference().Name() << '"', words, 4);
  return entity_text_clause(out, " TUNNEL ", TunnelReference());
}

std::ostream& VPNNodeSkip::Print(std::ostream& out) const {
  return PrintComment(PrintSkip(PrintNames(out << "VPNGATEWAY "), kStatementWords));
}

std::ostream& VPNNodeSkip::Enumerate(std::ostream& out, Enumerate_Type) const {
  return entity_text_comment(PrintSkip(PrintNames(out) << "SKIP ", kListingWords), *this) << '\n';
}

// The algorithms come from this side of the pair; certificates and
// tunnels name both ends.  SKIP pairs name no screens.
SecurityParameters* VPNNodeSkip::GenerateSecurityParameters(const VPNNode& peer) const {
  if (peer.Type() != IPSEC_SKIP) return nullptr;
  SkipNames names = {CertificateReference().Name(), peer.CertificateReference().Name(), algorithms_.Name(0),
                     algorithms_.Name(1),            algorithms_.Name(2),                algorithms_.Name(3)};
  SecurityEnds ends = {NameOf(TunnelReference()), NameOf(peer.TunnelReference()), nullptr, nullptr, false};
  SecurityParameters* parameters = new SkipParameter(SKIP_V2, names, ends);
  LinkNamedObjects(*parameters, {{CO_ADDRESS, {ResolvedTunnel(), peer.ResolvedTunnel()}},
                                  {CO_CERTIFICATE, {ResolvedCertificate(), peer.ResolvedCertificate()}},
                                  {CO_ALG_KEY, {algorithms_.Resolved(0)}},
                                  {CO_ALG_DATA, {algorithms_.Resolved(1)}},
                                  {CO_ALG_MAC, {algorithms_.Resolved(2)}},
                                  {CO_ALG_COMP, {algorithms_.Resolved(3)}}});
  return parameters;
}
