#include "policy/rule.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <string>

#include "crypto/security_parameters.h"
#include "crypto/vpn_node.h"
#include "crypto/vpn_set.h"
#include "model/address.h"
#include "model/entity_text.h"
#include "model/name_reference.h"
#include "model/registry.h"
#include "model/time.h"
#include "model/user.h"
#include "policy/proxy_data.h"
#include "policy/rule_broadcast.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "services/service.h"
#include "services/state_engine.h"
#include "support/fwi18n.h"
#include "support/host.h"

int Rule::unique_id_counter_ = 0;

namespace {

const char kRuleName[] = "RULE";
const int kRuleSet = 49;

// The address of a parsed rule: an empty set that only carries the name.
Address* address_placeholder(const char* name, const char* missing) {
  return new Address(name != nullptr ? name : missing, nullptr, nullptr, ADDRESS_SINGLE);
}

User* user_of(const char* name) { return name != nullptr ? new User(name, nullptr) : nullptr; }

User* user_copy(const User* user) { return user != nullptr ? user_of(user->Name()) : nullptr; }

// A private copy of a security block or of proxy data, null for null.
template <class Part>
Part* clone_of(const Part* part) {
  return part != nullptr ? part->Clone() : nullptr;
}

bool same_text(const char* a, const char* b) {
  return a != nullptr && b != nullptr && strcmp(a, b) == 0;
}

void mark(Entity* entity) {
  if (entity == nullptr) return;
  entity->Used(1);
  entity->Mark();
}

const char* log_word(Log_Type log) {
  switch (log) {
    case LOG_SUMMARY: return " LOG SUMMARY";
    case LOG_DETAIL: return " LOG DETAIL";
    case LOG_DYNAMIC: return " LOG DYNAMIC";
    case LOG_SESSION: return " LOG SESSION";
    default: return "";
  }
}

const char* icmp_word(ICMP_Type icmp) {
  switch (icmp) {
    case ICMP_NET_UNREACHABLE: return " ICMP NET_UNREACHABLE";
    case ICMP_HOST_UNREACHABLE: return " ICMP HOST_UNREACHABLE";
    case ICMP_PORT_UNREACHABLE: return " ICMP PORT_UNREACHABLE";
    case ICMP_NET_FORBIDDEN: return " ICMP NET_FORBIDDEN";
    case ICMP_HOST_FORBIDDEN: return " ICMP HOST_FORBIDDEN";
    default: return "";
  }
}

}  // namespace

Rule::Rule(const char* service, const char* source, const char* destination, const char* user,
           SecurityParameters* first, SecurityParameters* second, const char* vpn,
           Action_Type action, Log_Type log, SNMP_Type snmp, ICMP_Type icmp, int ha,
           ProxyData* proxy, const char* time, const char* screen, const char* comment)
    : Entity(kRuleName, screen, comment, 0),
      input_service_(NewNameReference(service != nullptr ? service : "Missing Service")),
      input_vpn_(NewNameReference(vpn)),
      source_(address_placeholder(source, "Missing Source Address")),
      destination_(address_placeholder(destination, "Missing Destination Address")),
      use_(user_of(user)),
      action_(action),
      log_(log),
      snmp_(snmp),
      icmp_(icmp),
      ha_(ha),
      proxy_(proxy),
      input_time_(NewNameReference(time)),
      origin_(this) {
  if (first != nullptr && second != nullptr) {
    decryption_parameters_ = first;
    encryption_parameters_ = second;
  } else {
    security_parameter_ = first != nullptr ? first : second;
  }
}

