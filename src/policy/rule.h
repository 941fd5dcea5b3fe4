// Rule is one line of the policy: a service, a source and a destination
// address, a verdict and what goes with it (user, encryption, VPN, logging,
// proxy, time of day).  The same class serves three stages: a parsed rule
// holds names, a resolved rule holds private copies of its addresses and
// links to its service, VPN and time, and the expansion of the policy
// derives new rules from it.  Every derived rule leads back to the rule of
// the policy list through Origin.
//
// A rule owns its address copies, its placeholders, its user, its security
// parameter blocks and its proxy data; it never owns its service, VPN or
// time.  Copies never inherit a unique id, an IKE rule number or the
// interface tags.
#ifndef FW_POLICY_RULE_H
#define FW_POLICY_RULE_H

#include <ostream>
#include <vector>

#include "model/entity.h"
#include "model/enumerations.h"
#include "model/t_list.h"

class Address;
class Ferrowall;
class Interface;
class ProxyData;
class Registry;
class SecurityParameters;
class Service;
class Time;
class User;
class VPNNode;
class VPNSet;

enum Action_Type { ACTION_DENY = 0, ACTION_ALLOW = 1 };

class Rule : public Entity {
 public:
  // The rule as written.  A null service, source or destination becomes a
  // placeholder named "Missing Service", "Missing Source Address" or
  // "Missing Destination Address".  With two blocks, `first` is the
  // decryption side and `second` the encryption side; a single block waits
  // for SetSecurityParameters.  Takes `first`, `second` and `proxy`.
  Rule(const char* service, const char* source, const char* destination, const char* user,
       SecurityParameters* first, SecurityParameters* second, const char* vpn, Action_Type action,
       Log_Type log, SNMP_Type snmp, ICMP_Type icmp, int ha, ProxyData* proxy, const char* time,
       const char* screen, const char* comment);
  // A rule derived during the expansion: linked to `service`, `vpn` and
  // `time`; `source`, `destination`, the user (by name), the two blocks and
  // the proxy data are copied.
  Rule(Service& service, const Address& source, const Address& destination, const User* user,
       const SecurityParameters* decryption, const SecurityParameters* encryption, VPNSet* vpn,
       Action_Type action, Log_Type log, SNMP_Type snmp, ICMP_Type icmp, int ha,
       const ProxyData* proxy, Time* time, const char* screen, const char* comment);
  // Always a plain Rule with the Origin of `other`, no unique id, no IKE
  // rule number and no interface tags.
  Rule(const Rule& other);
  Rule& operator=(const Rule&) = delete;
  ~Rule() override;

  const Entity& InputService() const { return *input_service_; }
  const Entity* InputVpn() const { return input_vpn_; }
  const Entity* InputTime() const { return input_time_; }
  // Null until the service is resolved.
  Service* SvcResolved() const { return svc_resolved_; }
  Address& Source() const { return *source_; }
  Address& Destination() const { return *destination_; }
  const User* Use() const { return use_; }
  SecurityParameters* SecurityParameter() const { return security_parameter_; }
  SecurityParameters* DecryptionParameters() const { return decryption_parameters_; }
  SecurityParameters* EncryptionParameters() const { return encryption_parameters_; }
  VPNSet* Vpn() const { return vpn_; }
  Action_Type Action() const { return action_; }
  Log_Type Log() const { return log_; }
  SNMP_Type SNMPValue() const { return snmp_; }
  ICMP_Type ICMPValue() const { return icmp_; }
  int HAValue() const { return ha_; }
  ProxyData* Proxy() const { return proxy_; }
  Time* TimeResolved() const { return time_resolved_; }
  // The unique ids of the interfaces a distributed rule is also meant for.
  const std::vector<int>& Interfaces() const { return interfaces_; }
  Rule* Origin() const { return origin_; }
  unsigned IKE_RuleNum() const { return ike_rule_num_; }

  // Sets the origin only while it is still the rule itself: the first call
  // wins.
  void Origin(Rule* origin);
  // Given on first demand from a class-wide counter.
  int UniqueID();
  static void ResetUniqueId();
  // Stores a copy of `address` unless it is the current object.
  void Source(const Address& address);
  void Destination(const Address& address);
  // Links `service`, which stays with its owner, and names the rule's
  // service placeholder after it.
  void Svc(Service& service);
  void SetHAFlag() { ha_ = 1; }
  // Stores `number` only while the field is still 0; returns the field.
  unsigned IKE_RuleNum(unsigned number);
  // Tags the rule with an interface id, each id once.
  void SetInterface(int id);
  void SetInterface(const std::vector<int>& ids);

