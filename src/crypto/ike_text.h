// The IKE clauses that screens, gateways, remote access entries and rule
// blocks write alike: the values of phase 1 and the ESP and AH clauses of
// phase 2, in the statement form and in the listing form.
#ifndef FW_CRYPTO_IKE_TEXT_H
#define FW_CRYPTO_IKE_TEXT_H

#include <ostream>

#include "model/entity.h"

class IPsecIKEahParams;
class IPsecIKEespParams;

// The phase 1 values as written; a null reference is written "NONE".
struct IkeTextValues {
  const Entity* encryption;
  const Entity* hash;
  long group;
  const Entity* method;
  const Entity* certificate;
};

// The encryption, hash, group, method and certificate joined by
// `separator`.  The names are quoted but for a method that is set: the
// grammar reads it as a bare name.
std::ostream& ike_text_values(std::ostream& out, const IkeTextValues& values, const char* separator);
// The ESP and AH clauses that are there, each behind `lead` and ending in
// a blank: with `listing` in the listing form, otherwise in the statement
// form.
std::ostream& ike_text_phase2(std::ostream& out, const IPsecIKEespParams* esp, const IPsecIKEahParams* ah,
                              bool listing, const char* lead = "");

#endif
