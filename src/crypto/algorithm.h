// An Algorithm is a cryptographic algorithm named in the configuration.  It
// maps its name to the number that the generated files carry, and tells
// whether this host can run it.  Family 1 holds the SKIP algorithms of one
// list and version; family 0 the algorithms of IPsec and IKE, whose type and
// phase are set when a parameter set takes them up.
#ifndef FW_CRYPTO_ALGORITHM_H
#define FW_CRYPTO_ALGORITHM_H

#include <ostream>

#include "crypto/crypto_types.h"
#include "model/entity.h"

class Algorithm : public Entity {
 public:
  enum { FAMILY_IPSEC = 0, FAMILY_SKIP = 1 };

  // A SKIP algorithm of the list `type` (key to compression) and `version`.
  Algorithm(const char* name, screen_alg_type type, Skip_Version version);
  // An IPsec or IKE algorithm; its type is compression until SetType.
  explicit Algorithm(const char* name);

  // Looks the name up in the table of the family, stores the number and
  // returns it; -1 for a name the table doesn't hold.
  int GetValue();
  // The number stored by GetValue, -1 before.
  int Value() const { return value_; }
  // 0 when the host can run the algorithm; otherwise writes the reason to
  // `out` and returns 1.
  int IsInstalled(std::ostream& out) const;
  // The package that holds the algorithm's module, or null.
  const char* PkgName() const;

  int Family() const { return family_; }
  int SkipVersion() const { return version_; }
  screen_alg_type Type() const { return type_; }
  void SetType(screen_alg_type type) { type_ = type; }
  IKE_phase Phase() const { return phase_; }
  void SetPhase(IKE_phase phase) { phase_ = phase; }

 private:
  const char* FamilyWord() const;
  int IsValidForIke(std::ostream& out) const;
  void ReportNotInstalled(std::ostream& out) const;

  int family_;
  int value_ = -1;
  int version_;
  screen_alg_type type_;
  IKE_phase phase_ = IKE_PHASE_IPSEC;
};

#endif
