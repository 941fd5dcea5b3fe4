#include "crypto/ipsec_man_parameters.h"

#include <strings.h>

#include "crypto/certificate.h"
#include "crypto/ipsec_algorithm_link.h"
#include "crypto/named_links.h"

namespace {

const screen_alg_type kAlgorithmTypes[3] = {ALG_ENCRYPTION, ALG_AUTHENTICATION, ALG_AUTHENTICATION};

bool IsNone(const Entity* algorithm) { return algorithm != nullptr && strcasecmp(algorithm->Name(), "NONE") == 0; }

std::ostream& Quoted(std::ostream& out, const Entity* reference) {
  return out << '"' << (reference != nullptr ? reference->Name() : "NONE") << '"';
}

std::ostream& Value(std::ostream& out, const Algorithm* algorithm) {
  return out << (algorithm != nullptr ? algorithm->Value() : 0) << ' ';
}

}  // namespace

IPsecManParameters::IPsecManParameters(uint32_t esp_spi, uint32_t ah_spi, const ManualNames& names)
    : esp_spi_(esp_spi),
      ah_spi_(ah_spi),
      algorithms_{NewNameReference(names.esp_encryption), NewNameReference(names.esp_authentication),
                  NewNameReference(names.ah_algorithm)},
      keys_{NewNameReference(names.esp_encryption_key), NewNameReference(names.esp_authentication_key),
            NewNameReference(names.ah_key)} {}

IPsecManParameters::IPsecManParameters(const IPsecManParameters& other)
    : esp_spi_(other.esp_spi_), ah_spi_(other.ah_spi_) {
  for (int part = 0; part < kParts; ++part) {
    algorithms_[part] = CopyNameReference(other.algorithms_[part]);
    keys_[part] = CopyNameReference(other.keys_[part]);
    algorithms_resolved_[part] = other.algorithms_resolved_[part];
    keys_resolved_[part] = other.keys_resolved_[part];
  }
}

IPsecManParameters::~IPsecManParameters() {
  for (int part = 0; part < kParts; ++part) {
    delete algorithms_[part];
    delete keys_[part];
  }
}

Resolve_Error IPsecManParameters::Resolve(Config_Objects kind, TList<Entity>& list, const char** name) {
  bool not_installed = false;
  for (int part = 0; part < kParts; ++part) {
    if (kind == CO_ALGORITHM && algorithms_[part] != nullptr) {
      *name = algorithms_[part]->Name();
      if (LinkIpsecAlgorithm(*name, kAlgorithmTypes[part], list, &algorithms_resolved_[part], &not_installed) !=
          RESOLVE_OK)
        return RESOLVE_NOT_FOUND;
    } else if (kind == CO_KEY && keys_[part] != nullptr) {
      *name = keys_[part]->Name();
      keys_resolved_[part] = dynamic_cast<Certificate*>(FindNamed(keys_[part], list));
      if (keys_resolved_[part] == nullptr) return RESOLVE_NOT_FOUND;
    }
  }
  return not_installed ? RESOLVE_ALREADY_REPORTED : RESOLVE_OK;
}

int IPsecManParameters::Refer(Config_Objects kind, const char* name) const {
  if (kind != CO_KEY) return 0;
  for (const Entity* key : keys_)
    if (NameReferenceIs(key, name)) return 1;
  return 0;
}

void IPsecManParameters::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind != CO_KEY) return;
  for (Entity* key : keys_) RenameNameReference(key, old_name, new_name);
}

std::ostream& IPsecManParameters::PrintAlgorithm(std::ostream& out, int part) const {
  if (IsNone(algorithms_[part])) return Quoted(out, algorithms_[part]) << ' ';
  if (keys_[part] == nullptr) return out;
  Quoted(out, algorithms_[part]) << " KEYS";
  // The ESP authentication key follows its keyword without a blank, as
  // the saved texts of the product have always had it.
  if (part != kEspAuthentication) out << ' ';
  return Quoted(out, keys_[part]) << ' ';
}

std::ostream& IPsecManParameters::Print(std::ostream& out) const {
  if (algorithms_[kEspEncryption] != nullptr) {
    if (IsNone(algorithms_[kEspEncryption]) || keys_[kEspEncryption] != nullptr)
      PrintAlgorithm(out << "ESP " << esp_spi_ << ' ', kEspEncryption);
    if (algorithms_[kEspAuthentication] != nullptr) PrintAlgorithm(out, kEspAuthentication);
  }
  if (algorithms_[kAh] != nullptr && (IsNone(algorithms_[kAh]) || keys_[kAh] != nullptr))
    PrintAlgorithm(out << "AH " << ah_spi_ << ' ', kAh);
  return out;
}

std::ostream& IPsecManParameters::Enumerate(std::ostream& out) const {
  auto material = [&](std::ostream& out, int part) -> std::ostream& {
    Quoted(out, algorithms_[part]);
    if (!IsNone(algorithms_[part]) && keys_[part] != nullptr) Quoted(out << ", ", keys_[part]);
    return out;
  };
  out << std::hex;
  if (algorithms_[kEspEncryption] != nullptr) {
    material(out << "ESP(0x" << esp_spi_ << ", ", kEspEncryption);
    if (algorithms_[kEspAuthentication] != nullptr) material(out << ", ", kEspAuthentication);
    out << ") ";
  }
  if (algorithms_[kAh] != nullptr) material(out << "AH(0x" << ah_spi_ << ", ", kAh) << ") ";
  return out << std::dec;
}

std::ostream& IPsecManParameters::GenerateOutput(std::ostream& out) const {
  for (const Algorithm* algorithm : algorithms_resolved_) Value(out, algorithm);
  bool esp = algorithms_resolved_[kEspEncryption] != nullptr || algorithms_resolved_[kEspAuthentication] != nullptr;
  out << (esp ? esp_spi_ : 0) << ' ' << (algorithms_resolved_[kAh] != nullptr ? ah_spi_ : 0) << ' ';
  for (const Entity* key : keys_) Quoted(out, key) << ' ';
  return out;
}

void IPsecManParameters::DumpKeys(std::ostream& out) const {
  for (Certificate* key : keys_resolved_) {
    if (key == nullptr || key->Used()) continue;
    key->EmitData(out << "IPSEC ") << '\n';
    key->Used(1);
  }
}

bool IPsecManParameters::SameMaterial(const IPsecManParameters& other, int part) const {
  return algorithms_resolved_[part] == other.algorithms_resolved_[part] &&
         keys_resolved_[part] == other.keys_resolved_[part];
}

int IPsecManParameters::Conflicts(const IPsecManParameters& other) const {
  int conflicts = 0;
  if (esp_spi_ != 0 && esp_spi_ == other.esp_spi_ &&
      !(SameMaterial(other, kEspEncryption) && SameMaterial(other, kEspAuthentication)))
    ++conflicts;
  if (ah_spi_ != 0 && ah_spi_ == other.ah_spi_ && !SameMaterial(other, kAh)) ++conflicts;
  return conflicts;
}
