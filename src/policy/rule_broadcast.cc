#include "policy/rule_broadcast.h"

RuleBroadcast::RuleBroadcast(const char* service, const char* source, const char* destination,
                             const char* user, SecurityParameters* first,
                             SecurityParameters* second, const char* vpn, Action_Type action,
                             Log_Type log, SNMP_Type snmp, ICMP_Type icmp, int ha,
                             ProxyData* proxy, const char* time, const char* screen,
                             const char* comment)
    : Rule(service, source, destination, user, first, second, vpn, action, log, snmp, icmp, ha,
           proxy, time, screen, comment) {}

RuleBroadcast::RuleBroadcast(Service& service, const Address& source, const Address& destination,
                             const User* user, const SecurityParameters* decryption,
                             const SecurityParameters* encryption, VPNSet* vpn,
                             Action_Type action, Log_Type log, SNMP_Type snmp, ICMP_Type icmp,
                             int ha, const ProxyData* proxy, Time* time, const char* screen,
                             const char* comment)
    : Rule(service, source, destination, user, decryption, encryption, vpn, action, log, snmp,
           icmp, ha, proxy, time, screen, comment) {}

RuleBroadcast::RuleBroadcast(const Rule& other) : Rule(other) {}

void RuleBroadcast::BroadcastSplit(Rule**, Rule** broadcast) { *broadcast = this; }

TList<Entity>* RuleBroadcast::PartitionByInterface(const Registry&, const Interface&, const TList<Entity>&,
                                                   Address&) const {
  return nullptr;
}
