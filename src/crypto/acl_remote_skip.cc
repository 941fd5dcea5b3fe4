#include "crypto/acl_remote_skip.h"

#include <iostream>
#include <memory>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/name_reference.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"
#include "policy/rule.h"

namespace {

struct AlgorithmSlot {
  Config_Objects kind;
  const char* placeholder;
  const char* word;
  bool must_be_installed;
};

const AlgorithmSlot kSlots[4] = {
    {CO_ALG_KEY, "Missing key algorithm", "KEY ALGORITHM", true},
    {CO_ALG_DATA, "Missing data algorithm", "DATA ALGORITHM", true},
    {CO_ALG_MAC, nullptr, "MAC ALGORITHM", true},
    {CO_ALG_COMP, nullptr, "COMPRESSION ALGORITHM", false},
};

}  // namespace

ACLRemoteSkip::ACLRemoteSkip(const char* user, Access_Level level, const char* address, Skip_Version version,
                             const char* certificate, const char* const algorithms[4], const char* tunnel,
                             const char* screen, const char* comment)
    : ACLRemote(user, level, address, certificate, tunnel, false, screen, comment), version_(version) {
  for (int slot = 0; slot < 4; ++slot)
    algorithms_[slot] = NewNameReference(algorithms[slot] != nullptr ? algorithms[slot] : kSlots[slot].placeholder);
}

ACLRemoteSkip::~ACLRemoteSkip() {
  for (Entity* algorithm : algorithms_) delete algorithm;
}

int ACLRemoteSkip::Slot(Config_Objects kind) {
  for (int slot = 0; slot < 4; ++slot)
    if (kSlots[slot].kind == kind) return slot;
  return -1;
}

int ACLRemoteSkip::ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                                     std::ostream& out) {
  int slot = Slot(kind);
  if (version != version_ || slot < 0 || algorithms_[slot] == nullptr) return 0;
  resolved_[slot] = static_cast<Algorithm*>(algorithms_[slot]->FindSelf(list, 0));
  if (resolved_[slot] == nullptr) {
    NotDefined(out, algorithms_[slot]->Name(), kSlots[slot].word);
    return 1;
  }
  return kSlots[slot].must_be_installed && resolved_[slot]->IsInstalled(std::cout) != 0;
}

bool ACLRemoteSkip::RefersTo(Config_Objects kind, const char* name) const {
  int slot = Slot(kind);
  return slot >= 0 ? NameReferenceIs(algorithms_[slot], name) : ACLRemote::RefersTo(kind, name);
}

void ACLRemoteSkip::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  int slot = Slot(kind);
  if (slot >= 0) RenameNameReference(algorithms_[slot], old_name, new_name);
  ACLRemote::RenameReference(kind, old_name, new_name);
}

Rule* ACLRemoteSkip::GenerateRule(Certificate& local_certificate, Service& service, const Address& local_address) {
  if (ResolvedCertificate()->IsLocal()) return nullptr;
  auto name = [](const Entity* reference) { return reference != nullptr ? reference->Name() : nullptr; };
  SkipNames names = {CertificateReference().Name(), local_certificate.Name(), name(algorithms_[0]),
                     name(algorithms_[1]),          name(algorithms_[2]),     name(algorithms_[3])};
  std::unique_ptr<SecurityParameters> parameters(
      new SkipParameter(version_, names, {name(TunnelReference()), nullptr, nullptr, nullptr, false}));
  LinkNamedObjects(*parameters, {{CO_ADDRESS, {ResolvedTunnel()}},
                                 {CO_CERTIFICATE, {ResolvedCertificate(), &local_certificate}},
                                 {CO_ALG_KEY, {resolved_[0]}},
                                 {CO_ALG_DATA, {resolved_[1]}},
                                 {CO_ALG_MAC, {resolved_[2]}},
                                 {CO_ALG_COMP, {resolved_[3]}}});
  parameters->Direction(DIRECTION_DECRYPT);
  return AdminRule(service, local_address, *parameters);
}

// An entry of version 1 is written as version 2 all the same: the key
// managers read only the one word.
void ACLRemoteSkip::GenerateDataRest(std::ostream& out, const Registry&) const {
  if (ResolvedCertificate() != nullptr) ResolvedCertificate()->Dump(out, "\tSKIP_VERSION_2", "", 1);
  out << "\t;\n";
}
