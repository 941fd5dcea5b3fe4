#include "crypto/skip_parameter.h"

#include <iostream>
#include <utility>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/named_links.h"
#include "support/fwi18n.h"

namespace {

const int kSet = 211;
const char kVersion1[] = "SKIP_VERSION_1";

// The SKIP algorithm list each resolve kind stands for.
const Config_Objects kAlgorithmKinds[4] = {CO_ALG_KEY, CO_ALG_DATA, CO_ALG_MAC, CO_ALG_COMP};

Algorithm* NewAlgorithm(const char* name, int type, Skip_Version version) {
  return name != nullptr ? new Algorithm(name, static_cast<screen_alg_type>(type), version) : nullptr;
}

const char* NameOrNull(const Entity* entity) { return entity != nullptr ? entity->Name() : nullptr; }

std::ostream& QuotedOrNone(std::ostream& out, const Entity* reference) {
  if (reference == nullptr) return out << "NONE";
  return out << '"' << reference->Name() << '"';
}

std::ostream& CertificateField(std::ostream& out, Certificate* certificate) {
  if (certificate == nullptr) return out << "\"NONE\"\t0\t\"0\"";
  return certificate->EmitData(out);
}

std::ostream& AlgorithmField(std::ostream& out, const Algorithm* algorithm) {
  return out << (algorithm != nullptr ? algorithm->Value() : 0);
}

bool IsGroup(const Certificate* certificate) { return certificate != nullptr && certificate->Type() == 1; }

bool NonZero(const Algorithm* algorithm) { return algorithm != nullptr && algorithm->Value() != 0; }

// The half of an action line tail that stands for a block that isn't there.
const char kEmptyHalf[] = "0\t\"NONE\"\t0\t\"0\"\t\"NONE\"\t0\t\"0\"\t0\t0\t0\t0\t\"NONE\"\t\"NONE\"\t";

}  // namespace

SkipParameter::SkipParameter(Skip_Version version, const SkipNames& names, const SecurityEnds& ends)
    : SecurityParameters(IPSEC_SKIP, ends),
      version_(version),
      source_certificate_(NewNameReference(names.source_certificate != nullptr ? names.source_certificate
                                                                              : "Missing source certificate")),
      destination_certificate_(NewNameReference(
          names.destination_certificate != nullptr ? names.destination_certificate : "Missing destination certificate")),
      algorithms_{NewAlgorithm(names.key, ALG_KEY, version), NewAlgorithm(names.data, ALG_DATA, version),
                  NewAlgorithm(names.mac, ALG_MAC, version), NewAlgorithm(names.compression, ALG_COMPRESSION, version)} {}

SkipParameter::SkipParameter(const SkipParameter& other)
    : SecurityParameters(other),
      version_(other.version_),
      source_certificate_(CopyNameReference(other.source_certificate_)),
      destination_certificate_(CopyNameReference(other.destination_certificate_)),
      source_certificate_resolved_(other.source_certificate_resolved_),
      destination_certificate_resolved_(other.destination_certificate_resolved_) {
  for (int type = 0; type < 4; ++type) {
    algorithms_[type] = NewAlgorithm(NameOrNull(other.algorithms_[type]), type, version_);
    resolved_[type] = other.resolved_[type];
  }
}

SkipParameter::~SkipParameter() {
  delete source_certificate_;
  delete destination_certificate_;
  for (Algorithm* algorithm : algorithms_) delete algorithm;
}

SecurityParameters* SkipParameter::Clone() const { return new SkipParameter(*this); }

void SkipParameter::ReportVersion1() {
  std::cerr << kVersion1 << fwi18n_text(kSet, 1, " not supported in this release") << std::endl;
}

Resolve_Error SkipParameter::Resolve(Config_Objects kind, TList<Entity>& list, const char** name) {
  Resolve_Error answer = SecurityParameters::Resolve(kind, list, name);
  if (answer != RESOLVE_OK) return answer;
  if (version_ == SKIP_V1) {
    ReportVersion1();
    *name = kVersion1;
    return RESOLVE_ALREADY_REPORTED;
  }
  if (kind != CO_CERTIFICATE) return RESOLVE_OK;
  for (auto [reference, resolved] : {std::pair{source_certificate_, &source_certificate_resolved_},
                                     std::pair{destination_certificate_, &destination_certificate_resolved_}}) {
    Certificate* found = dynamic_cast<Certificate*>(FindNamed(reference, list));
    *name = reference->Name();
    if (found == nullptr) return RESOLVE_NOT_FOUND;
    if (found->IPsecType() != IPSEC_SKIP) return RESOLVE_WRONG_TYPE;
    *resolved = found;
  }
  return RESOLVE_OK;
}

