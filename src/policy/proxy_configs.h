// ProxyConfigs writes the configuration files of the screen's four proxy
// daemons, "ftpp.conf", "httpp.conf", "smtpp.conf" and "telnetp.conf", in
// the current directory.  Each daemon reads its file at every start, so
// all four are written on every compile, an empty one telling a daemon
// that it has nothing to relay.  A file with rules starts with the port
// and the number of records; each rule with that proxy, in policy order,
// gives one record: its time id, log value, the source and destination
// ranges, the verdict and the user.
#ifndef FW_POLICY_PROXY_CONFIGS_H
#define FW_POLICY_PROXY_CONFIGS_H

#include <ostream>

#include "model/t_list.h"

class Entity;
class Rule;

class ProxyConfigs {
 public:
  // Gives the time objects of the proxied rules their ids.
  static void Write(const TList<Entity>& rules);

 private:
  static void WriteRecord(std::ostream& out, const Rule& rule);
  static std::ostream& Verdict(std::ostream& out, const Rule& rule);
};

#endif
