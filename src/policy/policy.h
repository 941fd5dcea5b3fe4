// The Policy is the ordered half of a configuration: rules, address
// translations, access entries and VPN gateways, in the order the
// administrator wrote them (positions count from 1), with the stored files
// they came from.  Its Verify turns what was written into what one screen
// must enforce: it drops the entries of other screens, links every name to
// the Registry and expands the rule list in place.
#ifndef FW_POLICY_POLICY_H
#define FW_POLICY_POLICY_H

#include <ostream>

#include "model/entity.h"
#include "model/ordered_entity_list.h"

class Ferrowall;
class FWFile;
class Registry;
class Rule;

class Policy : public Entity {
 public:
  // Takes over `file`, the main input; the policy is named after it.
  explicit Policy(FWFile* file);
  ~Policy() override;

  OrderedEntityList& Rules() { return rules_; }
  void Rules(Entity& rule) { rules_.Items(rule); }
  void Rules(int position, Entity& rule) { rules_.Insert(position, rule); }
  OrderedEntityList& Nats() { return nats_; }
  void Nats(Entity& nat) { nats_.Items(nat); }
  void Nats(int position, Entity& nat) { nats_.Insert(position, nat); }
  OrderedEntityList& ACLsLocal() { return acls_local_; }
  void ACLsLocal(Entity& acl) { acls_local_.Items(acl); }
  void ACLsLocal(int position, Entity& acl) { acls_local_.Insert(position, acl); }
  OrderedEntityList& ACLsRemote() { return acls_remote_; }
  void ACLsRemote(Entity& acl) { acls_remote_.Items(acl); }
  void ACLsRemote(int position, Entity& acl) { acls_remote_.Insert(position, acl); }
  OrderedEntityList& VPNNodes() { return vpn_nodes_; }
  void VPNNodes(Entity& node) { vpn_nodes_.Items(node); }
  TList<Entity>& VPNSets() { return *vpn_sets_; }
  // The Ethernet rules split off the rule list; null until they are.
  TList<Entity>* EtherRules() { return ether_rules_ != nullptr ? &ether_rules_->Items() : nullptr; }

  FWFile* File() const { return file_; }
  int Version() const;
  void Version(int version);
  // The load file's version; 0 without a load file.
  int RegVersion() const;
  void RegVersion(int version);
  // A policy whose name has a version ("policy.7") is a stored copy.
  int ReadonlyVersion() const;
  // Names the registry file to load, in the domain of the policy's file; a
  // second call replaces the first.
  void Load(const char* name);
  // The registry file named by a LOAD statement; null without one.
  FWFile* Load() const { return load_file_; }
  int Dirty() const { return dirty_; }
  void Dirty(int dirty) { dirty_ = dirty; }

  // Editing operations on the list of a kind (rules, translations, local
  // and remote access entries, gateways); other kinds do nothing.
  void Move(Config_Objects kind, int from, int to);
  void Insert(Config_Objects kind, int position, Entity* entry);
  void Create(Config_Objects kind, Entity* entry);
  void Delete(Config_Objects kind, int position);
  // The entries of the list of a kind, or null.
  TList<Entity>* TypeToList(Config_Objects kind);
  int IsReferenced(Config_Objects kind, const char* name, int print) const;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;

