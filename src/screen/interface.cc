#include "screen/interface.h"

#include <arpa/inet.h>
#include <strings.h>

#include <cstring>
#include <iostream>
#include <vector>

#include "model/address.h"
#include "model/registry.h"
#include "policy/rule.h"
#include "services/service.h"
#include "support/host.h"

namespace {

const uint32_t kMulticastStart = 0xE0000000u;  // 224.0.0.0
const uint32_t kMulticastEnd = 0xEFFFFFFFu;    // 239.255.255.255

enum Family { FAMILY_ADMIN, FAMILY_ROUTING, FAMILY_STEALTH, FAMILY_NONE };

Family FamilyOf(Interface_Type type) {
  switch (type) {
    case INTERFACE_ADMIN: return FAMILY_ADMIN;
    case INTERFACE_DISABLED: return FAMILY_NONE;
    case INTERFACE_CLK: return FAMILY_STEALTH;
    default: return FAMILY_ROUTING;
  }
}

uint32_t unique_id_counter[FAMILY_NONE] = {0, 0, 0};

const char* const kBroadcastNames[FAMILY_NONE] = {"Broadcast Admin", "Broadcast Routing",
                                                  "Broadcast Stealth"};
Address* broadcast_sets[FAMILY_NONE] = {nullptr, nullptr, nullptr};

Address* NewEmptyAddress(const char* name) { return new Address(name, nullptr, nullptr, ADDRESS_SINGLE); }

Address* CopyOrEmpty(const Address* address, const char* name) {
  return address != nullptr ? new Address(*address) : NewEmptyAddress(name);
}

// The broadcast set of a family, made on first use so that a set-up that
// skipped ResetBroadcastAddresses still has somewhere to put its values.
Address& BroadcastSet(Family family) {
  if (broadcast_sets[family] == nullptr) broadcast_sets[family] = NewEmptyAddress(kBroadcastNames[family]);
  return *broadcast_sets[family];
}

// The limited broadcast, the directed broadcast and the network address of
// the interface's first address, in host byte order; none when the host
// gives the interface no usable address.
std::vector<uint32_t> BroadcastValues(const std::vector<HostAddress>& addresses) {
  if (addresses.empty()) return {};
  uint32_t address = ntohl(addresses.front().address);
  uint32_t netmask = ntohl(addresses.front().netmask);
  uint32_t network = address & netmask;
  return {0xFFFFFFFFu, network | ~netmask, network};
}

bool Equals(const char* a, const char* b) { return a != nullptr && b != nullptr && strcmp(a, b) == 0; }

Interface& FamilyMember(const TList_Cell<Entity>* cell) { return *static_cast<Interface*>(cell->Data()); }

// A service that a split made is kept by the compile list from then on; a
// half that is the rule's own service (or an equal one) has an owner already.
void KeepSplitService(Service* half, const Service* original, const Registry& registry) {
  if (half == nullptr || half == original) return;
  if (original != nullptr && half->Equal(*original)) return;
  registry.ServicesCompile().Append(*half);
}

// Whatever kind of key management a block stands for, the screen can't
// encrypt or decrypt traffic that never passes through it, so every rule
// with a block counts, not only SKIP rules: the choice of key management
// then doesn't change which rules an interface keeps.
bool Encrypts(const Rule& rule) {
  return rule.DecryptionParameters() != nullptr || rule.EncryptionParameters() != nullptr;
}

}  // namespace

Interface::Interface(const char* name, const char* protected_name, Interface_Type type, Log_Type log,
                     SNMP_Type snmp, ICMP_Type icmp, const char* screen, const char* comment, int strict,
                     const char* overlap_name)
    : Entity(name, screen, comment, 0),
      type_(type),
      log_(log),
      snmp_(snmp),
      icmp_(icmp),
      strict_(strict),
      protected_(NewEmptyAddress(protected_name)),
      interface_(NewEmptyAddress("interface")),
      other_(NewEmptyAddress("Other")),
      overlap_(overlap_name != nullptr ? NewEmptyAddress(overlap_name) : nullptr),
      rules_(new TList<Entity>) {}

Interface::Interface(const char* name, const char* comment, const Address* protected_address,
                     const Address* interface_address, int strict, const Address* overlap)
    : Entity(name, nullptr, comment, 0),
      type_(INTERFACE_GWY),
      log_(LOG_NONE),
      snmp_(SNMP_NONE),
      icmp_(ICMP_NONE),
      strict_(strict),
      protected_(CopyOrEmpty(protected_address, Name())),
      interface_(CopyOrEmpty(interface_address, Name())),
      other_(NewEmptyAddress("Other")),
      overlap_(overlap != nullptr ? new Address(*overlap) : nullptr),
      rules_(new TList<Entity>) {}

