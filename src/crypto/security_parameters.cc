#include "crypto/security_parameters.h"

#include <utility>

#include "crypto/named_links.h"
#include "model/address.h"
#include "screen/ferrowall.h"

namespace {

Address* CopyOf(const Address* address) { return address != nullptr ? new Address(*address) : nullptr; }

// Links one screen reference; false when it names no screen.
bool LinkScreen(const Entity* reference, TList<Entity>& list, const Ferrowall** resolved) {
  if (reference == nullptr) return true;
  *resolved = dynamic_cast<Ferrowall*>(FindNamed(reference, list));
  return *resolved != nullptr;
}

// Replaces the private copy of one tunnel; false when it names no address.
bool LinkTunnel(const Entity* reference, TList<Entity>& list, Address** resolved) {
  if (reference == nullptr) return true;
  Address* found = dynamic_cast<Address*>(FindNamed(reference, list));
  if (found == nullptr) return false;
  delete *resolved;
  *resolved = new Address(*found);
  return true;
}

std::ostream& PrintClause(std::ostream& out, const char* word, const Entity* reference) {
  if (reference != nullptr) out << ' ' << word << " \"" << reference->Name() << '"';
  return out;
}

std::ostream& TunnelField(std::ostream& out, Address* tunnel) {
  if (tunnel == nullptr) return out << "\"NONE\"\t";
  return out << "\"addr_" << tunnel->UniqueID() << "\"\t";
}

}  // namespace

SecurityParameters::SecurityParameters(IPSEC_TYPE type, const SecurityEnds& ends)
    : type_(type),
      transport_(ends.transport),
      source_screen_(NewNameReference(ends.source_screen)),
      destination_screen_(NewNameReference(ends.destination_screen)) {
  if (transport_) return;
  source_tunnel_ = NewNameReference(ends.source_tunnel);
  destination_tunnel_ = NewNameReference(ends.destination_tunnel);
}

SecurityParameters::SecurityParameters(const SecurityParameters& other)
    : type_(other.type_),
      direction_(other.direction_),
      transport_(other.transport_),
      source_tunnel_(CopyNameReference(other.source_tunnel_)),
      destination_tunnel_(CopyNameReference(other.destination_tunnel_)),
      source_screen_(CopyNameReference(other.source_screen_)),
      destination_screen_(CopyNameReference(other.destination_screen_)),
      source_tunnel_resolved_(CopyOf(other.source_tunnel_resolved_)),
      destination_tunnel_resolved_(CopyOf(other.destination_tunnel_resolved_)),
      source_screen_resolved_(other.source_screen_resolved_),
      destination_screen_resolved_(other.destination_screen_resolved_) {}

SecurityParameters::~SecurityParameters() {
  delete source_tunnel_;
  delete destination_tunnel_;
  delete source_screen_;
  delete destination_screen_;
  delete source_tunnel_resolved_;
  delete destination_tunnel_resolved_;
}

Resolve_Error SecurityParameters::Resolve(Config_Objects kind, TList<Entity>& list, const char** name) {
  if (kind == CO_SCREEN) {
    if (!LinkScreen(source_screen_, list, &source_screen_resolved_)) *name = source_screen_->Name();
    else if (!LinkScreen(destination_screen_, list, &destination_screen_resolved_))
      *name = destination_screen_->Name();
    else return RESOLVE_OK;
    return RESOLVE_NOT_FOUND;
  }
  if (kind == CO_ADDRESS) {
    if (!LinkTunnel(source_tunnel_, list, &source_tunnel_resolved_)) *name = source_tunnel_->Name();
    else if (!LinkTunnel(destination_tunnel_, list, &destination_tunnel_resolved_))
      *name = destination_tunnel_->Name();
    else return RESOLVE_OK;
    return RESOLVE_NOT_FOUND;
  }
  return RESOLVE_OK;
}

Resolve_Error SecurityParameters::ResolveSKIPAlgorithms(Config_Objects, TList<Entity>&, Skip_Version,
                                                        const char**) {
  return RESOLVE_OK;
}

int SecurityParameters::Refer(Config_Objects kind, const char* name) const {
  if (kind == CO_SCREEN) return NameReferenceIs(source_screen_, name) || NameReferenceIs(destination_screen_, name);
  if (kind == CO_ADDRESS) return NameReferenceIs(source_tunnel_, name) || NameReferenceIs(destination_tunnel_, name);
  return 0;
}

void SecurityParameters::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_SCREEN) {
    RenameNameReference(source_screen_, old_name, new_name);
    RenameNameReference(destination_screen_, old_name, new_name);
  } else if (kind == CO_ADDRESS) {
    RenameNameReference(source_tunnel_, old_name, new_name);
    RenameNameReference(destination_tunnel_, old_name, new_name);
  }
}

void SecurityParameters::ReverseDirection() {
  if (direction_ == DIRECTION_DECRYPT) direction_ = DIRECTION_ENCRYPT;
  else if (direction_ == DIRECTION_ENCRYPT) direction_ = DIRECTION_DECRYPT;
  std::swap(source_tunnel_, destination_tunnel_);
  std::swap(source_tunnel_resolved_, destination_tunnel_resolved_);
  std::swap(source_screen_, destination_screen_);
  std::swap(source_screen_resolved_, destination_screen_resolved_);
}

void SecurityParameters::DumpKeys(std::ostream&) const {}

int SecurityParameters::Conflicts(const SecurityParameters&) const { return 0; }

bool SecurityParameters::UsesCertificateGroup() const { return false; }

SecurityParameters* SecurityParameters::Reversed(const SecurityParameters* parameters) {
  if (parameters == nullptr) return nullptr;
  SecurityParameters* reversed = parameters->Clone();
  reversed->ReverseDirection();
  return reversed;
}

std::ostream& SecurityParameters::OutputTunnelAddrs(std::ostream& out) const {
  if (transport_) return out << "\tTRANSPORT\t";
  TunnelField(out << '\t', source_tunnel_resolved_);
  return TunnelField(out, destination_tunnel_resolved_);
}

std::ostream& SecurityParameters::PrintEnds(std::ostream& out) const {
  if (transport_) {
    out << " TRANSPORT";
  } else {
    PrintClause(out, "SOURCE_TUNNEL", source_tunnel_);
    PrintClause(out, "DESTINATION_TUNNEL", destination_tunnel_);
  }
  PrintClause(out, "SOURCE_SCREEN", source_screen_);
  return PrintClause(out, "DESTINATION_SCREEN", destination_screen_);
}
