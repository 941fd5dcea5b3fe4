#include "policy/policy.h"

#include <cstring>
#include <iostream>
#include <vector>

#include "crypto/acl_remote.h"
#include "crypto/certificate.h"
#include "crypto/vpn_node.h"
#include "crypto/vpn_set.h"
#include "driver/fw_file.h"
#include "model/address.h"
#include "model/message_subject.h"
#include "model/registry.h"
#include "model/saved_form.h"
#include "model/sorted_entity_list.h"
#include "policy/nat.h"
#include "policy/proxy_configs.h"
#include "policy/rule.h"
#include "screen/ferrowall.h"
#include "services/service.h"
#include "support/fwi18n.h"

namespace {

const int kPolicySet = 47;

}  // namespace

Policy::Policy(FWFile* file)
    : Entity(file->Versname(), nullptr, nullptr, 0), vpn_sets_(new TList<Entity>), file_(file) {}

Policy::~Policy() {
  vpn_sets_->Delete_Data();
  delete vpn_sets_;
  delete ether_rules_;
  delete load_file_;
  delete file_;
}

int Policy::Version() const { return file_->Version(); }

void Policy::Version(int version) { file_->Version(version); }

int Policy::RegVersion() const { return load_file_ != nullptr ? load_file_->Version() : 0; }

void Policy::RegVersion(int version) {
  if (load_file_ != nullptr) load_file_->Version(version);
}

int Policy::ReadonlyVersion() const { return strchr(Name(), '.') != nullptr; }

void Policy::Load(const char* name) {
  delete load_file_;
  load_file_ = new FWFile(file_->Domain(), name);
}

void Policy::Write(std::ostream& out, const FWFile* file, const FWFile* load, int embedded) const {
  saved_form_header(out);
  out << "POLICY_VERSION " << (file != nullptr ? file : file_)->Version() << '\n';
  if (load != nullptr && embedded == 0) {
    if (load->Version() > 0) out << "REGISTRY_USED_VERSION " << load->Version() << '\n';
    out << "LOAD \"" << load->Basename() << "\"\n";
  }
  out << '\n';
  saved_form_section(out, "//Rules", {&rules_.Items()});
  saved_form_section(out, "//Nat", {&nats_.Items()});
  saved_form_section(out, "//Local Access", {&acls_local_.Items()});
  saved_form_section(out, "//Remote Access", {&acls_remote_.Items()});
  saved_form_section(out, "//VPN Nodes", {&vpn_nodes_.Items()});
}

bool Policy::HoldsVPN(const char* name) const {
  for (TList_Cell<Entity>* cell = vpn_nodes_.Items().Head(); cell != nullptr; cell = cell->Next())
    if (strcmp(static_cast<const VPNNode*>(cell->Data())->Vpn().Name(), name) == 0) return true;
  return false;
}

void Policy::EnumerateName() const {
  // The sorted view keeps one object of a name: a repeat replaces it.
  SortedEntityList names;
  for (TList_Cell<Entity>* cell = vpn_nodes_.Items().Head(); cell != nullptr; cell = cell->Next())
    names.Insert(*new Entity(static_cast<const VPNNode*>(cell->Data())->Vpn().Name(), nullptr, nullptr, 0));
  for (TList_Cell<Entity>* cell = names.List().Head(); cell != nullptr; cell = cell->Next())
    std::cout << '"' << cell->Data()->Name() << "\"\n";
  names.Delete_Data();
}

OrderedEntityList* Policy::ListOf(Config_Objects kind) {
  return const_cast<OrderedEntityList*>(static_cast<const Policy*>(this)->ListOf(kind));
}

const OrderedEntityList* Policy::ListOf(Config_Objects kind) const {
  switch (kind) {
    case CO_RULE: return &rules_;
    case CO_NAT: return &nats_;
    case CO_ACL_LOCAL: return &acls_local_;
    case CO_ACL_REMOTE: return &acls_remote_;
    case CO_VPN_NODE: return &vpn_nodes_;
    default: return nullptr;
  }
}

