// The rules by which one screen administers another.
#include <iostream>
#include <memory>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "crypto/named_links.h"
#include "crypto/security_parameters_ike.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"
#include "model/registry.h"
#include "policy/rule.h"
#include "screen/ferrowall.h"
#include "support/fwi18n.h"

namespace {

const int kSet = 50;

// A screen's name as these messages open with it.
std::ostream& Named(std::ostream& out, const Ferrowall& screen) { return out << '"' << screen.Name() << "\" "; }

void ReportPair(const Ferrowall& first, int number, const char* text, const Ferrowall& second) {
  Named(std::cerr, first) << fwi18n_text(kSet, number, text) << " \"" << second.Name() << '"' << std::endl;
}

const char* NameOf(const Entity* entity) { return entity != nullptr ? entity->Name() : nullptr; }

bool HasCertificate(const Ferrowall& screen) {
  return screen.AdminCertificateIKE() != nullptr || screen.AdminCertificateSkip() != nullptr;
}

}  // namespace

int Ferrowall::GenerateScreenToScreen(Ferrowall& administered, Service& service, Rule*& result,
                                      const Registry& registry, const Ferrowall& compiling) {
  result = nullptr;
  if (!HasCertificate(administered)) {
    ReportPair(administered, 12, "requires a certificate to be administered by screen", *this);
    return 1;
  }
  if (!HasCertificate(*this)) {
    ReportPair(*this, 13, "requires a certificate to administer screen", administered);
    return 1;
  }
  bool both_skip = AdminCertificateSkip() != nullptr && administered.AdminCertificateSkip() != nullptr;
  bool ike = AdminCertificateIKE() != nullptr && administered.AdminCertificateIKE() != nullptr;
  if (!ike && !both_skip) {
    std::cerr << fwi18n_text(kSet, 14, "Primary and Secondary screens must have same certificate types.")
              << std::endl;
    return 1;
  }
  const Address* source = ScreenToScreenSource(administered, registry, compiling);
  if (source == nullptr) return 1;
  if (administered.AdminIP() == nullptr) {
    ReportPair(administered, 16, "requires an Admin IP Address to be administered by screen", *this);
    return 1;
  }
  std::unique_ptr<SecurityParameters> parameters(ike ? ScreenToScreenIKE(administered)
                                                     : ScreenToScreenSkip(administered));
  if (parameters == nullptr) return 1;
  Security_Direction direction = parameters->SetDirection(compiling);
  if (direction != DIRECTION_DECRYPT && direction != DIRECTION_ENCRYPT) {
    if (both_skip) {
      const Entity* expected = this == &compiling ? AdminCertificateSkip() : administered.AdminCertificateSkip();
      std::cerr << '"' << expected->Name() << "\" "
                << fwi18n_text(kSet, 20, "is expected to be a local certificate.") << std::endl;
    }
    return 1;
  }
  bool decrypts = direction == DIRECTION_DECRYPT;
  result = new Rule(service, *source, *administered.AdminIP(), nullptr, decrypts ? parameters.get() : nullptr,
                    decrypts ? nullptr : parameters.get(), nullptr, ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, 1,
                    nullptr, nullptr, nullptr, nullptr);
  return 0;
}

// Without an ADMIN_IP the administering screen is known only where it
// compiles itself; elsewhere it may come from anywhere.
const Address* Ferrowall::ScreenToScreenSource(const Ferrowall& administered, const Registry& registry,
                                               const Ferrowall& compiling) const {
  if (AdminIP() != nullptr) return AdminIP();
  Entity wanted(this == &compiling ? "localhost" : "*", nullptr, nullptr, 0);
  const Address* found = dynamic_cast<const Address*>(wanted.FindSelf(registry.Addresses(), 1));
  if (found == nullptr) ReportPair(*this, 15, "requires an Admin IP Address to administer screen", administered);
  return found;
}

