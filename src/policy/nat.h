// Nat is one address translation entry of the policy: packets from the
// original source to the original destination are rewritten to the
// translated source and destination.  A static entry maps address to
// address and needs both sides of equal size; a dynamic one hides the
// originals behind the translations.  A side written with the same address
// twice is not translated.  The compiler only resolves the four addresses
// and rejects entries that make no sense.
#ifndef FW_POLICY_NAT_H
#define FW_POLICY_NAT_H

#include <ostream>

#include "model/entity.h"

class Address;

enum Nat_Type { NAT_STATIC = 0, NAT_DYNAMIC = 1 };

// The four addresses of an entry, in the order they are written.
enum Nat_Address {
  NAT_ORIGINAL_SOURCE = 0,
  NAT_ORIGINAL_DESTINATION = 1,
  NAT_TRANSLATED_SOURCE = 2,
  NAT_TRANSLATED_DESTINATION = 3
};

class Nat : public Entity {
 public:
  // A null name gives a placeholder named after what is missing.  `type`
  // is 0 for a static, 1 for a dynamic entry.
  Nat(const char* original_source, const char* original_destination,
      const char* translated_source, const char* translated_destination, unsigned type,
      const char* screen, const char* comment);
  Nat(const Nat&) = delete;
  Nat& operator=(const Nat&) = delete;
  ~Nat() override;

  int Type() const { return type_; }
  // The placeholder with the written name.
  const Address& Written(Nat_Address which) const { return *written_[which]; }
  // The address found by Resolve, or null.
  Address* Resolved(Nat_Address which) const { return resolved_[which]; }

  // 1 when the entry makes no sense, after reporting every reason on `out`.
  int Inconsistent(std::ostream& out) const;
  // The number of source addresses translated: 0 for an untranslated side.
  unsigned long long CountSource() const;
  // The number of destination addresses translated: 0 for an untranslated
  // side.
  unsigned long long CountDest() const;

  // Links the four names (kind CO_ADDRESS only); returns the misses, each
  // reported on `out`.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // With `print`, a hit also writes the entry's names to the standard output.
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // Always the full line, whatever `type` says.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

 private:
  static const int kAddresses = 4;
  // The resolved address, or the empty placeholder while there is none.
  const Address& Value(Nat_Address which) const;
  bool Untranslated(Nat_Address original, Nat_Address translated) const;
  int ReportEmpty(std::ostream& out) const;
  int ReportSizes(std::ostream& out) const;
  int ReportOverlap(std::ostream& out) const;
  // One side: its original and translation meet without being the same.
  int ReportOverlap(Nat_Address original, Nat_Address translated, const char* message,
                    std::ostream& out) const;
  int ReportBothSides(std::ostream& out) const;
  // A line end, a tab and the listing line.
  std::ostream& PrintEntry(std::ostream& out) const;
  // The mode word and the four quoted names.
  std::ostream& PrintAddresses(std::ostream& out) const;

  Address* written_[kAddresses];
  Address* resolved_[kAddresses] = {nullptr, nullptr, nullptr, nullptr};
  int type_;
};

#endif