Interface::~Interface() {
  DeleteRules();
  delete protected_;
  delete interface_;
  delete other_;
  delete overlap_;
}

void Interface::DeleteRules() {
  rules_->Delete_Data();
  delete rules_;
}

void Interface::Mark() {
  Mark_List(*rules_);
  protected_->Used(1);
  protected_->Mark();
}

void Interface::CleanUp() {
  unique_id_ = kNoUniqueId;
  DeleteRules();
  rules_ = new TList<Entity>;
}

int Interface::ResolveAddress(Address** address, TList<Entity>& list, std::ostream& out) {
  Entity* found = (*address)->FindSelf(list, 1);
  if (found == nullptr) {
    NotDefined(out, (*address)->Name(), "ADDRESS");
    return 1;
  }
  if (found != *address) {
    Address* copy = new Address(*static_cast<Address*>(found));
    delete *address;
    *address = copy;
  }
  return 0;
}

int Interface::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_ADDRESS) return 0;
  int errors = ResolveAddress(&protected_, list, out);
  if (overlap_ != nullptr) errors += ResolveAddress(&overlap_, list, out);
  return errors;
}

int Interface::Refer(Config_Objects kind, const char* name, int print) const {
  bool refers = (kind == CO_ADDRESS && Equals(protected_->Name(), name)) ||
                (kind == CO_SCREEN && Equals(Screen(), name));
  if (!refers) return 0;
  if (print) {
    if (Screen() != nullptr) std::cout << "SCREEN \"" << Screen() << "\" ";
    std::cout << "INTERFACE \"" << Name() << '"' << std::endl;
  }
  return 1;
}

void Interface::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_SCREEN) Entity::RenameReference(kind, old_name, new_name);
  if (kind == CO_ADDRESS && Equals(protected_->Name(), old_name)) protected_->Name(new_name);
}

bool Interface::TypeWordMatches(const char* word) const {
  switch (type_) {
    case INTERFACE_ADMIN: return strcmp(word, "ADMIN") == 0;
    case INTERFACE_DISABLED: return strcmp(word, "DISABLED") == 0;
    case INTERFACE_GWY: return strcmp(word, "GWY") == 0 || strcasecmp(word, "ROUTING") == 0;
    case INTERFACE_HA: return strcmp(word, "HA") == 0;
    case INTERFACE_CLK: return strcmp(word, "CLK") == 0 || strcasecmp(word, "STEALTH") == 0;
  }
  return false;
}

int Interface::Match(const char* screen, const char* name, const char* type, int exact) const {
  if (type != nullptr && !TypeWordMatches(type)) return 0;
  return Entity::Match(screen, name, type, exact);
}

void Interface::IncludeHost(Address& address, uint32_t value) {
  address.Include(Range(value, value, RT_ADDRESS, RS_ADDRESSES));
}

void Interface::IncludeMulticast(Address& address) {
  address.Include(Range(kMulticastStart, kMulticastEnd, RT_ADDRESS, RS_ADDRESSES));
}

void Interface::ResetInterfaceAddress() {
  delete interface_;
  interface_ = NewEmptyAddress("interface");
}

void Interface::SetAddresses(const Ferrowall&) {
  ResetInterfaceAddress();
  std::vector<HostAddress> addresses = Host::Current().InterfaceAddresses(Name());
  Address& family_set = type_ == INTERFACE_ADMIN ? BroadcastSet(FAMILY_ADMIN) : BroadcastSet(FAMILY_ROUTING);
  for (uint32_t value : BroadcastValues(addresses)) IncludeHost(family_set, value);
  for (const HostAddress& address : addresses) IncludeHost(*interface_, ntohl(address.address));
  IncludeHost(family_set, 0);
  IncludeHost(family_set, 0xFFFFFFFFu);
  IncludeMulticast(BroadcastSet(FAMILY_STEALTH));
  IncludeMulticast(family_set);
}

uint32_t Interface::UniqueID() {
  Family family = FamilyOf(type_);
  if (unique_id_ == kNoUniqueId && family != FAMILY_NONE) unique_id_ = unique_id_counter[family]++;
  return unique_id_;
}

void Interface::ResetUniqueId() {
  for (uint32_t& counter : unique_id_counter) counter = 0;
}

void Interface::IncludeOthers(const TList<Entity>& list, Address& other, Address& shared_hosts) const {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    const Interface& neighbour = *static_cast<const Interface*>(cell->Data());
    if (&neighbour == this) continue;
    if (overlap_ == nullptr) {
      other.Include(*neighbour.protected_);
      continue;
    }
    // Addresses shared with the neighbour aren't foreign, but the
    // neighbour's own hosts inside the shared part still are.
    Address unshared(*neighbour.protected_);
    unshared.Exclude(*overlap_);
    other.Include(unshared);
    Address* inside = neighbour.interface_->Intersection(*overlap_);
    shared_hosts.Include(*inside);
    if (inside != neighbour.interface_ && inside != overlap_) delete inside;
  }
}

