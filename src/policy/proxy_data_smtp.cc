#include "policy/proxy_data_smtp.h"

namespace {

const char* const kRelayWord[] = {"RELAY"};

}  // namespace

Proxy_Type ProxyDataSMTP::Type() const { return PROXY_SMTP; }

ProxyData* ProxyDataSMTP::Clone() const { return new ProxyDataSMTP(relay_); }

std::ostream& ProxyDataSMTP::Enumerate(std::ostream& out) const {
  return EnumerateOptions(out << " PROXY_SMTP", kRelayWord, &relay_, 1, false);
}

std::ostream& ProxyDataSMTP::Print(std::ostream& out) const {
  return PrintOptions(out << " PROXY_SMTP", kRelayWord, &relay_, 1);
}
