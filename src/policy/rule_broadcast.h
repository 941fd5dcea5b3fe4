// RuleBroadcast is a rule for traffic sent to a broadcast address.  It has
// no data of its own; it only refuses to be cut again: its broadcast split
// answers with the rule itself.
#ifndef FW_POLICY_RULE_BROADCAST_H
#define FW_POLICY_RULE_BROADCAST_H

#include "policy/rule.h"

class RuleBroadcast : public Rule {
 public:
  // The three forms of Rule, with the same arguments.
  RuleBroadcast(const char* service, const char* source, const char* destination,
                const char* user, SecurityParameters* first, SecurityParameters* second,
                const char* vpn, Action_Type action, Log_Type log, SNMP_Type snmp, ICMP_Type icmp,
                int ha, ProxyData* proxy, const char* time, const char* screen,
                const char* comment);
  RuleBroadcast(Service& service, const Address& source, const Address& destination,
                const User* user, const SecurityParameters* decryption,
                const SecurityParameters* encryption, VPNSet* vpn, Action_Type action,
                Log_Type log, SNMP_Type snmp, ICMP_Type icmp, int ha, const ProxyData* proxy,
                Time* time, const char* screen, const char* comment);
  // A broadcast copy of any rule, with the Origin of `other`.
  explicit RuleBroadcast(const Rule& other);

  // `*broadcast` is this rule; `*plain` is left alone.
  void BroadcastSplit(Rule** plain, Rule** broadcast) override;
  // Null: its destination is the family's broadcast set, which no member
  // protects, so there is nothing to cut.
  TList<Entity>* PartitionByInterface(const Registry& registry, const Interface& entry,
                                      const TList<Entity>& family, Address& unknown) const override;
};

#endif