void Interface::OtherAddress(const TList<Entity>& list) {
  delete other_;
  other_ = NewEmptyAddress("Other");
  if (strict_) {
    other_->Include(Range(0, 0xFFFFFFFFu, RT_ADDRESS, RS_ADDRESSES));
    other_->Exclude(*protected_);
  }
  Address shared_hosts("localhost_doh", nullptr, nullptr, ADDRESS_SINGLE);
  IncludeOthers(list, *other_, shared_hosts);
  other_->Exclude(shared_hosts);
}

Address& Interface::BroadcastAddress() const {
  switch (type_) {
    case INTERFACE_CLK: return BroadcastSet(FAMILY_STEALTH);
    case INTERFACE_ADMIN: return BroadcastSet(FAMILY_ADMIN);
    default: return BroadcastSet(FAMILY_ROUTING);
  }
}

void Interface::ResetBroadcastAddresses() {
  for (Address*& set : broadcast_sets) {
    delete set;
    set = nullptr;
  }
  for (int family = FAMILY_ADMIN; family < FAMILY_NONE; ++family) BroadcastSet(static_cast<Family>(family));
}

Address& Interface::BroadcastAddressAdmin() { return BroadcastSet(FAMILY_ADMIN); }

Address& Interface::BroadcastAddressGWY() { return BroadcastSet(FAMILY_ROUTING); }

Address& Interface::BroadcastAddressCLK() { return BroadcastSet(FAMILY_STEALTH); }

void Interface::Add(const Rule& rule, const Registry& registry, const TList<Entity>& family, Address& unknown) {
  AddInternal(rule, registry, family, unknown);
}

void Interface::AddInternal(const Rule& rule, const Registry& registry, const TList<Entity>& family,
                            Address& unknown) {
  if (!protected_->Intersects(rule.Source()) && (strict_ || !rule.Source().Intersects(unknown))) return;
  Rule copy(rule);
  if (!NarrowSource(copy)) return;
  Rule* plain = nullptr;
  Rule* broadcast = nullptr;
  copy.BroadcastSplit(&plain, &broadcast);
  if (plain != nullptr) {
    AddPlainPieces(*plain, copy, registry, family, unknown);
    if (plain != &copy) delete plain;
  }
  if (broadcast != nullptr) AddBroadcast(*broadcast, rule, copy, registry, family, unknown);
}

// A strict interface lets in only what it protects; any other lets in all
// but what lies behind the other members of its family.
bool Interface::NarrowSource(Rule& rule) const {
  Address* narrowed = strict_ ? protected_->Intersection(rule.Source()) : rule.Source().Exclusion(*other_);
  if (narrowed == nullptr) return false;
  if (narrowed == &rule.Source()) return true;
  rule.Source(*narrowed);
  if (narrowed != protected_) delete narrowed;
  return true;
}

// The pieces stand in family order; a piece whose destination is all
// broadcast addresses ends the walk, and the pieces behind it go too.
void Interface::AddPlainPieces(Rule& plain, const Rule& copy, const Registry& registry, const TList<Entity>& family,
                               Address& unknown) {
  TList<Entity>* pieces = plain.PartitionByInterface(registry, *this, family, unknown);
  if (pieces == nullptr) return;
  bool walking = true;
  for (TList_Cell<Entity>* cell = pieces->Head(); cell != nullptr; cell = cell->Next()) {
    Rule* piece = static_cast<Rule*>(cell->Data());
    Address* destination = walking ? piece->Destination().Exclusion(BroadcastAddress()) : nullptr;
    if (destination == nullptr) {
      walking = false;
      delete piece;
      continue;
    }
    if (destination != &piece->Destination()) {
      piece->Destination(*destination);
      delete destination;
    }
    rules_->Append(*piece);
  }
  delete pieces;
  if (&plain != &copy) KeepSplitService(plain.SvcResolved(), copy.SvcResolved(), registry);
}

// The broadcast part goes out by every member whose side the written
// destination touches, and it is addressed to the family's broadcast set.
void Interface::AddBroadcast(Rule& broadcast, const Rule& original, const Rule& copy, const Registry& registry,
                             const TList<Entity>& family, Address& unknown) {
  const Address& destination = original.Destination();
  bool reaches_unknown = destination.Intersects(unknown);
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& member = FamilyMember(cell);
    if (&member == this) continue;
    if (member.protected_->Intersects(destination) || (reaches_unknown && !member.strict_))
      broadcast.SetInterface(static_cast<int>(member.UniqueID()));
  }
  rules_->Append(broadcast);
  KeepSplitService(broadcast.SvcResolved(), copy.SvcResolved(), registry);
  broadcast.Destination(BroadcastAddress());
}