void Policy::Move(Config_Objects kind, int from, int to) {
  if (OrderedEntityList* list = ListOf(kind)) {
    list->Move(from, to);
    dirty_ = 1;
  }
}

void Policy::Insert(Config_Objects kind, int position, Entity* entry) {
  OrderedEntityList* list = kind != CO_VPN_NODE ? ListOf(kind) : nullptr;
  if (list == nullptr || entry == nullptr) return;
  list->Insert(position, *entry);
  dirty_ = 1;
}

void Policy::Create(Config_Objects kind, Entity* entry) {
  OrderedEntityList* list = ListOf(kind);
  if (list == nullptr || entry == nullptr) return;
  list->Items(*entry);
  dirty_ = 1;
}

void Policy::Delete(Config_Objects kind, int position) {
  OrderedEntityList* list = ListOf(kind);
  if (list == nullptr) return;
  dirty_ = 1;
  TList_Cell<Entity>* cell = list->Items().Head();
  for (int at = 1; cell != nullptr && at < position; ++at) cell = cell->Next();
  if (position >= 1) list->Items().Delete_Data_Cell(cell);
}

TList<Entity>* Policy::TypeToList(Config_Objects kind) {
  OrderedEntityList* list = ListOf(kind);
  return list != nullptr ? &list->Items() : nullptr;
}

namespace {

// A list that is asked whether it refers to an object, with the label its
// lines carry.
struct ReferringList {
  Config_Objects list;
  const char* label;
};

std::vector<ReferringList> AskedLists(Config_Objects kind) {
  switch (kind) {
    case CO_ADDRESS:
      return {{CO_RULE, "RULE"}, {CO_NAT, "NAT"}, {CO_ACL_REMOTE, "ACLRemote"}, {CO_VPN_NODE, "VPNGateway"}};
    case CO_SCREEN:
      return {{CO_RULE, "RULE"},
              {CO_NAT, "NAT"},
              {CO_ACL_LOCAL, "ACLLocal"},
              {CO_ACL_REMOTE, "ACLRemote"},
              {CO_VPN_NODE, "VPNGateway"}};
    case CO_SERVICE:
    case CO_TIME:
    case CO_VPN:
      return {{CO_RULE, "RULE"}};
    case CO_CERTIFICATE:
    case CO_ALG_KEY:
    case CO_ALG_DATA:
    case CO_ALG_MAC:
    case CO_ALG_COMP:
    case CO_ALGORITHM:
      return {{CO_RULE, "RULE"}, {CO_ACL_REMOTE, "ACLRRemote"}, {CO_VPN_NODE, "VPNGateway"}};
    case CO_USER:
      return {{CO_RULE, "RULE"}, {CO_ACL_LOCAL, "ACLLocal"}, {CO_ACL_REMOTE, "ACLRemote"}};
    default:
      return {};
  }
}

// The lists a rename goes through: those asked, and for a VPN the gateways,
// which carry its name.
std::vector<Config_Objects> RenamedLists(Config_Objects kind) {
  std::vector<Config_Objects> lists;
  for (const ReferringList& asked : AskedLists(kind)) lists.push_back(asked.list);
  if (kind == CO_VPN) lists.push_back(CO_VPN_NODE);
  return lists;
}

}  // namespace

int Policy::IsReferenced(Config_Objects kind, const char* name, int print) const {
  int count = 0;
  for (const ReferringList& asked : AskedLists(kind)) count += ListOf(asked.list)->Refer(kind, name, print, asked.label);
  return count;
}

void Policy::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  std::vector<Config_Objects> lists = RenamedLists(kind);
  for (Config_Objects list : lists) ListOf(list)->RenameReference(kind, old_name, new_name);
  if (!lists.empty()) dirty_ = 1;
}

void Policy::Enumerate(Config_Objects kind) const {
  if (const OrderedEntityList* list = ListOf(kind)) list->Enumerate(std::cout, ENUM_FULL);
}

