#include "policy/nat.h"

#include <cstring>
#include <iostream>

#include "model/address.h"
#include "model/entity_text.h"
#include "support/fwi18n.h"

namespace {

// The placeholder names of addresses the statement left out.  The typo of
// the second is kept: saved configurations carry these names.
const char* const kMissing[] = {"Missing original source address",
                                "Misssing original destination address",
                                "Missing translated source address",
                                "Missing translated destination address"};

// The order in which empty addresses are named: each source side before
// the destination sides.
const Nat_Address kEmptyCheckOrder[] = {NAT_ORIGINAL_SOURCE, NAT_TRANSLATED_SOURCE,
                                        NAT_ORIGINAL_DESTINATION, NAT_TRANSLATED_DESTINATION};

bool same_text(const char* a, const char* b) {
  return a != nullptr && b != nullptr && strcmp(a, b) == 0;
}

}  // namespace

Nat::Nat(const char* original_source, const char* original_destination,
         const char* translated_source, const char* translated_destination, unsigned type,
         const char* screen, const char* comment)
    : Entity("NAT", screen, comment, 0), type_(type) {
  const char* names[kAddresses] = {original_source, original_destination, translated_source,
                                   translated_destination};
  for (int i = 0; i < kAddresses; ++i)
    written_[i] = new Address(names[i] != nullptr ? names[i] : kMissing[i], nullptr, nullptr,
                              ADDRESS_SINGLE);
}

Nat::~Nat() {
  for (Address* address : written_) delete address;
}

const Address& Nat::Value(Nat_Address which) const {
  return resolved_[which] != nullptr ? *resolved_[which] : *written_[which];
}

bool Nat::Untranslated(Nat_Address original, Nat_Address translated) const {
  return Value(original).Equal(Value(translated));
}

unsigned long long Nat::CountSource() const {
  if (Untranslated(NAT_ORIGINAL_SOURCE, NAT_TRANSLATED_SOURCE)) return 0;
  return Value(NAT_ORIGINAL_SOURCE).SizeOf();
}

unsigned long long Nat::CountDest() const {
  if (Untranslated(NAT_ORIGINAL_DESTINATION, NAT_TRANSLATED_DESTINATION)) return 0;
  return Value(NAT_TRANSLATED_DESTINATION).SizeOf();
}

// Every check is made, so that one pass reports all that is wrong with the
// entry; the entry still counts as one error.
int Nat::Inconsistent(std::ostream& out) const {
  int faults = ReportEmpty(out);
  faults += ReportSizes(out);
  faults += ReportOverlap(out);
  faults += ReportBothSides(out);
  return faults != 0 ? 1 : 0;
}

int Nat::ReportEmpty(std::ostream& out) const {
  int empty = 0;
  for (Nat_Address which : kEmptyCheckOrder) {
    if (Value(which).SizeOf() != 0) continue;
    if (empty++ != 0) out << ", ";
    out << '"' << Value(which).Name() << '"';
  }
  if (empty != 0)
    out << fwi18n_text(46, 3, " Address(es) have no value and cannot be used in a NAT Rule.")
        << std::endl;
  return empty != 0;
}

int Nat::ReportSizes(std::ostream& out) const {
  if (type_ != NAT_STATIC) return 0;
  bool same_sizes =
      Value(NAT_ORIGINAL_SOURCE).SizeOf() == Value(NAT_TRANSLATED_SOURCE).SizeOf() &&
      Value(NAT_ORIGINAL_DESTINATION).SizeOf() == Value(NAT_TRANSLATED_DESTINATION).SizeOf();
  if (same_sizes) return 0;
  PrintEntry(out << fwi18n_text(46, 4, "Error: Static NAT, but Addresses are different sizes"));
  return 1;
}

int Nat::ReportOverlap(std::ostream& out) const {
  // One statement each, so the source is reported before the destination.
  int faults = ReportOverlap(NAT_ORIGINAL_SOURCE, NAT_TRANSLATED_SOURCE,
                             fwi18n_text(46, 5, "Error: Original and Tranlated Source Addresses Intersect."), out);
  return faults + ReportOverlap(NAT_ORIGINAL_DESTINATION, NAT_TRANSLATED_DESTINATION,
                       fwi18n_text(46, 6,
                                   "Error: Original and Tranlated Destination Addresses Intersect."),
                       out);
}

int Nat::ReportOverlap(Nat_Address original, Nat_Address translated, const char* message,
                       std::ostream& out) const {
  if (!Value(original).Intersects(Value(translated)) || Untranslated(original, translated)) return 0;
  PrintEntry(out << message);
  return 1;
}

// An entry translates one side and leaves the other as it is.
int Nat::ReportBothSides(std::ostream& out) const {
  if (Untranslated(NAT_ORIGINAL_SOURCE, NAT_TRANSLATED_SOURCE) ||
      Untranslated(NAT_ORIGINAL_DESTINATION, NAT_TRANSLATED_DESTINATION))
    return 0;
  PrintEntry(out << fwi18n_text(
                 46, 7, "Error:  Cannot translate both source and destination addresses."));
  return 1;
}

std::ostream& Nat::PrintEntry(std::ostream& out) const {
  return Enumerate(out << std::endl << '\t', ENUM_FULL);
}

int Nat::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_ADDRESS) return 0;
  int misses = 0;
  for (int i = 0; i < kAddresses; ++i) {
    resolved_[i] = dynamic_cast<Address*>(written_[i]->FindSelf(list, 1));
    if (resolved_[i] != nullptr) continue;
    NotDefined(out, written_[i]->Name(), "ADDRESS");
    ++misses;
  }
  return misses;
}

int Nat::Refer(Config_Objects kind, const char* name, int print) const {
  bool hit = false;
  if (kind == CO_ADDRESS) {
    for (const Address* address : written_) hit = hit || same_text(address->Name(), name);
  } else if (kind == CO_SCREEN) {
    hit = same_text(Screen(), name);
  }
  if (!hit) return 0;
  if (print) {
    if (Screen() != nullptr) std::cout << "SCREEN \"" << Screen() << "\" ";
    std::cout << "NAT\t\"" << written_[0]->Name();
    for (int i = 1; i < kAddresses; ++i) std::cout << "\" \"" << written_[i]->Name();
    std::cout << '"' << std::endl;
  }
  return 1;
}

void Nat::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_SCREEN) {
    Entity::RenameReference(kind, old_name, new_name);
    return;
  }
  if (kind != CO_ADDRESS) return;
  for (Address* address : written_)
    if (same_text(address->Name(), old_name)) address->Name(new_name);
}

std::ostream& Nat::PrintAddresses(std::ostream& out) const {
  out << (type_ == NAT_STATIC ? "STATIC" : "DYNAMIC");
  for (const Address* address : written_) out << " \"" << address->Name() << '"';
  return out;
}

std::ostream& Nat::Enumerate(std::ostream& out, Enumerate_Type) const {
  entity_text_screen(out, *this);
  return entity_text_comment(PrintAddresses(out), *this) << '\n';
}

std::ostream& Nat::Print(std::ostream& out) const {
  return entity_text_tail(PrintAddresses(out << "NAT\t"), *this);
}