  // The VPN expansion, in two sweeps.  The source sweep: a copy of the
  // rule for each gateway of its VPN, in set order, whose address meets
  // the source, with that address as source.  The destination sweep, on
  // such a copy: the source gateway is the last one whose address has the
  // source's name; for each other gateway (by address name) whose address
  // meets the destination, a copy from the common part of the source
  // gateway's address to the common part of the other's, encrypted with
  // the parameters of the pair.  Pairs in which `screen` is neither end
  // are left out.  Each copy is its own origin.  The caller owns the list
  // and its rules.
  TList<Entity>* PartitionVPNSource() const;
  TList<Entity>* PartitionVPNDest(const Ferrowall& screen) const;

  // Decides on which side of `screen` a written block works and moves it
  // to the decryption or encryption side; checks that directed blocks
  // work on their side.  Reports on the standard error stream, each report
  // followed by the rule's listing line, and returns the number of faults.
  int SetSecurityParameters(const Ferrowall& screen);

  // How the answer of a security parameter block's resolve is reported for
  // references of sort `kind`: the message, if any, on `out`, and the
  // number of errors it counts.
  int ReportParameterResolve(Config_Objects kind, Resolve_Error answer, const char* bad_name,
                             std::ostream& out) const;

  // The expansion of a rule whose service also runs the other way: by the
  // REVERSE filters of the service, or by the engines of its parameter sets
  // that have a reverse path.  The caller sets both out-parameters to null.
  // `*forward` is this rule, now with the forward half of its service, or
  // stays null when nothing of the service runs forward; `*reverse` is a new
  // rule for the reverse half, from the destination to the source, with the
  // other fields of this rule but no screen and no comment; its decryption
  // block is this rule's encryption block turned around, and the other way
  // round.  New services go to `services`, which owns them.  Returns 1
  // after a report on the standard error stream when the rule decrypts
  // with a certificate group, which can't be turned around.
  int GenerateReverseRuleFilter(Rule** forward, Rule** reverse, TList<Entity>& services);
  int GenerateReverseRuleStateEngine(Rule** forward, Rule** reverse, TList<Entity>& services);
  // Cuts the sets of the "ether" engine off into a new RuleBroadcast
  // `*ether` without user, crypto, VPN or proxy; `*other` is this rule with
  // the rest, or stays null.  The caller sets both to null; new services go
  // to `services`.  Returns 1, with nothing changed, when the rule has ether
  // sets and also crypto, a user or a proxy, none of which the Ethernet
  // level knows.
  int GenerateEtherRule(Rule** ether, Rule** other, TList<Entity>& services);

  // One rule per parameter set of the service, each with a new service of
  // that one set named "<service>.<engine>", which is appended to (and
  // owned by) `services`.  The copies keep Origin and the interface tags.
  // The caller owns the returned list and its rules.
  TList<Entity>* SplitRuleByFilterParams(TList<Entity>& services) const;

  // Whether the proxy clause fits the user clause: the FTP and Telnet
  // proxies need a user, the SMTP proxy must have none.  1 after writing
  // "Proxy Error: " and the rule's listing line to `err`.
  int VerifyProxyData(std::ostream& err) const;

  // The log, snmp and icmp words of the rule's text, each behind a blank.
  std::ostream& PrintFlags(std::ostream& out) const;

  // Marks the service, the addresses, the user and the time as used.
  void Mark() override;
  // Links the references of sort `kind` to objects of `list`; returns the
  // number of errors, each reported on `out`.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  int ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                        std::ostream& out) override;
  // With `print`, a hit also writes "RULE", two tabs and the listing line to
  // the standard output.
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // Always the full line, whatever `type` says.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

  // Cuts the rule by the broadcast sets of its service.  Both out-parameters
  // start null; a plain half is this rule or a copy with a new service, a
  // broadcast half is always a new RuleBroadcast.  The new services are the
  // caller's to keep.
  virtual void BroadcastSplit(Rule** plain, Rule** broadcast);