void Policy::EnumerateNumber(Config_Objects kind, int number) const {
  const OrderedEntityList* list = ListOf(kind);
  if (list == nullptr) return;
  int position = 1;
  for (TList_Cell<Entity>* cell = list->Items().Head(); cell != nullptr; cell = cell->Next(), ++position) {
    if (number != 0 && number != position) continue;
    std::cout << position << ' ';
    cell->Data()->Enumerate(std::cout, ENUM_FULL);
  }
}

void Policy::RemoveOtherScreenData(const Ferrowall& screen, TList<Entity>& list) {
  TList_Cell<Entity>* cell = list.Head();
  while (cell != nullptr) {
    TList_Cell<Entity>* next = cell->Next();
    Entity& entry = *cell->Data();
    if (entry.Screen() != nullptr) {
      if (strcmp(entry.Screen(), "*") == 0) entry.ClearScreen();
      else if (strcmp(entry.Screen(), screen.VirtualName()) != 0) list.Delete_Data_Cell(cell);
    }
    cell = next;
  }
}

namespace {

// The SKIP algorithm lists in the order rules and access entries resolve
// against them.
struct AlgorithmPass {
  Config_Objects kind;
  TList<Entity>& (Registry::*list)() const;
  Skip_Version version;
};

const AlgorithmPass kSkipAlgorithmPasses[] = {
    {CO_ALG_KEY, &Registry::AlgorithmKeyV1, SKIP_V1},   {CO_ALG_DATA, &Registry::AlgorithmDataV1, SKIP_V1},
    {CO_ALG_KEY, &Registry::AlgorithmKeyV2, SKIP_V2},   {CO_ALG_DATA, &Registry::AlgorithmDataV2, SKIP_V2},
    {CO_ALG_MAC, &Registry::AlgorithmMacV2, SKIP_V2},   {CO_ALG_COMP, &Registry::AlgorithmCompV2, SKIP_V2},
};

int ResolveSkipAlgorithms(OrderedEntityList& list, Registry& registry, std::ostream& out) {
  int errors = 0;
  for (const AlgorithmPass& pass : kSkipAlgorithmPasses)
    errors += list.ResolveAlgorithms(pass.kind, (registry.*pass.list)(), pass.version, out);
  return errors;
}

}  // namespace

int Policy::ResolveReferences(std::ostream& out, Registry& registry) {
  int errors = rules_.Resolve(CO_SCREEN, registry.Screens(), out);
  errors += rules_.Resolve(CO_ADDRESS, registry.Addresses(), out);
  errors += rules_.Resolve(CO_SERVICE, registry.ServicesCompile(), out);
  errors += rules_.Resolve(CO_CERTIFICATE, registry.Certificates(), out);
  errors += rules_.Resolve(CO_KEY, registry.Keys(), out);
  errors += rules_.Resolve(CO_VPN, *vpn_sets_, out);
  errors += ResolveSkipAlgorithms(rules_, registry, out);
  errors += rules_.Resolve(CO_ALGORITHM, registry.Algorithms(), out);
  errors += rules_.Resolve(CO_TIME, registry.Times(), out);
  errors += rules_.Resolve(CO_USER, registry.Users(), out);

  errors += nats_.Resolve(CO_ADDRESS, registry.Addresses(), out);

  errors += acls_remote_.Resolve(CO_ADDRESS, registry.Addresses(), out);
  errors += acls_remote_.Resolve(CO_CERTIFICATE, registry.Certificates(), out);
  errors += ResolveSkipAlgorithms(acls_remote_, registry, out);
  errors += acls_remote_.Resolve(CO_ALGORITHM, registry.Algorithms(), out);

  errors += vpn_nodes_.Resolve(CO_ADDRESS, registry.Addresses(), out);
  errors += vpn_nodes_.Resolve(CO_SCREEN, registry.Screens(), out);
  errors += vpn_nodes_.Resolve(CO_CERTIFICATE, registry.Certificates(), out);
  errors += vpn_nodes_.Resolve(CO_ALG_KEY, registry.AlgorithmKeyV2(), out);
  errors += vpn_nodes_.Resolve(CO_ALG_DATA, registry.AlgorithmDataV2(), out);
  errors += vpn_nodes_.Resolve(CO_ALG_MAC, registry.AlgorithmMacV2(), out);
  errors += vpn_nodes_.Resolve(CO_ALG_COMP, registry.AlgorithmCompV2(), out);
  return errors + vpn_nodes_.Resolve(CO_ALGORITHM, registry.Algorithms(), out);
}