Resolve_Error SkipParameter::ResolveSKIPAlgorithms(Config_Objects kind, TList<Entity>& list,
                                                   Skip_Version version, const char** name) {
  if (version != version_) return RESOLVE_OK;
  for (int type = 0; type < 4; ++type) {
    if (kind != kAlgorithmKinds[type] || algorithms_[type] == nullptr) continue;
    resolved_[type] = static_cast<Algorithm*>(algorithms_[type]->FindSelf(list, 0));
    if (resolved_[type] != nullptr) continue;
    *name = algorithms_[type]->Name();
    return RESOLVE_NOT_FOUND;
  }
  return RESOLVE_OK;
}

int SkipParameter::Refer(Config_Objects kind, const char* name) const {
  if (kind == CO_CERTIFICATE)
    return NameReferenceIs(source_certificate_, name) || NameReferenceIs(destination_certificate_, name);
  for (int type = 0; type < 4; ++type)
    if (kind == kAlgorithmKinds[type]) return NameReferenceIs(algorithms_[type], name);
  return SecurityParameters::Refer(kind, name);
}

void SkipParameter::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_CERTIFICATE) {
    RenameNameReference(source_certificate_, old_name, new_name);
    RenameNameReference(destination_certificate_, old_name, new_name);
  }
  SecurityParameters::RenameReference(kind, old_name, new_name);
}

std::ostream& SkipParameter::PrintNames(std::ostream& out) const {
  out << "SKIP_VERSION_" << version_ << "  ";
  QuotedOrNone(out, source_certificate_) << "  ";
  QuotedOrNone(out, destination_certificate_) << "  ";
  QuotedOrNone(out, algorithms_[0]) << "  ";
  QuotedOrNone(out, algorithms_[1]) << "  ";
  if (version_ != SKIP_V2) return out;
  QuotedOrNone(out, algorithms_[2]) << "  ";
  return QuotedOrNone(out, algorithms_[3]);
}

std::ostream& SkipParameter::Print(std::ostream& out) const { return PrintEnds(PrintNames(out)); }

std::ostream& SkipParameter::Enumerate(std::ostream& out) const {
  PrintNames(out);
  if (version_ == SKIP_V2) out << "  ";
  return PrintEnds(out);
}

std::ostream& SkipParameter::Half(std::ostream& out) {
  out << version_ << '\t';
  CertificateField(out, source_certificate_resolved_) << '\t';
  CertificateField(out, destination_certificate_resolved_) << '\t';
  for (int type = 0; type < 4; ++type) AlgorithmField(out, resolved_[type]) << (type < 3 ? "\t" : "");
  return OutputTunnelAddrs(out);
}

std::ostream& SkipParameter::GenerateOutput(std::ostream& out, SecurityParameters* other, unsigned ike_label) {
  if (other == this) return Half(out);
  out << "SKIP\t";
  auto other_half = [&]() -> std::ostream& {
    return other != nullptr ? other->GenerateOutput(out, other, ike_label) : out << kEmptyHalf;
  };
  if (Direction() == DIRECTION_DECRYPT) {
    Half(out);
    return other_half();
  }
  other_half();
  return Half(out);
}

Security_Direction SkipParameter::DirectionOfCertificates() const {
  if (source_certificate_resolved_ == nullptr || destination_certificate_resolved_ == nullptr)
    return DIRECTION_UNDECIDED;
  bool source_local = source_certificate_resolved_->IsLocal();
  bool destination_local = destination_certificate_resolved_->IsLocal();
  if (source_local == destination_local) return DIRECTION_UNDECIDED;
  if (!source_local) return DIRECTION_DECRYPT;
  if (IsGroup(source_certificate_resolved_) || IsGroup(destination_certificate_resolved_))
    return DIRECTION_UNDECIDED;
  return DIRECTION_ENCRYPT;
}

bool SkipParameter::AlgorithmsFit() const {
  if (KeyAlg() == nullptr || DataAlg() == nullptr) return false;
  if (version_ == SKIP_V1)
    return !IsGroup(source_certificate_resolved_) && !IsGroup(destination_certificate_resolved_) &&
           !NonZero(MacAlg()) && !NonZero(CompressionAlg());
  return MacAlg() != nullptr && CompressionAlg() != nullptr && !NonZero(CompressionAlg());
}

Security_Direction SkipParameter::SetDirection(const Ferrowall&) {
  Security_Direction found = DirectionOfCertificates();
  if (found != DIRECTION_UNDECIDED && !AlgorithmsFit()) found = DIRECTION_UNDECIDED;
  Direction(found);
  return found;
}

void SkipParameter::ReverseDirection() {
  std::swap(source_certificate_resolved_, destination_certificate_resolved_);
  SecurityParameters::ReverseDirection();
}

bool SkipParameter::UsesCertificateGroup() const {
  return IsGroup(source_certificate_resolved_) || IsGroup(destination_certificate_resolved_);
}