// The administered screen's proposal, between the two screens' IKE
// certificates, tunnels and names.
SecurityParameters* Ferrowall::ScreenToScreenIKE(const Ferrowall& administered) const {
  if (administered.IKEEncryption() == nullptr || administered.IKEHash() == nullptr ||
      administered.IKEAuthentication() == nullptr) {
    Named(std::cerr, administered) << fwi18n_text(kSet, 17, "is missing IKE parameters") << std::endl;
    return nullptr;
  }
  IPsecIKEespParams* esp = administered.ESPParams();
  IPsecIKEahParams* ah = administered.AHParams();
  if (esp == nullptr && ah == nullptr) {
    Named(std::cerr, administered) << fwi18n_text(kSet, 18, "is missing ESP and AH parameters") << std::endl;
    return nullptr;
  }
  IkeNames names = {administered.IKEEncryption()->Name(),   administered.IKEHash()->Name(),
                    static_cast<unsigned>(administered.OakleyGroup()), administered.IKEAuthentication()->Name(),
                    AdminCertificateIKE()->Name(),          administered.AdminCertificateIKE()->Name()};
  SecurityEnds ends = {NameOf(Tunnel()), NameOf(administered.Tunnel()), Name(), administered.Name(), false};
  SecurityParameters* parameters =
      new SecurityParametersIKE(names, esp != nullptr ? new IPsecIKEespParams(*esp) : nullptr,
                                ah != nullptr ? new IPsecIKEahParams(*ah) : nullptr, ends);
  LinkNamedObjects(*parameters,
                   {{CO_SCREEN, {const_cast<Ferrowall*>(this), const_cast<Ferrowall*>(&administered)}},
                    {CO_ADDRESS, {Tunnel(), administered.Tunnel()}},
                    {CO_CERTIFICATE, {AdminCertificateIKE(), administered.AdminCertificateIKE()}},
                    {CO_ALGORITHM,
                     {administered.IKEEncryption(), administered.IKEHash(), administered.IKEAuthentication(),
                      esp != nullptr ? esp->EncryptionResolved() : nullptr,
                      esp != nullptr ? esp->AuthenticationResolved() : nullptr,
                      ah != nullptr ? ah->AlgorithmResolved() : nullptr}}});
  return parameters;
}

// The administered screen's algorithms between the two screens' SKIP
// certificates; only the administered end is named as a screen.
SecurityParameters* Ferrowall::ScreenToScreenSkip(const Ferrowall& administered) const {
  Algorithm* algorithms[4] = {administered.KeyAlgorithm(), administered.DataAlgorithm(),
                              administered.MacAlgorithm(), administered.CompressionAlgorithm()};
  for (Algorithm* algorithm : algorithms) {
    if (algorithm != nullptr) continue;
    Named(std::cerr, administered) << fwi18n_text(kSet, 19, "is missing encryption parameters") << std::endl;
    return nullptr;
  }
  SkipNames names = {AdminCertificateSkip()->Name(), administered.AdminCertificateSkip()->Name(),
                     algorithms[0]->Name(),          algorithms[1]->Name(),
                     algorithms[2]->Name(),          algorithms[3]->Name()};
  SecurityEnds ends = {NameOf(Tunnel()), NameOf(administered.Tunnel()), nullptr, administered.Name(), false};
  SecurityParameters* parameters = new SkipParameter(SKIP_V2, names, ends);
  LinkNamedObjects(*parameters, {{CO_SCREEN, {const_cast<Ferrowall*>(&administered)}},
                                 {CO_ADDRESS, {Tunnel(), administered.Tunnel()}},
                                 {CO_CERTIFICATE, {AdminCertificateSkip(), administered.AdminCertificateSkip()}},
                                 {CO_ALG_KEY, {algorithms[0]}},
                                 {CO_ALG_DATA, {algorithms[1]}},
                                 {CO_ALG_MAC, {algorithms[2]}},
                                 {CO_ALG_COMP, {algorithms[3]}}});
  return parameters;
}