// Every faulty rule is reported: the walk goes on after a fault.  A rule
// whose security parameters can't be placed is dropped from the list.
int Policy::VerifyRuleClauses(const Ferrowall& screen, std::ostream& out) {
  int errors = 0;
  TList_Cell<Entity>* cell = rules_.Items().Head();
  while (cell != nullptr) {
    TList_Cell<Entity>* next = cell->Next();
    Rule& rule = *static_cast<Rule*>(cell->Data());
    MessageSubject subject(rule);
    if (rule.VerifyProxyData(out) != 0) ++errors;
    if (rule.SetSecurityParameters(screen) != 0) {
      rules_.Items().Delete_Data_Cell(cell);
      ++errors;
    }
    cell = next;
  }
  return errors;
}

int Policy::CheckTranslations() const {
  int errors = 0;
  for (TList_Cell<Entity>* cell = nats_.Items().Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    errors += static_cast<Nat*>(cell->Data())->Inconsistent(std::cerr) != 0;
  }
  return errors;
}

// Each stage after the resolve runs only while nothing has failed.
int Policy::Verify(Ferrowall& screen, std::ostream& out, Registry& registry) {
  for (OrderedEntityList* list : {&rules_, &nats_, &acls_local_, &acls_remote_})
    RemoveOtherScreenData(screen, list->Items());
  int errors = 0;
  if (registry.GWYInterfaces().Empty() && registry.AdminInterfaces().Empty() && !acls_remote_.Items().Empty()) {
    std::cerr << fwi18n_text(kPolicySet, 1,
                             "Error: No enabled (Routing or Admin) Interfaces specified with remote admin rules.")
              << std::endl;
    ++errors;
  }
  BuildVpnSets();
  errors += ResolveReferences(out, registry);
  if (errors == 0) errors += CheckVpnSets();
  if (errors == 0) errors += VerifyRuleClauses(screen, out);
  if (errors == 0) errors += GenerateProxyConfigs(screen);
  if (errors == 0) errors += GenerateReverseRulesFilter(registry);
  if (errors == 0) errors += GenerateReverseRulesStateEngine(registry);
  if (errors == 0) {
    GenerateVPNRules(screen);
    GenerateRulesProxy(registry);
    errors += CheckConflicts(screen);
  }
  if (errors == 0) errors += SplitEtherRules(out, registry);
  if (errors == 0) errors += CheckTranslations();
  return errors;
}

// A VPN is made by the gateways that name it.
void Policy::BuildVpnSets() {
  for (TList_Cell<Entity>* cell = vpn_nodes_.Items().Head(); cell != nullptr; cell = cell->Next()) {
    VPNNode& node = *static_cast<VPNNode*>(cell->Data());
    VPNSet* set = static_cast<VPNSet*>(node.Vpn().FindSelf(*vpn_sets_, 0));
    if (set == nullptr) {
      set = new VPNSet(node.Vpn().Name());
      vpn_sets_->Append(*set);
    }
    set->Add(node);
  }
}

int Policy::CheckVpnSets() const {
  int errors = 0;
  for (TList_Cell<Entity>* cell = vpn_sets_->Head(); cell != nullptr; cell = cell->Next()) {
    const VPNSet& set = *static_cast<VPNSet*>(cell->Data());
    if (set.MixedMode() == 0) continue;
    std::cerr << fwi18n_text(kPolicySet, 11, "VPN cannot contain SKIP and IKE Gateways: ") << '"' << set.Name()
              << '"' << std::endl;
    ++errors;
  }
  return errors;
}

void Policy::GenerateVPNRules(const Ferrowall& screen) {
  ReplaceVpnRules([](const Rule& rule, const Ferrowall&) { return rule.PartitionVPNSource(); }, screen);
  ReplaceVpnRules([](const Rule& rule, const Ferrowall& at) { return rule.PartitionVPNDest(at); }, screen);
}

