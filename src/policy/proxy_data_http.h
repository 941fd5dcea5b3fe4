// ProxyDataHTTP is the clause of a rule handed to the HTTP proxy: whether
// cookies, ActiveX and SSL pass, and what Java may: none (0), any (1),
// signed (2), with a known hash (3), or signed with a known hash (4).
#ifndef FW_POLICY_PROXY_DATA_HTTP_H
#define FW_POLICY_PROXY_DATA_HTTP_H

#include <array>

#include "policy/proxy_data.h"

class ProxyDataHTTP : public ProxyData {
 public:
  // Cookies, ActiveX, SSL.
  using Switches = std::array<Proxy_On_Off, 3>;

  ProxyDataHTTP(const Switches& switches, int java) : switches_(switches), java_(java) {}

  Proxy_Type Type() const override;
  ProxyData* Clone() const override;
  std::ostream& Enumerate(std::ostream& out) const override;
  std::ostream& Print(std::ostream& out) const override;

 private:
  Switches switches_;
  int java_;
};

#endif
