#include "crypto/security_parameters_ike.h"

#include <cstring>
#include <iostream>
#include <tuple>
#include <utility>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/ike_identity.h"
#include "crypto/ike_text.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "crypto/named_links.h"
#include "screen/ferrowall.h"

namespace {

struct ValueName {
  int value;
  const char* name;
};

const ValueName kHashNames[] = {{2, "md5"}, {3, "sha1"}};
const ValueName kMethodNames[] = {
    {1, "preshared"}, {2, "dss_sig"}, {3, "rsa_sig"}, {4, "rsa_encrypt"}, {5, "improved_rsa_encrypt"}};
const ValueName kEncryptionNames[] = {{0, "none"}, {2, "des-cbc"}, {3, "3des-cbc"},
                                      {7, "blowfish"}, {11, "null"}, {12, "aes"}};

// The daemon's word for an algorithm value; a value without one is
// written as its number.
template <size_t N>
std::ostream& LabelName(std::ostream& out, const ValueName (&names)[N], int value) {
  for (const ValueName& entry : names)
    if (entry.value == value) return out << entry.name;
  return out << value;
}

std::ostream& Value(std::ostream& out, const Algorithm* algorithm) {
  return out << (algorithm != nullptr ? algorithm->Value() : 0) << ' ';
}

std::ostream& Quoted(std::ostream& out, const Entity* reference, const char* missing) {
  return out << '"' << (reference != nullptr ? reference->Name() : missing) << '"';
}

// -1, 0 or 1: the reference names another screen, no screen, this screen.
int ScreenSide(const Entity* reference, const Ferrowall& screen) {
  if (reference == nullptr) return 0;
  return strcmp(reference->Name(), screen.VirtualName()) == 0 ? 1 : -1;
}

bool IsGroup(const Certificate* certificate) { return certificate != nullptr && certificate->Type() == 1; }

}  // namespace

SecurityParametersIKE::SecurityParametersIKE(const IkeNames& names, IPsecIKEespParams* esp, IPsecIKEahParams* ah,
                                             const SecurityEnds& ends)
    : SecurityParameters(IPSEC_IKE, ends),
      destination_certificate_(NewNameReference(names.peer)),
      method_(NewNameReference(names.method)),
      encryption_(NewNameReference(names.encryption)),
      hash_(NewNameReference(names.hash)),
      group_(names.group),
      pre_shared_(names.method == nullptr || names.peer == nullptr || strcmp(names.method, "PRE-SHARED") == 0),
      ah_(ah),
      esp_(esp) {
  const char* missing = pre_shared_ ? "Missing key" : "Missing source certificate";
  source_certificate_ = NewNameReference(names.certificate != nullptr ? names.certificate : missing);
}

SecurityParametersIKE::SecurityParametersIKE(const SecurityParametersIKE& other)
    : SecurityParameters(other),
      source_certificate_(CopyNameReference(other.source_certificate_)),
      destination_certificate_(CopyNameReference(other.destination_certificate_)),
      method_(CopyNameReference(other.method_)),
      encryption_(CopyNameReference(other.encryption_)),
      hash_(CopyNameReference(other.hash_)),
      encryption_resolved_(other.encryption_resolved_),
      hash_resolved_(other.hash_resolved_),
      group_(other.group_),
      method_resolved_(other.method_resolved_),
      pre_shared_(other.pre_shared_),
      source_certificate_resolved_(other.source_certificate_resolved_),
      destination_certificate_resolved_(other.destination_certificate_resolved_),
      ah_(other.ah_ != nullptr ? new IPsecIKEahParams(*other.ah_) : nullptr),
      esp_(other.esp_ != nullptr ? new IPsecIKEespParams(*other.esp_) : nullptr) {}

SecurityParametersIKE::~SecurityParametersIKE() {
  delete source_certificate_;
  delete destination_certificate_;
  delete method_;
  delete encryption_;
  delete hash_;
  delete ah_;
  delete esp_;
}

SecurityParameters* SecurityParametersIKE::Clone() const { return new SecurityParametersIKE(*this); }

