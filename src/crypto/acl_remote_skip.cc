#include "crypto/acl_remote_skip.h"

#include <memory>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/named_links.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"
#include "model/entity_text.h"
#include "policy/rule.h"

namespace {

const char* const kPlaceholders[4] = {"Missing key algorithm", "Missing data algorithm", nullptr, nullptr};
const char* const kBlanks[4] = {" ", " ", " ", " "};

}  // namespace

ACLRemoteSkip::ACLRemoteSkip(const char* user, Access_Level level, const char* address, Skip_Version version,
                             const char* certificate, const char* const algorithms[4], const char* tunnel,
                             const char* screen, const char* comment)
    : ACLRemote(user, level, address, certificate, tunnel, false, screen, comment),
      version_(version),
      algorithms_(algorithms, kPlaceholders) {}

int ACLRemoteSkip::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_CERTIFICATE || version_ != SKIP_V1) return ACLRemote::Resolve(kind, list, out);
  SkipParameter::ReportVersion1();
  return 1;
}

int ACLRemoteSkip::ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                                     std::ostream& out) {
  return version == version_ ? algorithms_.Resolve(kind, list, *this, out) : 0;
}

bool ACLRemoteSkip::RefersTo(Config_Objects kind, const char* name) const {
  return algorithms_.RefersTo(kind, name) || ACLRemote::RefersTo(kind, name);
}

void ACLRemoteSkip::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  algorithms_.Rename(kind, old_name, new_name);
  ACLRemote::RenameReference(kind, old_name, new_name);
}

std::ostream& ACLRemoteSkip::PrintSkip(std::ostream& out) const {
  out << "SKIP_VERSION_" << version_ << " \"" << CertificateReference().Name() << '"';
  return algorithms_.Print(out, kBlanks, version_ == SKIP_V2 ? 4 : 2);
}

std::ostream& ACLRemoteSkip::Print(std::ostream& out) const {
  PrintSkip(StatementHead(out) << " \"" << AddressReference().Name() << "\"\t");
  return entity_text_tail(entity_text_clause(out, " TUNNEL ", TunnelReference()), *this);
}

std::ostream& ACLRemoteSkip::Enumerate(std::ostream& out, Enumerate_Type) const {
  ListingPermission(PrintSkip(ListingUserAndAddress(out)) << ' ');
  return entity_text_comment(entity_text_clause(out, " TUNNEL ", TunnelReference()), *this) << '\n';
}

Rule* ACLRemoteSkip::GenerateRule(Certificate& local_certificate, Service& service, const Address& local_address) {
  if (ResolvedCertificate()->IsLocal()) return nullptr;
  SkipNames names = {CertificateReference().Name(), local_certificate.Name(), algorithms_.Name(0),
                     algorithms_.Name(1),            algorithms_.Name(2),      algorithms_.Name(3)};
  const char* tunnel = TunnelReference() != nullptr ? TunnelReference()->Name() : nullptr;
  std::unique_ptr<SecurityParameters> parameters(
      new SkipParameter(version_, names, {tunnel, nullptr, nullptr, nullptr, false}));
  LinkNamedObjects(*parameters, {{CO_ADDRESS, {ResolvedTunnel()}},
                                 {CO_CERTIFICATE, {ResolvedCertificate(), &local_certificate}},
                                 {CO_ALG_KEY, {algorithms_.Resolved(0)}},
                                 {CO_ALG_DATA, {algorithms_.Resolved(1)}},
                                 {CO_ALG_MAC, {algorithms_.Resolved(2)}},
                                 {CO_ALG_COMP, {algorithms_.Resolved(3)}}});
  parameters->Direction(DIRECTION_DECRYPT);
  return AdminRule(service, local_address, *parameters);
}

void ACLRemoteSkip::GenerateDataRest(std::ostream& out, const Registry&) const {
  if (ResolvedCertificate() != nullptr) ResolvedCertificate()->Dump(out, "\tSKIP_VERSION_2", "", 1);
  out << "\t;\n";
}
