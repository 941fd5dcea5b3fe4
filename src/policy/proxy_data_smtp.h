// ProxyDataSMTP is the clause of a rule handed to the SMTP proxy: whether
// the proxy relays mail for other domains.
#ifndef FW_POLICY_PROXY_DATA_SMTP_H
#define FW_POLICY_PROXY_DATA_SMTP_H

#include "policy/proxy_data.h"

class ProxyDataSMTP : public ProxyData {
 public:
  explicit ProxyDataSMTP(Proxy_On_Off relay) : relay_(relay) {}

  Proxy_Type Type() const override;
  ProxyData* Clone() const override;
  std::ostream& Enumerate(std::ostream& out) const override;
  std::ostream& Print(std::ostream& out) const override;

 private:
  Proxy_On_Off relay_;
};

#endif
