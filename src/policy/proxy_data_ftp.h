// ProxyDataFTP is the clause of a rule handed to the FTP proxy: which of
// the seven kinds of FTP command the proxy lets through, in the order get,
// put, chdir, mkdir, rename, remove directory, delete.
#ifndef FW_POLICY_PROXY_DATA_FTP_H
#define FW_POLICY_PROXY_DATA_FTP_H

#include <array>

#include "policy/proxy_data.h"

class ProxyDataFTP : public ProxyData {
 public:
  using Commands = std::array<Proxy_On_Off, 7>;

  explicit ProxyDataFTP(const Commands& commands) : commands_(commands) {}

  Proxy_Type Type() const override;
  ProxyData* Clone() const override;
  std::ostream& Enumerate(std::ostream& out) const override;
  std::ostream& Print(std::ostream& out) const override;

 private:
  Commands commands_;
};

#endif
