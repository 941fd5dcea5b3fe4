#include "crypto/acl_remote.h"

#include <iostream>

#include "crypto/certificate.h"
#include "crypto/name_reference.h"
#include "model/address.h"
#include "model/range.h"
#include "policy/rule.h"
#include "support/fwi18n.h"

namespace {

const int kAclRemoteSet = 51;

}  // namespace

ACLRemote::ACLRemote(const char* user, Access_Level level, const char* address, const char* certificate,
                     const char* tunnel, bool transport, const char* screen, const char* comment)
    : ACL(user, level, screen, comment),
      transport_(transport),
      address_(NewNameReference(address != nullptr ? address : "Missing Address")),
      certificate_(NewNameReference(certificate != nullptr ? certificate : "Missing Certificate")),
      tunnel_(NewNameReference(tunnel)) {}

ACLRemote::~ACLRemote() {
  delete address_;
  delete certificate_;
  delete tunnel_;
}

int ACLRemote::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind == CO_ADDRESS) {
    int errors = 0;
    for (auto [reference, resolved] : {std::pair{address_, &address_resolved_}, std::pair{tunnel_, &tunnel_resolved_}}) {
      if (reference == nullptr) continue;
      *resolved = dynamic_cast<Address*>(FindNamed(reference, list));
      if (*resolved == nullptr) NotDefined(out, reference->Name(), "ADDRESS");
      errors += *resolved == nullptr;
    }
    return errors;
  }
  if (kind != CO_CERTIFICATE) return ACL::Resolve(kind, list, out);
  Certificate* found = dynamic_cast<Certificate*>(FindNamed(certificate_, list));
  if (found == nullptr) {
    NotDefined(out, certificate_->Name(), "CERTIFICATE");
    return 1;
  }
  if (found->IPsecType() != IPsecType()) {
    out << fwi18n_text(kAclRemoteSet, 1, "Error: AccessRemote refers to invalid Certificate type: ") << '"'
        << certificate_->Name() << '"' << std::endl;
    return 1;
  }
  certificate_resolved_ = found;
  return 0;
}

bool ACLRemote::RefersTo(Config_Objects kind, const char* name) const {
  if (kind == CO_ADDRESS) return NameReferenceIs(address_, name) || NameReferenceIs(tunnel_, name);
  if (kind == CO_CERTIFICATE) return NameReferenceIs(certificate_, name);
  return ACL::RefersTo(kind, name);
}

void ACLRemote::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_ADDRESS) {
    RenameNameReference(address_, old_name, new_name);
    RenameNameReference(tunnel_, old_name, new_name);
  }
  if (kind == CO_CERTIFICATE) RenameNameReference(certificate_, old_name, new_name);
  ACL::RenameReference(kind, old_name, new_name);
}

void ACLRemote::GenerateDataFile(std::ostream& out, const Registry& registry) const {
  UserAndLevel(out) << '\t';
  if (address_resolved_ != nullptr)
    for (TList_Cell<Range>* cell = address_resolved_->Ranges().Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->DumpRange(out << '\t');
  GenerateDataRest(out, registry);
}

Rule* ACLRemote::AdminRule(Service& service, const Address& local_address,
                           const SecurityParameters& parameters) const {
  return new Rule(service, *address_resolved_, local_address, nullptr, &parameters, nullptr, nullptr, ACTION_ALLOW,
                  LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
}