  // Cuts the destination into one new rule per member of `family` whose
  // side it touches, tagged with that member's id, in family order, and one
  // last rule for the part in `unknown`, tagged with every member that
  // isn't strict.  A stealth `entry` never sends a rule back to itself.
  // The caller frees the list, not the rules in it.
  virtual TList<Entity>* PartitionByInterface(const Registry& registry, const Interface& entry,
                                              const TList<Entity>& family, Address& unknown) const;

  // For a rule that decrypts manual IPsec at `screen`: the number of rules
  // from `from` to the end of the list whose manual parameters conflict
  // with this rule's; each conflict is reported on the standard error
  // stream.  0 for every other rule.
  int Conflicts(TList_Cell<Entity>* from, const Ferrowall& screen) const;
  // 1, after the report, when `other` decrypts at the same screen through
  // an intersecting tunnel with parameters that conflict with this rule's.
  int Conflicts(const Rule& other) const;

 private:
  using ServiceSplit = void (Service::*)(Service** first, Service** second);
  // The reverse expansion with `split` cutting the service into its forward
  // and reverse halves; `cannot_reverse` is the message of a rule whose
  // blocks can't be turned around.
  int GenerateReverseRule(ServiceSplit split, const char* cannot_reverse, Rule** forward,
                          Rule** reverse, TList<Entity>& services);
  // This rule with `part` of its service, or null without a part.  A part
  // that isn't the rule's own service becomes its service and goes to
  // `services`.
  Rule* KeepServicePart(Service* part, TList<Entity>& services);
  // The resolve steps of one sort of reference each.
  int ResolveService(TList<Entity>& list, std::ostream& out);
  int ResolveAddress(Address** field, TList<Entity>& list, std::ostream& out);
  int ResolveVpn(TList<Entity>& list, std::ostream& out);
  int ResolveTime(TList<Entity>& list, std::ostream& out);
  // The middle of the rule's text: the VPN, or the security blocks as the
  // statement or, with `listing`, as the listing line writes them.
  std::ostream& PrintMiddle(std::ostream& out, bool listing) const;
  // Each present block: the undirected one, decryption, encryption.
  template <class Visit>
  void ForEachBlock(Visit visit) const;
  int ResolveParameters(Config_Objects kind, TList<Entity>& list, std::ostream& out);
  // The steps of SetSecurityParameters.
  int DirectBlocks(const Ferrowall& screen) const;
  void WarnAboutOldHost() const;
  int PlaceUndirectedBlock();
  // `message` and the rule's listing line on the standard error stream.
  void ReportWithRule(const char* message) const;
  // The decryption block when it is manual and names its screen.
  const SecurityParameters* ManualDecryption() const;
  const char* ActionWord() const;
  // A copy that is the origin of its own derived rules.
  Rule* OriginalCopy() const;
  // The copy of the pair from `source` to `destination`, or null when
  // `screen` is neither end of it.
  Rule* VpnPair(const VPNNode& source, const VPNNode& destination, const Ferrowall& screen) const;
  // Narrows `*field` to its common part with `gateway`.
  static void TakePart(Address** field, Address& gateway);
  // A new rule for a part of the destination, with everything else of this
  // rule and its Origin.
  Rule* Piece(const Address& destination) const;
  bool DecryptsManuallyAt(const Ferrowall& screen) const;
  bool ManualParametersConflict(const Rule& other) const;

  int unique_id_ = -1;
  Entity* input_service_;
  Entity* input_vpn_ = nullptr;
  Service* svc_resolved_ = nullptr;
  Address* source_;
  Address* destination_;
  User* use_ = nullptr;
  SecurityParameters* security_parameter_ = nullptr;
  SecurityParameters* decryption_parameters_ = nullptr;
  SecurityParameters* encryption_parameters_ = nullptr;
  VPNSet* vpn_ = nullptr;
  Action_Type action_;
  Log_Type log_;
  SNMP_Type snmp_;
  ICMP_Type icmp_;
  int ha_;
  ProxyData* proxy_ = nullptr;
  Entity* input_time_ = nullptr;
  Time* time_resolved_ = nullptr;
  std::vector<int> interfaces_;
  Rule* origin_;
  unsigned ike_rule_num_ = 0;

  static int unique_id_counter_;
};

#endif