Rule::Rule(Service& service, const Address& source, const Address& destination, const User* user,
           const SecurityParameters* decryption, const SecurityParameters* encryption, VPNSet* vpn,
           Action_Type action,
           Log_Type log, SNMP_Type snmp, ICMP_Type icmp, int ha, const ProxyData* proxy, Time* time,
           const char* screen, const char* comment)
    : Entity(kRuleName, screen, comment, 0),
      input_service_(NewNameReference(service.Name())),
      svc_resolved_(&service),
      source_(new Address(source)),
      destination_(new Address(destination)),
      use_(user_copy(user)),
      decryption_parameters_(clone_of(decryption)),
      encryption_parameters_(clone_of(encryption)),
      vpn_(vpn),
      action_(action),
      log_(log),
      snmp_(snmp),
      icmp_(icmp),
      ha_(ha),
      proxy_(clone_of(proxy)),
      input_time_(CopyNameReference(time)),
      time_resolved_(time),
      origin_(this) {}

Rule::Rule(const Rule& other)
    : Entity(kRuleName, other.Screen(), other.Description(), 0),
      input_service_(CopyNameReference(other.input_service_)),
      input_vpn_(CopyNameReference(other.input_vpn_)),
      svc_resolved_(other.svc_resolved_),
      source_(new Address(*other.source_)),
      destination_(new Address(*other.destination_)),
      use_(user_copy(other.use_)),
      security_parameter_(clone_of(other.security_parameter_)),
      decryption_parameters_(clone_of(other.decryption_parameters_)),
      encryption_parameters_(clone_of(other.encryption_parameters_)),
      vpn_(other.vpn_),
      action_(other.action_),
      log_(other.log_),
      snmp_(other.snmp_),
      icmp_(other.icmp_),
      ha_(other.ha_),
      proxy_(clone_of(other.proxy_)),
      input_time_(CopyNameReference(other.input_time_)),
      time_resolved_(other.time_resolved_),
      origin_(other.origin_) {
  PositionOf(other);
}

Rule::~Rule() {
  delete input_service_;
  delete input_vpn_;
  delete source_;
  delete destination_;
  delete use_;
  delete security_parameter_;
  delete decryption_parameters_;
  delete encryption_parameters_;
  delete proxy_;
  delete input_time_;
}

void Rule::Origin(Rule* origin) {
  if (origin_ == this) origin_ = origin;
}

int Rule::UniqueID() {
  if (unique_id_ == -1) unique_id_ = unique_id_counter_++;
  return unique_id_;
}

void Rule::ResetUniqueId() { unique_id_counter_ = 0; }

void Rule::Source(const Address& address) {
  if (&address == source_) return;
  delete source_;
  source_ = new Address(address);
}

void Rule::Destination(const Address& address) {
  if (&address == destination_) return;
  delete destination_;
  destination_ = new Address(address);
}

void Rule::Svc(Service& service) {
  delete input_service_;
  input_service_ = new Service(service.Name(), nullptr, nullptr);
  svc_resolved_ = &service;
}

unsigned Rule::IKE_RuleNum(unsigned number) {
  if (ike_rule_num_ == 0) ike_rule_num_ = number;
  return ike_rule_num_;
}

void Rule::SetInterface(int id) {
  if (std::find(interfaces_.begin(), interfaces_.end(), id) == interfaces_.end()) interfaces_.push_back(id);
}

void Rule::SetInterface(const std::vector<int>& ids) {
  for (int id : ids) SetInterface(id);
}

void Rule::ReportWithRule(const char* message) const { Enumerate(std::cerr << message, ENUM_FULL); }

int Rule::DirectBlocks(const Ferrowall& screen) const {
  struct Block {
    SecurityParameters* parameters;
    int number;
    const char* message;
  };
  const Block blocks[] = {
      {security_parameter_, 4, "security_parameters direction error: "},
      {decryption_parameters_, 5, "decryption_parameters direction error: "},
      {encryption_parameters_, 6, "encryption_parameters direction error: "},
  };
  int errors = 0;
  for (const Block& block : blocks) {
    if (block.parameters == nullptr || block.parameters->SetDirection(screen) != DIRECTION_UNDECIDED) continue;
    std::cerr << fwi18n_text(kRuleSet, block.number, block.message);
    ++errors;
  }
  return errors;
}

