// ShadowedRules finds the written rules of a verified policy that can never
// decide a packet because rules before them together take all of their
// traffic: source, destination, service and time.  A rule is judged by the
// rules the compile expanded it into (reverse, proxy and VPN rules), each
// of which must be covered by rules of other origins before it.  Rules
// that are only partly covered are not found.
//
// Each rule is compared only with the earlier rules that a TrafficIndex
// offers, so that a policy of many narrow rules costs little more than its
// length.
#ifndef FW_POLICY_SHADOWED_RULES_H
#define FW_POLICY_SHADOWED_RULES_H

#include <vector>

#include "model/t_list.h"

class Entity;
class Rule;

class ShadowedRules {
 public:
  struct Finding {
    const Rule* rule;
    // The earliest rules that together cover it, in policy order.
    std::vector<const Rule*> covering;
  };

  // `rules` is the policy's list after verification; the findings are
  // written rules, in policy order.
  static std::vector<Finding> Find(const TList<Entity>& rules);
};

#endif
