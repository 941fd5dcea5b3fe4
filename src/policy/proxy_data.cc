#include "policy/proxy_data.h"

Proxy_Type ProxyData::Type() const { return PROXY_TELNET; }

ProxyData* ProxyData::Clone() const { return new ProxyData(*this); }

std::ostream& ProxyData::Enumerate(std::ostream& out) const { return out << " PROXY_Telnet"; }

std::ostream& ProxyData::Print(std::ostream& out) const { return out << " PROXY_Telnet"; }

std::ostream& ProxyData::PrintOptions(std::ostream& out, const char* const words[], const Proxy_On_Off values[],
                                      int count) {
  for (int i = 0; i < count; ++i) out << (values[i] == PROXY_ON ? " " : " ! ") << words[i];
  return out;
}

std::ostream& ProxyData::EnumerateOptions(std::ostream& out, const char* const words[],
                                          const Proxy_On_Off values[], int count, bool blank_behind) {
  for (int i = 0; i < count; ++i) {
    if (values[i] != PROXY_ON) continue;
    if (blank_behind) out << words[i] << ' ';
    else out << ' ' << words[i];
  }
  return out;
}
