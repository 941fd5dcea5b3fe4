#include "crypto/algorithm.h"

#include <strings.h>

#include "support/fwi18n.h"
#include "support/host_query.h"
#include "support/screenadm_tables.h"

namespace {

struct NamedValue {
  const char* name;
  int value;
};

// Hash, encryption and IKE method numbers overlap: a number means what the
// field it stands in says.
const NamedValue kIpsecValues[] = {
    {"NONE", 0},
    {"MD5", 2},
    {"SHA1", 3},
    {"DES-CBC", 2},
    {"DES", 2},
    {"3DES-CBC", 3},
    {"3DES", 3},
    {"BLOWFISH", 7},
    {"NULL", 11},
    {"AES", 12},
    {"PRE-SHARED", 1},
    {"preshared", 1},
    {"DSS-SIGNATURES", 2},
    {"dss_sig", 2},
    {"RSA-SIGNATURES", 3},
    {"rsa_sig", 3},
    {"RSA-ENCRYPTION", 4},
    {"rsa_encrypt", 4},
    {"RSA-ENCRYPTION-REVISED", 5},
    {"improved_rsa_encrypt", 5},
};

// IKE's own exchange runs in the key manager, not in a kernel module, and
// knows only these ciphers and hashes.
const char* const kIkeEncryption[] = {"DES-CBC", "DES", "3DES-CBC", "3DES", "BLOWFISH"};
const char* const kIkeHash[] = {"MD5", "SHA1"};

template <size_t N>
bool in_list(const char* const (&names)[N], const char* name) {
  for (const char* candidate : names)
    if (strcasecmp(candidate, name) == 0) return true;
  return false;
}

int ipsec_value(const char* name) {
  for (const NamedValue& entry : kIpsecValues)
    if (strcasecmp(entry.name, name) == 0) return entry.value;
  return -1;
}

}  // namespace

Algorithm::Algorithm(const char* name, screen_alg_type type, Skip_Version version)
    : Entity(name, nullptr, nullptr, 0), family_(FAMILY_SKIP), version_(version), type_(type) {}

Algorithm::Algorithm(const char* name)
    : Entity(name, nullptr, nullptr, 0), family_(FAMILY_IPSEC), version_(0), type_(ALG_COMPRESSION) {}

int Algorithm::GetValue() {
  value_ = family_ == FAMILY_SKIP ? screenadm_skip_alg_name_to_id(Name(), version_, type_)
                                  : ipsec_value(Name());
  return value_;
}

const char* Algorithm::FamilyWord() const { return family_ == FAMILY_SKIP ? "SKIP" : "IPsec"; }

const char* Algorithm::PkgName() const { return screenadm_alg_name_to_pkg(Name(), FamilyWord()); }

int Algorithm::IsInstalled(std::ostream& out) const {
  if (family_ == FAMILY_IPSEC && phase_ == IKE_PHASE_IKE) return IsValidForIke(out);
  if (screenadm_is_module_loaded(value_, FamilyWord(), type_, version_)) return 0;
  ReportNotInstalled(out);
  return 1;
}

void Algorithm::ReportNotInstalled(std::ostream& out) const {
  out << fwi18n_text(53, 1, "Error: a rule in the policy uses the ") << FamilyWord() << " "
      << fwi18n_text(53, 2, "encryption algorithm ") << Name() << ",\n"
      << fwi18n_text(53, 3, "but this algorithm is not installed on the system.") << "\n";
  const char* package = PkgName();
  if (package != nullptr && *package != '\0') {
    out << fwi18n_text(53, 4, "Please install this algorithm from the package ") << package
        << (screenadm_is64() ? "x" : "") << ".\n";
  } else {
    // Some algorithms (IPsec authentication, short names) have no package of
    // their own; the line must still tell what to do.
    out << fwi18n_text(53, 5, "Please install the package that provides this algorithm.") << "\n";
  }
  out << fwi18n_text(53, 6, "The policy cannot be activated until you install this package,") << "\n"
      << fwi18n_text(53, 7, "or remove the rule(s) that use this algorithm.") << "\n";
}

int Algorithm::IsValidForIke(std::ostream& out) const {
  if (type_ == ALG_ENCRYPTION && !in_list(kIkeEncryption, Name())) {
    out << fwi18n_text(53, 8, "Error: a rule in the policy uses the IKE encryption algorithm ") << Name()
        << ",\n"
        << fwi18n_text(53, 9, "but this is not a valid IKE encryption algorithm") << "\n";
    return 1;
  }
  if (type_ == ALG_AUTHENTICATION && !in_list(kIkeHash, Name())) {
    out << fwi18n_text(53, 10, "Error: a rule in the policy uses the IKE authentication algorithm ")
        << Name() << ",\n"
        << fwi18n_text(53, 11, "but this is not a valid IKE authentication algorithm") << "\n";
    return 1;
  }
  return 0;
}