// IPsec and IKE need the kernel modules of release 8; an older host still
// gets the files, so the warning doesn't stop the compile.
void Rule::WarnAboutOldHost() const {
  IPSEC_TYPE type = security_parameter_->Type();
  int release = Host::Current().Release();
  if ((type != IPSEC_MANUAL && type != IPSEC_IKE) || release == 0 || release >= 8) return;
  std::cerr << fwi18n_text(kRuleSet, 7, "Warning: IPsec/IKE requires Meridix 8 or higher.") << '\n'
            << fwi18n_text(kRuleSet, 8, "Rule uses IPsec/IKE, but this host is not running Meridix 8 or higher.")
            << '\n'
            << fwi18n_text(kRuleSet, 9, "Ferrowall will not be able to provide IPsec/IKE encryption for rule:")
            << '\n';
  ReportWithRule("");
}

int Rule::PlaceUndirectedBlock() {
  WarnAboutOldHost();
  if (decryption_parameters_ != nullptr || encryption_parameters_ != nullptr) {
    ReportWithRule(fwi18n_text(kRuleSet, 10, "conflicting crypto parameters: "));
    return 1;
  }
  Security_Direction direction = security_parameter_->Direction();
  if (direction != DIRECTION_DECRYPT && direction != DIRECTION_ENCRYPT) {
    ReportWithRule(fwi18n_text(kRuleSet, 11, "undirected crypto parameters: "));
    return 1;
  }
  (direction == DIRECTION_DECRYPT ? decryption_parameters_ : encryption_parameters_) = security_parameter_;
  security_parameter_ = nullptr;
  return 0;
}

int Rule::SetSecurityParameters(const Ferrowall& screen) {
  int errors = DirectBlocks(screen);
  if (errors != 0) {
    ReportWithRule("");
    return errors;
  }
  if (security_parameter_ != nullptr && PlaceUndirectedBlock() != 0) return 1;
  if (decryption_parameters_ != nullptr && decryption_parameters_->Direction() != DIRECTION_DECRYPT) {
    std::cerr << fwi18n_text(kRuleSet, 12, "misdirected decryption_parameters: ");
    ++errors;
  }
  if (encryption_parameters_ != nullptr && encryption_parameters_->Direction() != DIRECTION_ENCRYPT) {
    std::cerr << fwi18n_text(kRuleSet, 13, "misdirected encryption_parameters: ");
    ++errors;
  }
  if (errors != 0) ReportWithRule("");
  return errors;
}

int Rule::ReportParameterResolve(Config_Objects kind, Resolve_Error answer, const char* bad_name,
                                 std::ostream& out) const {
  const char* name = bad_name != nullptr ? bad_name : "";
  const char* word = nullptr;
  const char* invalid = nullptr;
  switch (kind) {
    case CO_ADDRESS: word = "ADDRESS"; break;
    case CO_SCREEN: word = "SCREEN"; break;
    case CO_CERTIFICATE:
    case CO_KEY:
      word = "CERTIFICATE";
      invalid = fwi18n_text(kRuleSet, 1, "Error: Rule refers to invalid Certificate type: ");
      break;
    case CO_ALGORITHM:
      word = "ALGORITHM";
      invalid = fwi18n_text(kRuleSet, 2, "Error: Rule refers to invalid Algorithm: ");
      break;
    default: return 0;
  }
  switch (answer) {
    case RESOLVE_NOT_FOUND: NotDefined(out, name, word); return 1;
    case RESOLVE_WRONG_TYPE:
      if (invalid == nullptr) return 0;
      out << invalid << name << std::endl;
      return 1;
    case RESOLVE_ALREADY_REPORTED: return invalid != nullptr ? 1 : 0;
    default: return 0;
  }
}