void Interface::RemoveIntraInterfaceRules() { RemoveIntraInterfaceRules(*rules_); }

void Interface::RemoveIntraInterfaceRules(TList<Entity>& rules) {
  TList_Cell<Entity>* next = nullptr;
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = next) {
    next = cell->Next();
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    if (Encrypts(rule) && rule.Destination().SubsetOf(*protected_)) rules.Delete_Data_Cell(cell);
  }
}

bool Interface::Intersects(const Interface& other) const { return protected_->Intersects(*other.protected_); }

bool Interface::Intersects(const Address& address) const { return protected_->Intersects(address); }

Address* Interface::Intersection(Address& address) { return protected_->Intersection(address); }

bool Interface::Equal(const Address& address) const { return protected_->Equal(address); }

std::ostream& Interface::PrintLog(std::ostream& out, Log_Type log) {
  switch (log) {
    case LOG_SUMMARY: return out << "LOG SUMMARY ";
    case LOG_DETAIL: return out << "LOG DETAIL ";
    default: return out << ' ';
  }
}

std::ostream& Interface::PrintSNMP(std::ostream& out, SNMP_Type snmp) {
  return snmp == SNMP_TRAP ? out << "SNMP " : out;
}

std::ostream& Interface::PrintICMP(std::ostream& out, ICMP_Type icmp) {
  static const char* const kWords[] = {"NET_UNREACHABLE", "HOST_UNREACHABLE", "PORT_UNREACHABLE",
                                       "NET_FORBIDDEN", "HOST_FORBIDDEN"};
  if (icmp < ICMP_NET_UNREACHABLE || icmp > ICMP_HOST_FORBIDDEN) return out << ' ';
  return out << "ICMP " << kWords[icmp - ICMP_NET_UNREACHABLE] << ' ';
}

std::ostream& Interface::EnumerateHead(std::ostream& out, Enumerate_Type type) const {
  static const char* const kKinds[] = {"ADMIN", "DISABLED", "ROUTING", "HA", "STEALTH"};
  if (type != ENUM_NAME && Screen() != nullptr) out << "SCREEN \"" << Screen() << "\" ";
  return out << '"' << Name() << "\" " << kKinds[type_];
}

std::ostream& Interface::EnumerateDetails(std::ostream& out) const {
  out << " \"" << protected_->Name() << "\" " << (strict_ ? " COMPLETE " : " INCOMPLETE ");
  if (overlap_ != nullptr) out << " OVERLAP \"" << overlap_->Name() << "\" ";
  PrintLog(out, log_);
  PrintSNMP(out, snmp_);
  return PrintICMP(out, icmp_);
}

std::ostream& Interface::EnumerateComment(std::ostream& out) const {
  if (Description() != nullptr) out << " COMMENT \"" << Description() << '"';
  return out;
}

std::ostream& Interface::Enumerate(std::ostream& out, Enumerate_Type type) const {
  EnumerateHead(out, type);
  if (type != ENUM_NAME) EnumerateComment(EnumerateDetails(out));
  return out << '\n';
}

std::ostream& Interface::PrintHead(std::ostream& out, const char* kind) const {
  return out << '"' << Name() << "\"\tINTERFACE\t" << kind << "\t\"" << protected_->Name() << "\"\t";
}

std::ostream& Interface::PrintOptions(std::ostream& out) const {
  PrintLog(out, log_) << '\t';
  PrintSNMP(out, snmp_) << '\t';
  return PrintICMP(out, icmp_);
}

std::ostream& Interface::PrintTail(std::ostream& out) const {
  if (Screen() != nullptr) out << "\tSCREEN\t\"" << Screen() << '"';
  if (Description() != nullptr) out << "\tCOMMENT\t\"" << Description() << '"';
  return out;
}

std::ostream& Interface::Print(std::ostream& out) const {
  switch (type_) {
    case INTERFACE_DISABLED:
      return PrintTail(PrintHead(out, "DISABLED"));
    case INTERFACE_ADMIN:
      PrintHead(out, "ADMIN");
      break;
    case INTERFACE_HA:
      PrintHead(out, "HA");
      break;
    default:
      PrintHead(out, "GWY");
      if (strict_) out << " COMPLETE ";
      if (overlap_ != nullptr) out << '"' << overlap_->Name() << "\" ";
      break;
  }
  return PrintTail(PrintOptions(out));
}