Resolve_Error SecurityParametersIKE::Resolve(Config_Objects kind, TList<Entity>& list, const char** name) {
  Resolve_Error answer = SecurityParameters::Resolve(kind, list, name);
  if (answer != RESOLVE_OK) return answer;
  if (kind == CO_CERTIFICATE || kind == CO_KEY) return ResolveCertificates(kind, list, name);
  if (kind == CO_ALGORITHM) return ResolveAlgorithms(list, name);
  return RESOLVE_OK;
}

// Certificates come from the certificate list, a pre-shared key from the
// key list; each pass links only what its list holds.
Resolve_Error SecurityParametersIKE::ResolveCertificates(Config_Objects kind, TList<Entity>& list,
                                                         const char** name) {
  if ((kind == CO_KEY) != pre_shared_) return RESOLVE_OK;
  IPSEC_TYPE wanted = pre_shared_ ? IPSEC_MANUAL : IPSEC_IKE;
  for (auto [reference, resolved] : {std::pair{source_certificate_, &source_certificate_resolved_},
                                     std::pair{destination_certificate_, &destination_certificate_resolved_}}) {
    if (reference == nullptr) continue;
    *name = reference->Name();
    Certificate* found = dynamic_cast<Certificate*>(FindNamed(reference, list));
    if (found == nullptr) return RESOLVE_NOT_FOUND;
    if (found->IPsecType() != wanted) return RESOLVE_WRONG_TYPE;
    *resolved = found;
  }
  return RESOLVE_OK;
}

Resolve_Error SecurityParametersIKE::ResolveAlgorithms(TList<Entity>& list, const char** name) {
  method_resolved_ = static_cast<Algorithm*>(FindNamed(method_, list));
  bool refused = false;
  for (auto [reference, type, resolved] : {std::tuple{encryption_, ALG_ENCRYPTION, &encryption_resolved_},
                                           std::tuple{hash_, ALG_AUTHENTICATION, &hash_resolved_}}) {
    if (reference == nullptr) continue;
    *resolved = LinkIkePhase1(reference, type, list, &refused);
    *name = reference->Name();
    if (*resolved == nullptr) return RESOLVE_NOT_FOUND;
  }
  int phase2 = ah_ != nullptr ? ah_->Resolve(CO_ALGORITHM, list, name) : RESOLVE_OK;
  if (phase2 == RESOLVE_OK && esp_ != nullptr) phase2 = esp_->Resolve(CO_ALGORITHM, list, name);
  if (phase2 != RESOLVE_OK) return static_cast<Resolve_Error>(phase2);
  return refused ? RESOLVE_ALREADY_REPORTED : RESOLVE_OK;
}

int SecurityParametersIKE::Refer(Config_Objects kind, const char* name) const {
  if (kind == CO_CERTIFICATE || kind == CO_KEY)
    return NameReferenceIs(source_certificate_, name) || NameReferenceIs(destination_certificate_, name);
  if (kind == CO_ALGORITHM)
    return NameReferenceIs(method_, name) || NameReferenceIs(encryption_, name) || NameReferenceIs(hash_, name);
  return SecurityParameters::Refer(kind, name);
}

void SecurityParametersIKE::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_CERTIFICATE || kind == CO_KEY) {
    RenameNameReference(source_certificate_, old_name, new_name);
    RenameNameReference(destination_certificate_, old_name, new_name);
  } else if (kind == CO_ALGORITHM) {
    for (Entity* algorithm : {method_, encryption_, hash_}) RenameNameReference(algorithm, old_name, new_name);
  }
  SecurityParameters::RenameReference(kind, old_name, new_name);
}

std::ostream& SecurityParametersIKE::Print(std::ostream& out) const {
  Quoted(out << "IKE ", encryption_, "NONE") << ' ';
  Quoted(out, hash_, "NONE") << ' ' << group_ << ' ';
  Quoted(out, method_, "NONE") << ' ';
  Quoted(out, source_certificate_, "") << ' ';
  Quoted(out, destination_certificate_, "") << ' ';
  return PrintEnds(ike_text_phase2(out, esp_, ah_, false));
}

