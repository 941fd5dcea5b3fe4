#include "crypto/vpn_node.h"

#include <iostream>

#include "crypto/certificate.h"
#include "crypto/name_reference.h"
#include "crypto/security_parameters.h"
#include "model/address.h"
#include "support/fwi18n.h"

namespace {

const char kGatewayName[] = "VPNGateway";
const int kVpnSet = 52;

}  // namespace

VPNNode::VPNNode(const char* vpn, const char* address, const char* certificate, const char* tunnel,
                 const char* comment)
    : Entity(kGatewayName, nullptr, comment, 0),
      vpn_(NewNameReference(vpn != nullptr ? vpn : "*")),
      address_(NewNameReference(address != nullptr ? address : "Missing Address")),
      certificate_(NewNameReference(certificate != nullptr ? certificate : "Missing Certificate")),
      tunnel_(NewNameReference(tunnel)) {}

VPNNode::~VPNNode() {
  delete vpn_;
  delete address_;
  delete certificate_;
  delete tunnel_;
}

int VPNNode::Undefined(std::ostream& out, const Entity& reference, const char* word) const {
  NotDefined(out, reference.Name(), word);
  return 1;
}

int VPNNode::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind == CO_ADDRESS) {
    int errors = 0;
    address_resolved_ = dynamic_cast<Address*>(FindNamed(address_, list));
    if (address_resolved_ == nullptr) errors += Undefined(out, *address_, "ADDRESS");
    if (tunnel_ == nullptr) return errors;
    tunnel_resolved_ = dynamic_cast<Address*>(FindNamed(tunnel_, list));
    return errors + (tunnel_resolved_ == nullptr ? Undefined(out, *tunnel_, "ADDRESS") : 0);
  }
  if (kind != CO_CERTIFICATE) return 0;
  Certificate* found = dynamic_cast<Certificate*>(FindNamed(certificate_, list));
  if (found == nullptr) return Undefined(out, *certificate_, "CERTIFICATE");
  if (found->IPsecType() != Type()) {
    out << fwi18n_text(kVpnSet, 1, "Error: VPNGateway refers to invalid Certificate type: ") << '"'
        << certificate_->Name() << '"' << std::endl;
    return 1;
  }
  certificate_resolved_ = found;
  return 0;
}

bool VPNNode::RefersTo(Config_Objects kind, const char* name) const {
  if (kind == CO_ADDRESS) return NameReferenceIs(address_, name) || NameReferenceIs(tunnel_, name);
  return kind == CO_CERTIFICATE && NameReferenceIs(certificate_, name);
}

int VPNNode::Refer(Config_Objects kind, const char* name, int print) const {
  bool hit = RefersTo(kind, name);
  if (hit && print) std::cout << kGatewayName << " \"" << Name() << '"' << std::endl;
  return hit;
}

void VPNNode::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_VPN) RenameNameReference(vpn_, old_name, new_name);
  if (kind == CO_ADDRESS) {
    RenameNameReference(address_, old_name, new_name);
    RenameNameReference(tunnel_, old_name, new_name);
  }
  if (kind == CO_CERTIFICATE) RenameNameReference(certificate_, old_name, new_name);
}