TList<Entity>* Rule::SplitRuleByFilterParams(TList<Entity>& services) const {
  TList<Entity>* rules = new TList<Entity>;
  if (svc_resolved_ == nullptr) return rules;
  const TList<FilterParams>& sets = svc_resolved_->Filters();
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next()) {
    const FilterParams& set = *cell->Data();
    std::string name = std::string(svc_resolved_->Name()) + "." + set.stateEngine()->Name();
    Service* part =
        new Service(name.c_str(), svc_resolved_->Screen(), svc_resolved_->Description());
    part->Include(set, 0);
    services.Append(*part);
    Rule* copy = new Rule(*this);
    copy->SetInterface(interfaces_);
    copy->Svc(*part);
    rules->Append(*copy);
  }
  return rules;
}

int Rule::GenerateReverseRuleFilter(Rule** forward, Rule** reverse, TList<Entity>& services) {
  return GenerateReverseRule(
      &Service::ReverseServiceFilter,
      fwi18n_text(kRuleSet, 20, "Error: Rule uses Certificate Group with Service containing Reverse Filter"),
      forward, reverse, services);
}

int Rule::GenerateReverseRuleStateEngine(Rule** forward, Rule** reverse, TList<Entity>& services) {
  return GenerateReverseRule(
      &Service::ReverseServiceStateEngine,
      fwi18n_text(kRuleSet, 21, "Error: Rule uses Certificate Group with Service containing Reverse State Engine"),
      forward, reverse, services);
}

// The reverse rule runs the other way, so what this rule decrypts it
// encrypts and the other way round, with the ends of each block swapped.
// A certificate group has no single counterpart once the ends change
// places; only the decrypting block can name one, so only it is asked.
int Rule::GenerateReverseRule(ServiceSplit split, const char* cannot_reverse, Rule** forward,
                              Rule** reverse, TList<Entity>& services) {
  if (svc_resolved_ == nullptr) {
    *forward = this;
    return 0;
  }
  Service* forward_part = nullptr;
  Service* reverse_part = nullptr;
  (svc_resolved_->*split)(&forward_part, &reverse_part);
  if (reverse_part != nullptr) {
    if (decryption_parameters_ != nullptr && decryption_parameters_->UsesCertificateGroup()) {
      std::cerr << cannot_reverse << " (" << *this << ")" << std::endl;
      delete reverse_part;
      if (forward_part != svc_resolved_) delete forward_part;
      return 1;
    }
    SecurityParameters* decryption = SecurityParameters::Reversed(decryption_parameters_);
    SecurityParameters* encryption = SecurityParameters::Reversed(encryption_parameters_);
    services.Append(*reverse_part);
    *reverse = new Rule(*reverse_part, *destination_, *source_, use_, encryption, decryption, vpn_, action_, log_,
                        snmp_, icmp_, ha_, proxy_, time_resolved_, nullptr, nullptr);
    (*reverse)->Origin(origin_);
    delete decryption;
    delete encryption;
  }
  *forward = KeepServicePart(forward_part, services);
  return 0;
}

int Rule::GenerateEtherRule(Rule** ether, Rule** other, TList<Entity>& services) {
  if (svc_resolved_ == nullptr) {
    *other = this;
    return 0;
  }
  Service* ether_part = nullptr;
  Service* other_part = nullptr;
  svc_resolved_->EtherSplit(&ether_part, &other_part);
  if (ether_part != nullptr) {
    if (security_parameter_ != nullptr || decryption_parameters_ != nullptr ||
        encryption_parameters_ != nullptr || use_ != nullptr || proxy_ != nullptr) {
      delete ether_part;
      if (other_part != svc_resolved_) delete other_part;
      return 1;
    }
    services.Append(*ether_part);
    *ether = new RuleBroadcast(*ether_part, *source_, *destination_, nullptr, nullptr, nullptr,
                               nullptr, action_, log_, snmp_, icmp_, ha_, nullptr, time_resolved_,
                               nullptr, nullptr);
    (*ether)->Origin(origin_);
  }
  *other = KeepServicePart(other_part, services);
  return 0;
}