std::ostream& SecurityParametersIKE::Enumerate(std::ostream& out) const {
  ike_text_phase2(out << "IPSEC ", esp_, ah_, true) << "IKE(";
  Quoted(out, encryption_, "NONE") << ", ";
  Quoted(out, hash_, "NONE") << ", " << group_ << ", " << (method_ != nullptr ? method_->Name() : "NONE") << ", ";
  Quoted(out, source_certificate_, "");
  if (!pre_shared_) Quoted(out << ", ", destination_certificate_, "");
  return PrintEnds(out << ')');
}

std::ostream& SecurityParametersIKE::GenerateOutput(std::ostream& out, SecurityParameters*, unsigned ike_label) {
  out << "IKE\t" << (Direction() == DIRECTION_DECRYPT ? "1 " : "0 ");
  Value(Value(Value(out, method_resolved_), encryption_resolved_), hash_resolved_);
  Quoted(out, source_certificate_, "None") << ' ';
  Quoted(out, destination_certificate_, "None") << ' ';
  if (esp_ != nullptr) esp_->GenerateOutput(out);
  else out << "0 0 ";
  if (ah_ != nullptr) ah_->GenerateOutput(out);
  else out << "0 ";
  return OutputTunnelAddrs(out) << ike_label << ' ';
}

std::ostream& SecurityParametersIKE::GenerateIKEXform(std::ostream& out) const {
  out << "p1_xform { ";
  if (method_resolved_ != nullptr) LabelName(out << " auth_method ", kMethodNames, method_resolved_->Value());
  out << " oakley_group " << group_;
  if (hash_resolved_ != nullptr) LabelName(out << " auth_alg ", kHashNames, hash_resolved_->Value());
  if (encryption_resolved_ != nullptr) LabelName(out << " encr_alg ", kEncryptionNames, encryption_resolved_->Value());
  return out << "  }";
}

Security_Direction SecurityParametersIKE::SetDirection(const Ferrowall& screen) {
  Direction(DIRECTION_UNDECIDED);
  if (source_certificate_resolved_ == nullptr) return DIRECTION_UNDECIDED;
  if (!pre_shared_ && destination_certificate_resolved_ == nullptr) return DIRECTION_UNDECIDED;
  if (pre_shared_ && IsGroup(source_certificate_resolved_)) return DIRECTION_UNDECIDED;
  int destination = ScreenSide(DestinationScreen(), screen);
  int source = ScreenSide(SourceScreen(), screen);
  Security_Direction found;
  if (pre_shared_) {
    found = destination == source ? DIRECTION_UNDECIDED
                                  : destination < source ? DIRECTION_ENCRYPT : DIRECTION_DECRYPT;
  } else {
    found = DirectionOfCertificates(destination, source);
  }
  Direction(found);
  return found;
}

Security_Direction SecurityParametersIKE::DirectionOfCertificates(int destination, int source) const {
  bool destination_local = IsLocal(*destination_certificate_resolved_) > 0;
  bool source_local = IsLocal(*source_certificate_resolved_) > 0;
  if (destination == source) {
    if (destination != 0 || destination_local == source_local) return DIRECTION_UNDECIDED;
    return source_local ? DIRECTION_ENCRYPT : DIRECTION_DECRYPT;
  }
  if (destination < source) return source_local ? DIRECTION_ENCRYPT : DIRECTION_UNDECIDED;
  return destination_local ? DIRECTION_DECRYPT : DIRECTION_UNDECIDED;
}

void SecurityParametersIKE::ReverseDirection() {
  if (!pre_shared_) {
    std::swap(source_certificate_, destination_certificate_);
    std::swap(source_certificate_resolved_, destination_certificate_resolved_);
  }
  SecurityParameters::ReverseDirection();
}

bool SecurityParametersIKE::UsesCertificateGroup() const {
  return IsGroup(source_certificate_resolved_) || IsGroup(destination_certificate_resolved_);
}
