#include "crypto/ike_text.h"

#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"

namespace {

std::ostream& QuotedOrNone(std::ostream& out, const Entity* reference) {
  return out << '"' << (reference != nullptr ? reference->Name() : "NONE") << '"';
}

}  // namespace

std::ostream& ike_text_values(std::ostream& out, const IkeTextValues& values, const char* separator) {
  QuotedOrNone(out, values.encryption) << separator;
  QuotedOrNone(out, values.hash) << separator << values.group << separator;
  if (values.method != nullptr) out << values.method->Name();
  else QuotedOrNone(out, values.method);
  return QuotedOrNone(out << separator, values.certificate);
}

std::ostream& ike_text_phase2(std::ostream& out, const IPsecIKEespParams* esp, const IPsecIKEahParams* ah,
                              bool listing, const char* lead) {
  if (esp != nullptr) listing ? esp->Enumerate(out << lead) : esp->Print(out << lead);
  if (ah != nullptr) listing ? ah->Enumerate(out << lead) : ah->Print(out << lead);
  return out;
}