Rule* Rule::KeepServicePart(Service* part, TList<Entity>& services) {
  if (part == nullptr) return nullptr;
  if (part != svc_resolved_) {
    Svc(*part);
    services.Append(*part);
  }
  return this;
}

// Which proxies need to know the user: FTP and Telnet authenticate one,
// SMTP serves anybody, HTTP does either.
int Rule::VerifyProxyData(std::ostream& err) const {
  if (proxy_ == nullptr) return 0;
  Proxy_Type type = proxy_->Type();
  bool fits = type == PROXY_HTTP || (type == PROXY_SMTP ? use_ == nullptr : use_ != nullptr);
  if (fits) return 0;
  Enumerate(err << fwi18n_text(kRuleSet, 22, "Proxy Error: "), ENUM_FULL);
  return 1;
}

std::ostream& Rule::PrintFlags(std::ostream& out) const {
  out << log_word(log_);
  if (snmp_ == SNMP_TRAP) out << " SNMP";
  if (action_ != ACTION_ALLOW) out << icmp_word(icmp_);
  return out;
}

void Rule::Mark() {
  mark(svc_resolved_);
  mark(source_);
  mark(destination_);
  mark(use_);
  mark(time_resolved_);
}

int Rule::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  switch (kind) {
    case CO_SERVICE: return ResolveService(list, out);
    case CO_ADDRESS: {
      int misses = ResolveAddress(&source_, list, out);
      misses += ResolveAddress(&destination_, list, out);
      return misses + ResolveParameters(kind, list, out);
    }
    case CO_SCREEN:
    case CO_CERTIFICATE:
    case CO_KEY:
    case CO_ALGORITHM: return ResolveParameters(kind, list, out);
    case CO_VPN: return ResolveVpn(list, out);
    case CO_TIME: return ResolveTime(list, out);
    default: return 0;
  }
}

int Rule::ResolveParameters(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  int errors = 0;
  ForEachBlock([&](SecurityParameters& parameters) {
    const char* bad_name = nullptr;
    Resolve_Error answer = parameters.Resolve(kind, list, &bad_name);
    errors += ReportParameterResolve(kind, answer, bad_name, out);
  });
  return errors;
}

int Rule::ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version, std::ostream& out) {
  int errors = 0;
  ForEachBlock([&](SecurityParameters& parameters) {
    const char* bad_name = nullptr;
    if (parameters.ResolveSKIPAlgorithms(kind, list, version, &bad_name) != RESOLVE_NOT_FOUND) return;
    NotDefined(out, bad_name, "ALGORITHM");
    ++errors;
  });
  return errors;
}

template <class Visit>
void Rule::ForEachBlock(Visit visit) const {
  for (SecurityParameters* parameters : {security_parameter_, decryption_parameters_, encryption_parameters_})
    if (parameters != nullptr) visit(*parameters);
}

int Rule::ResolveService(TList<Entity>& list, std::ostream& out) {
  Service* found = dynamic_cast<Service*>(input_service_->FindSelf(list, 1));
  if (found == nullptr) {
    NotDefined(out, input_service_->Name(), "SERVICE");
    return 1;
  }
  svc_resolved_ = found;
  return 0;
}

// The rule keeps a private copy, so that distribution may narrow it without
// touching the Registry.
int Rule::ResolveAddress(Address** field, TList<Entity>& list, std::ostream& out) {
  Address* found = dynamic_cast<Address*>((*field)->FindSelf(list, 1));
  if (found == nullptr) {
    NotDefined(out, (*field)->Name(), "ADDRESS");
    return 1;
  }
  if (found == *field) return 0;
  Address* copy = new Address(*found);
  delete *field;
  *field = copy;
  return 0;
}