// The replacements go in one by one directly behind the rule, so they end
// up in the reverse of the order they were made in; the next cell is held
// first, so they aren't visited again by the same sweep.
void Policy::ReplaceVpnRules(VpnExpansion expand, const Ferrowall& screen) {
  TList<Entity>& rules = rules_.Items();
  TList_Cell<Entity>* cell = rules.Head();
  while (cell != nullptr) {
    TList_Cell<Entity>* next = cell->Next();
    const Rule& rule = *static_cast<Rule*>(cell->Data());
    if (rule.Vpn() != nullptr) {
      TList<Entity>* replacements = expand(rule, screen);
      for (TList_Cell<Entity>* made = replacements->Head(); made != nullptr; made = made->Next())
        rules.Append(*made->Data(), cell);
      delete replacements;
      rules.Delete_Data_Cell(cell);
    }
    cell = next;
  }
}

// Each rule is compared with the rules behind it only, so a conflicting
// pair is reported once; a rule in conflict with several counts once.
int Policy::CheckConflicts(const Ferrowall& screen) const {
  int errors = 0;
  for (TList_Cell<Entity>* cell = rules_.Items().Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    if (static_cast<Rule*>(cell->Data())->Conflicts(cell->Next(), screen) != 0) ++errors;
  }
  return errors;
}

int Policy::GenerateReverseRulesFilter(Registry& registry) {
  return GenerateReverseRules(registry, &Rule::GenerateReverseRuleFilter);
}

int Policy::GenerateReverseRulesStateEngine(Registry& registry) {
  return GenerateReverseRules(registry, &Rule::GenerateReverseRuleStateEngine);
}

// The next cell is held before the rule is expanded, so a reverse rule
// inserted behind it isn't expanded again by the same pass.
int Policy::GenerateReverseRules(Registry& registry, ReverseExpansion expand) {
  TList<Entity>& rules = rules_.Items();
  TList_Cell<Entity>* cell = rules.Head();
  while (cell != nullptr) {
    TList_Cell<Entity>* next = cell->Next();
    Rule* forward = nullptr;
    Rule* reverse = nullptr;
    if ((static_cast<Rule*>(cell->Data())->*expand)(&forward, &reverse, registry.ServicesCompile()) != 0)
      return 1;
    if (reverse != nullptr) rules.Append(*reverse, cell);
    if (forward == nullptr) rules.Delete_Data_Cell(cell);
    cell = next;
  }
  return 0;
}

// A rule that can't be split is reported and stays where it is, and the
// walk goes on so that every such rule is reported.
int Policy::SplitEtherRules(std::ostream& out, Registry& registry) {
  delete ether_rules_;
  ether_rules_ = new OrderedEntityList;
  int errors = 0;
  TList<Entity>& rules = rules_.Items();
  TList_Cell<Entity>* cell = rules.Head();
  while (cell != nullptr) {
    TList_Cell<Entity>* next = cell->Next();
    Rule& rule = *static_cast<Rule*>(cell->Data());
    MessageSubject subject(rule);
    Rule* ether = nullptr;
    Rule* other = nullptr;
    if (rule.GenerateEtherRule(&ether, &other, registry.ServicesCompile()) != 0) {
      out << fwi18n_text(kPolicySet, 10, "Error: SKIP and Ethernet filtering not supported") << "(" << rule << ")";
      ++errors;
    } else {
      if (other == nullptr) {
        rules.Delete_Cell(cell);
        ether_only_rules_.Items(rule);
      }
      if (ether != nullptr) ether_rules_->Items(*ether);
    }
    cell = next;
  }
  return errors;
}

int Policy::GenerateProxyConfigs(const Ferrowall&) const {
  ProxyConfigs::Write(rules_.Items());
  return 0;
}