  // Listings on the standard output.
  void Enumerate(Config_Objects kind) const;
  // Each entry, or the one at `number` when it isn't 0, behind its position.
  void EnumerateNumber(Config_Objects kind, int number) const;
  // The distinct VPN names of the gateways, in name order, one quoted name
  // a line.
  void EnumerateName() const;
  // Whether a gateway makes the VPN `name`.
  bool HoldsVPN(const char* name) const;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type) const override { return out; }
  std::ostream& Print(std::ostream& out) const override { return out; }

  // Keeps the entries for everybody and those of the screen's virtual name;
  // a "*" screen becomes no screen.
  // The policy file: the header with the version of `file` (the policy's
  // own when null), the LOAD of `load` unless the registry is `embedded` in
  // the same text, and the five lists as statements that read back.
  void Write(std::ostream& out, const FWFile* file, const FWFile* load, int embedded) const;

  static void RemoveOtherScreenData(const Ferrowall& screen, TList<Entity>& list);
  // Links every name of the policy's entries to the registry; returns the
  // number of names not found.
  int ResolveReferences(std::ostream& out, Registry& registry);

  // Compile stages, in the order the compile runs them.  Verify returns the
  // number of problems it reported.
  int Verify(Ferrowall& screen, std::ostream& out, Registry& registry);
  // The reverse expansion of the rule list, first by the REVERSE filters of
  // the services, then by the reverse paths of their engines: each reverse
  // rule directly behind its rule, a rule that keeps nothing forward taken
  // out.  The second pass sees what the first made.  Each returns 1 at the
  // first rule that can't be reversed, leaving the rules before it changed.
  int GenerateReverseRulesFilter(Registry& registry);
  int GenerateReverseRulesStateEngine(Registry& registry);
  // Moves the Ethernet part of every rule into a new EtherRules list; a
  // rule left with nothing else leaves the rule list.  Returns the number
  // of rules that can't be split, each reported on `out`.
  int SplitEtherRules(std::ostream& out, Registry& registry);
  void SetHARules(Entity& ha_address);
  // Writes "ftpp.conf", "httpp.conf", "smtpp.conf" and "telnetp.conf" in
  // the current directory from the rules with a proxy clause, as written;
  // a proxy without rules gets an empty file.  Always 0.
  int GenerateProxyConfigs(const Ferrowall& screen) const;
  // Cuts each rule with a proxy clause at the screen: the rule now ends at
  // "localhost", and a new rule without user, proxy or time in front of it
  // goes from "localhost" to the old destination.  Nothing without a
  // "localhost" address.
  void GenerateRulesProxy(Registry& registry);
  // Replaces each rule with a VPN by one encrypted rule for each ordered
  // pair of the VPN's gateways that its addresses touch and that has
  // `screen` at one end; the last pair made stands first.
  void GenerateVPNRules(const Ferrowall& screen);
  // The rules of the remote access entries, from their addresses to the
  // screen's "localhost", or null, after a report, when the service for
  // remote administration or an administrative certificate is missing.
  TList<Entity>* GenerateAdminRules(Ferrowall& screen, Registry& registry);
  // The lines of the local, then the remote access entries in the file
  // Remote.Access.
  void GenerateAccessFile(std::ostream& out, const Registry& registry) const;

 private:
  // Verification stages: each returns the number of faults it reported.
  // The proxy clause and the security blocks of each rule.
  int VerifyRuleClauses(const Ferrowall& screen, std::ostream& out);
  int CheckTranslations() const;
  void BuildVpnSets();
  // The VPNs whose gateways are of both kinds, each reported.
  int CheckVpnSets() const;
  using VpnExpansion = TList<Entity>* (*)(const Rule& rule, const Ferrowall& screen);
  void ReplaceVpnRules(VpnExpansion expand, const Ferrowall& screen);
  int CheckConflicts(const Ferrowall& screen) const;
  using ReverseExpansion = int (Rule::*)(Rule** forward, Rule** reverse, TList<Entity>& services);
  int GenerateReverseRules(Registry& registry, ReverseExpansion expand);
  // The list of a kind, or null.
  OrderedEntityList* ListOf(Config_Objects kind);
  const OrderedEntityList* ListOf(Config_Objects kind) const;

  OrderedEntityList rules_;
  OrderedEntityList nats_;
  OrderedEntityList acls_local_;
  OrderedEntityList acls_remote_;
  OrderedEntityList vpn_nodes_;
  TList<Entity>* vpn_sets_;
  OrderedEntityList* ether_rules_ = nullptr;
  // Rules that left the rule list for the Ethernet list: their ether rules
  // lead back to them through Origin, so they live as long as the policy.
  OrderedEntityList ether_only_rules_;
  int dirty_ = 0;
  FWFile* load_file_ = nullptr;
  FWFile* file_;
};

#endif