int Rule::ResolveVpn(TList<Entity>& list, std::ostream& out) {
  if (input_vpn_ == nullptr) return 0;
  vpn_ = dynamic_cast<VPNSet*>(input_vpn_->FindSelf(list, 1));
  if (vpn_ != nullptr) return 0;
  NotDefined(out, input_vpn_->Name(), "VPN");
  return 1;
}

// TIME "*" means at all times, the same as no TIME clause.
int Rule::ResolveTime(TList<Entity>& list, std::ostream& out) {
  if (input_time_ == nullptr) return 0;
  if (strcmp(input_time_->Name(), "*") == 0) {
    delete input_time_;
    input_time_ = nullptr;
    return 0;
  }
  Time* found = dynamic_cast<Time*>(input_time_->FindSelf(list, 1));
  if (found == nullptr) {
    NotDefined(out, input_time_->Name(), "TIME");
    return 1;
  }
  time_resolved_ = found;
  return 0;
}

int Rule::Refer(Config_Objects kind, const char* name, int print) const {
  bool hit = false;
  switch (kind) {
    case CO_SERVICE: hit = NameReferenceIs(input_service_, name); break;
    case CO_ADDRESS: hit = NameReferenceIs(source_, name) || NameReferenceIs(destination_, name); break;
    case CO_USER: hit = NameReferenceIs(use_, name); break;
    case CO_TIME: hit = NameReferenceIs(input_time_, name); break;
    case CO_VPN: hit = NameReferenceIs(input_vpn_, name); break;
    case CO_SCREEN: hit = same_text(Screen(), name); break;
    case CO_CERTIFICATE:
    case CO_KEY:
    case CO_ALGORITHM:
      ForEachBlock([&](SecurityParameters& parameters) { hit = hit || parameters.Refer(kind, name); });
      break;
    default: break;
  }
  if (!hit) return 0;
  if (print) Enumerate(std::cout << "RULE\t" << "\t", ENUM_FULL);
  return 1;
}

void Rule::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  switch (kind) {
    case CO_SERVICE: RenameNameReference(input_service_, old_name, new_name); break;
    case CO_ADDRESS:
      RenameNameReference(source_, old_name, new_name);
      RenameNameReference(destination_, old_name, new_name);
      break;
    case CO_USER: RenameNameReference(use_, old_name, new_name); break;
    case CO_TIME: RenameNameReference(input_time_, old_name, new_name); break;
    case CO_VPN: RenameNameReference(input_vpn_, old_name, new_name); break;
    case CO_SCREEN: Entity::RenameReference(kind, old_name, new_name); break;
    case CO_CERTIFICATE:
    case CO_KEY:
    case CO_ALGORITHM:
      ForEachBlock([&](SecurityParameters& parameters) { parameters.RenameReference(kind, old_name, new_name); });
      break;
    default: break;
  }
}

// A rule with a VPN carries no security block.
std::ostream& Rule::PrintMiddle(std::ostream& out, bool listing) const {
  if (input_vpn_ != nullptr) return out << " VPN \"" << input_vpn_->Name() << '"';
  ForEachBlock([&](SecurityParameters& parameters) {
    if (listing) parameters.Enumerate(out << ' ');
    else parameters.Print(out << "  ");
  });
  return out;
}

const char* Rule::ActionWord() const { return action_ == ACTION_ALLOW ? "ALLOW" : "DENY"; }

std::ostream& Rule::Enumerate(std::ostream& out, Enumerate_Type) const {
  entity_text_screen(out, *this);
  out << '"' << input_service_->Name() << "\" \"" << source_->Name() << "\" \""
      << destination_->Name() << '"';
  if (use_ != nullptr) out << " USER \"" << use_->Name() << '"';
  PrintMiddle(out, true) << ' ' << ActionWord();
  PrintFlags(out);
  if (proxy_ != nullptr) proxy_->Enumerate(out);
  if (input_time_ != nullptr) out << " TIME \"" << input_time_->Name() << '"';
  return entity_text_comment(out, *this) << '\n';
}

