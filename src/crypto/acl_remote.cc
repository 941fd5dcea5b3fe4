#include "crypto/acl_remote.h"

#include <iostream>

#include "model/address.h"
#include "model/range.h"
#include "policy/rule.h"
#include "support/fwi18n.h"

namespace {

const int kAclRemoteSet = 51;

}  // namespace

ACLRemote::ACLRemote(const char* user, Access_Level level, const char* address, const char* certificate,
                     const char* tunnel, bool transport, const char* screen, const char* comment)
    : ACL(user, level, screen, comment), transport_(transport), end_(address, certificate, tunnel) {}

int ACLRemote::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_ADDRESS && kind != CO_CERTIFICATE) return ACL::Resolve(kind, list, out);
  return end_.Resolve(kind, list, IPsecType(),
                      fwi18n_text(kAclRemoteSet, 1, "Error: AccessRemote refers to invalid Certificate type: "),
                      *this, out);
}

bool ACLRemote::RefersTo(Config_Objects kind, const char* name) const {
  return end_.RefersTo(kind, name) || ACL::RefersTo(kind, name);
}

void ACLRemote::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  end_.Rename(kind, old_name, new_name);
  ACL::RenameReference(kind, old_name, new_name);
}

void ACLRemote::GenerateDataFile(std::ostream& out, const Registry& registry) const {
  UserAndLevel(out) << '\t';
  if (ResolvedAddress() != nullptr)
    for (TList_Cell<Range>* cell = ResolvedAddress()->Ranges().Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->DumpRange(out << '\t');
  GenerateDataRest(out, registry);
}

std::ostream& ACLRemote::ListingUserAndAddress(std::ostream& out) const {
  return ListingUser(out) << '"' << AddressReference().Name() << "\" ";
}

Rule* ACLRemote::AdminRule(Service& service, const Address& local_address,
                           const SecurityParameters& parameters) const {
  return new Rule(service, *ResolvedAddress(), local_address, nullptr, &parameters, nullptr, nullptr, ACTION_ALLOW,
                  LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
}