// The proxy takes the connection at the screen and opens its own towards
// the destination, so the packet filter must let both halves through: the
// rule itself now ends at the screen, and a new rule in front of it goes
// from the screen to the destination.
void Policy::GenerateRulesProxy(Registry& registry) {
  Entity probe("localhost", nullptr, nullptr, 0);
  const Address* localhost = dynamic_cast<const Address*>(probe.FindSelf(registry.Addresses(), 0));
  if (localhost == nullptr) return;
  TList<Entity>& rules = rules_.Items();
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next()) {
    Rule& rule = *static_cast<Rule*>(cell->Data());
    if (rule.Proxy() == nullptr) continue;
    Rule* onward = new Rule(*rule.SvcResolved(), *localhost, rule.Destination(), nullptr, rule.DecryptionParameters(),
                            rule.EncryptionParameters(), rule.Vpn(), rule.Action(), rule.Log(), rule.SNMPValue(),
                            rule.ICMPValue(), rule.HAValue(), nullptr, nullptr, nullptr, nullptr);
    rules.Prepend(*onward, cell);
    rule.Destination(*localhost);
  }
}

void Policy::SetHARules(Entity& address) {
  for (TList_Cell<Entity>* cell = rules_.Items().Head(); cell != nullptr; cell = cell->Next()) {
    Rule& rule = *static_cast<Rule*>(cell->Data());
    if (strcmp(rule.Destination().Name(), address.Name()) == 0) rule.SetHAFlag();
  }
}

// A remote entry makes a rule only with the kind of certificate it needs;
// an entry whose kind the screen can't offer is left without a rule and
// without a message.
TList<Entity>* Policy::GenerateAdminRules(Ferrowall& screen, Registry& registry) {
  TList<Entity>* rules = new TList<Entity>;
  if (acls_remote_.Items().Empty()) return rules;
  Entity service_name("remote administration", nullptr, nullptr, 0);
  Service* service = dynamic_cast<Service*>(service_name.FindSelf(registry.ServicesCompile(), 0));
  if (service == nullptr) {
    std::cerr << fwi18n_text(kPolicySet, 2, "Error: Service not defined.") << " (\"" << service_name.Name()
              << "\")" << std::endl;
    delete rules;
    return nullptr;
  }
  // An HA secondary is administered as its primary is, so a certificate it
  // lacks is its master's.
  const Ferrowall* master = screen.HA_Secondary() ? screen.MasterResolved() : nullptr;
  Entity* ike = screen.AdminCertificateIKE();
  Entity* skip = screen.AdminCertificateSkip();
  if (ike == nullptr && master != nullptr) ike = master->AdminCertificateIKE();
  if (skip == nullptr && master != nullptr) skip = master->AdminCertificateSkip();
  if (ike == nullptr && skip == nullptr) {
    std::cerr << fwi18n_text(kPolicySet, 3, "Error: Ferrowall object has no Administrative Certificate") << " ("
              << screen.Name() << ")" << std::endl;
    delete rules;
    return nullptr;
  }
  Entity localhost_name("localhost", nullptr, nullptr, 0);
  const Address* localhost = dynamic_cast<const Address*>(localhost_name.FindSelf(registry.Addresses(), 1));
  for (TList_Cell<Entity>* cell = acls_remote_.Items().Head(); cell != nullptr && localhost != nullptr;
       cell = cell->Next()) {
    ACLRemote& entry = *static_cast<ACLRemote*>(cell->Data());
    Entity* certificate = entry.IPsecType() == IPSEC_SKIP ? skip : entry.IPsecType() == IPSEC_IKE ? ike : nullptr;
    if (certificate == nullptr) continue;
    if (Rule* rule = entry.GenerateRule(*static_cast<Certificate*>(certificate), *service, *localhost))
      rules->Append(*rule);
  }
  return rules;
}

void Policy::GenerateAccessFile(std::ostream& out, const Registry& registry) const {
  for (const OrderedEntityList* list : {&acls_local_, &acls_remote_})
    for (TList_Cell<Entity>* cell = list->Items().Head(); cell != nullptr; cell = cell->Next())
      static_cast<const ACL*>(cell->Data())->GenerateDataFile(out, registry);
}