std::ostream& Rule::Print(std::ostream& out) const {
  out << "RULE\t\"" << input_service_->Name() << "\"  \"" << source_->Name() << "\"  \""
      << destination_->Name() << '"';
  if (use_ != nullptr) out << "  USER \"" << use_->Name() << '"';
  PrintMiddle(out, false) << "  " << ActionWord();
  PrintFlags(out);
  if (proxy_ != nullptr) proxy_->Print(out);
  if (input_time_ != nullptr) out << " TIME\t\"" << input_time_->Name() << '"';
  return entity_text_tail(out, *this);
}

void Rule::BroadcastSplit(Rule** plain, Rule** broadcast) {
  if (svc_resolved_ == nullptr) {
    *plain = this;
    return;
  }
  Service* plain_service = nullptr;
  Service* broadcast_service = nullptr;
  svc_resolved_->BroadcastSplit(&plain_service, &broadcast_service);
  if (plain_service == svc_resolved_) {
    *plain = this;
  } else if (plain_service != nullptr) {
    *plain = new Rule(*this);
    (*plain)->Svc(*plain_service);
  }
  if (broadcast_service != nullptr) {
    *broadcast = new RuleBroadcast(*this);
    if (broadcast_service != svc_resolved_) (*broadcast)->Svc(*broadcast_service);
  }
}

Rule* Rule::Piece(const Address& destination) const {
  Rule* piece = new Rule(*svc_resolved_, *source_, destination, use_, decryption_parameters_,
                         encryption_parameters_, vpn_, action_, log_, snmp_, icmp_, ha_, proxy_,
                         time_resolved_, nullptr, nullptr);
  piece->Origin(origin_);
  return piece;
}

TList<Entity>* Rule::PartitionByInterface(const Registry& registry, const Interface& entry,
                                          const TList<Entity>& family, Address& unknown) const {
  TList<Entity>* pieces = new TList<Entity>;
  // A rule whose service never resolved has nothing to enforce anywhere.
  if (svc_resolved_ == nullptr) return pieces;
  bool stealth_entry = entry.Type() == INTERFACE_CLK;
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& exit = *static_cast<Interface*>(cell->Data());
    if ((stealth_entry && &exit == &entry) || !exit.Intersects(*destination_)) continue;
    Address* part = exit.Intersection(*destination_);
    if (part->Intersects(*registry.Star())) {
      Rule* piece = Piece(*part);
      piece->SetInterface(static_cast<int>(exit.UniqueID()));
      pieces->Append(*piece);
    }
    if (part != exit.ProtectedAddress() && part != destination_) delete part;
  }
  if (!unknown.Intersects(*destination_)) return pieces;
  Address* part = unknown.Intersection(*destination_);
  Rule* piece = Piece(*part);
  if (part != &unknown && part != destination_) delete part;
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& exit = *static_cast<Interface*>(cell->Data());
    if ((stealth_entry && &exit == &entry) || exit.Strict()) continue;
    piece->SetInterface(static_cast<int>(exit.UniqueID()));
  }
  pieces->Append(*piece);
  return pieces;
}

int Rule::Conflicts(TList_Cell<Entity>* from, const Ferrowall& screen) const {
  if (!DecryptsManuallyAt(screen)) return 0;
  int hits = 0;
  for (TList_Cell<Entity>* cell = from; cell != nullptr; cell = cell->Next())
    hits += Conflicts(*static_cast<const Rule*>(cell->Data()));
  return hits;
}

int Rule::Conflicts(const Rule& other) const {
  if (!ManualParametersConflict(other)) return 0;
  std::cerr << fwi18n_text(kRuleSet, 3, "Error: IPsec conflict between the following two Rules: ") << *this
            << other;
  return 1;
}

