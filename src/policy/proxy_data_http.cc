#include "policy/proxy_data_http.h"

namespace {

const char* const kSwitchWords[] = {"COOKIES", "ACTIVE_X", "SSL"};
const int kJavaValues = 5;
// The listing and the proxy's file spell out the last value; the language
// has a shorter keyword for it.
const char* const kJavaListed[kJavaValues] = {"", "JAVA", "JAVA_SIGNATURE", "JAVA_HASH", "JAVA_SIGNATURE_HASH"};
const char* const kJavaKeywords[kJavaValues] = {"!JAVA", "JAVA", "JAVA_SIGNATURE", "JAVA_HASH", "JAVA_SIG_HASH"};

// Values outside the language's words can't be written back; they read as
// no Java, the safe end.
int known_java(int java) { return java >= 0 && java < kJavaValues ? java : 0; }

}  // namespace

Proxy_Type ProxyDataHTTP::Type() const { return PROXY_HTTP; }

ProxyData* ProxyDataHTTP::Clone() const { return new ProxyDataHTTP(switches_, java_); }

std::ostream& ProxyDataHTTP::Enumerate(std::ostream& out) const {
  EnumerateOptions(out << " PROXY_HTTP ", kSwitchWords, switches_.data(), switches_.size(), true);
  return out << kJavaListed[known_java(java_)];
}

std::ostream& ProxyDataHTTP::Print(std::ostream& out) const {
  PrintOptions(out << " PROXY_HTTP", kSwitchWords, switches_.data(), switches_.size());
  return out << ' ' << kJavaKeywords[known_java(java_)];
}
