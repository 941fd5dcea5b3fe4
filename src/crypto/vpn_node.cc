#include "crypto/vpn_node.h"

#include <iostream>

#include "crypto/named_links.h"
#include "support/fwi18n.h"

namespace {

const char kGatewayName[] = "VPNGateway";
const int kVpnSet = 52;

}  // namespace

VPNNode::VPNNode(const char* vpn, const char* address, const char* certificate, const char* tunnel,
                 const char* comment)
    : Entity(kGatewayName, nullptr, comment, 0),
      vpn_(NewNameReference(vpn != nullptr ? vpn : "*")),
      end_(address, certificate, tunnel) {}

VPNNode::~VPNNode() { delete vpn_; }

int VPNNode::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  return end_.Resolve(kind, list, Type(),
                      fwi18n_text(kVpnSet, 1, "Error: VPNGateway refers to invalid Certificate type: "), *this, out);
}

bool VPNNode::RefersTo(Config_Objects kind, const char* name) const { return end_.RefersTo(kind, name); }

int VPNNode::Refer(Config_Objects kind, const char* name, int print) const {
  bool hit = RefersTo(kind, name);
  if (hit && print) std::cout << kGatewayName << " \"" << Name() << '"' << std::endl;
  return hit;
}

std::ostream& VPNNode::PrintNames(std::ostream& out) const {
  return out << '"' << vpn_->Name() << "\" \"" << AddressReference().Name() << "\" ";
}

std::ostream& VPNNode::PrintComment(std::ostream& out) const {
  if (Description() != nullptr) out << " COMMENT\t\"" << Description() << '"';
  return out;
}

void VPNNode::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_VPN) RenameNameReference(vpn_, old_name, new_name);
  end_.Rename(kind, old_name, new_name);
}