const SecurityParameters* Rule::ManualDecryption() const {
  const SecurityParameters* parameters = decryption_parameters_;
  if (parameters == nullptr || parameters->Type() != IPSEC_MANUAL) return nullptr;
  return parameters->DestinationFerrowallResolved() != nullptr ? parameters : nullptr;
}

bool Rule::DecryptsManuallyAt(const Ferrowall& screen) const {
  const SecurityParameters* mine = ManualDecryption();
  return mine != nullptr && same_text(mine->DestinationFerrowallResolved()->Name(), screen.Name());
}

bool Rule::ManualParametersConflict(const Rule& other) const {
  const SecurityParameters* mine = ManualDecryption();
  const SecurityParameters* theirs = other.ManualDecryption();
  if (mine == nullptr || theirs == nullptr) return false;
  if (!same_text(mine->DestinationFerrowallResolved()->Name(), theirs->DestinationFerrowallResolved()->Name()))
    return false;
  const Address* my_tunnel = mine->DestinationTunnelResolved();
  const Address* their_tunnel = theirs->DestinationTunnelResolved();
  if (my_tunnel == nullptr || their_tunnel == nullptr || !my_tunnel->Intersects(*their_tunnel)) return false;
  return mine->Conflicts(*theirs) != 0;
}

Rule* Rule::OriginalCopy() const {
  Rule* copy = new Rule(*this);
  copy->origin_ = copy;
  return copy;
}

TList<Entity>* Rule::PartitionVPNSource() const {
  TList<Entity>* copies = new TList<Entity>;
  for (TList_Cell<VPNNode>* cell = vpn_->Nodes().Head(); cell != nullptr; cell = cell->Next()) {
    const Address* gateway = cell->Data()->ResolvedAddress();
    if (!gateway->Intersects(*source_)) continue;
    Rule* copy = OriginalCopy();
    copy->Source(*gateway);
    copies->Append(*copy);
  }
  return copies;
}

TList<Entity>* Rule::PartitionVPNDest(const Ferrowall& screen) const {
  TList<Entity>* pairs = new TList<Entity>;
  const VPNNode* source = nullptr;
  for (TList_Cell<VPNNode>* cell = vpn_->Nodes().Head(); cell != nullptr; cell = cell->Next())
    if (same_text(cell->Data()->ResolvedAddress()->Name(), source_->Name())) source = cell->Data();
  if (source == nullptr) return pairs;
  for (TList_Cell<VPNNode>* cell = vpn_->Nodes().Head(); cell != nullptr; cell = cell->Next()) {
    const Address& gateway = *cell->Data()->ResolvedAddress();
    if (same_text(gateway.Name(), source_->Name()) || !gateway.Intersects(*destination_)) continue;
    if (Rule* pair = VpnPair(*source, *cell->Data(), screen)) pairs->Append(*pair);
  }
  return pairs;
}

// A pair between two other gateways is no business of this screen: it is
// left out without the direction error that an ordinary rule would get,
// which would only alarm the administrator of a correct VPN.
Rule* Rule::VpnPair(const VPNNode& source, const VPNNode& destination, const Ferrowall& screen) const {
  SecurityParameters* parameters = source.GenerateSecurityParameters(destination);
  if (parameters == nullptr) return nullptr;
  if (parameters->SetDirection(screen) == DIRECTION_UNDECIDED) {
    delete parameters;
    return nullptr;
  }
  Rule* pair = OriginalCopy();
  pair->TakePart(&pair->destination_, *destination.ResolvedAddress());
  pair->TakePart(&pair->source_, *source.ResolvedAddress());
  delete pair->security_parameter_;
  pair->security_parameter_ = parameters;
  if (pair->SetSecurityParameters(screen) == 0) return pair;
  delete pair;
  return nullptr;
}

void Rule::TakePart(Address** field, Address& gateway) {
  Address* part = gateway.Intersection(**field);
  if (part == *field) return;
  Address* copy = part == &gateway ? new Address(gateway) : part;
  delete *field;
  *field = copy;
}
