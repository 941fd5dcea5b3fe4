#include "screen/interface_clk.h"

#include <cstring>

#include "model/address.h"
#include "model/range.h"
#include "model/registry.h"
#include "policy/rule_broadcast.h"
#include "screen/ferrowall.h"

namespace {

bool same_name(const Entity& a, const Entity& b) { return strcmp(a.Name(), b.Name()) == 0; }

Interface& member_of(const TList_Cell<Entity>* cell) { return *static_cast<Interface*>(cell->Data()); }

}  // namespace

InterfaceCLK::InterfaceCLK(const char* name, const char* protected_name, Log_Type log, SNMP_Type snmp,
                           ICMP_Type icmp, TList<unsigned>* routers, const char* screen,
                           const char* comment)
    : Interface(name, protected_name, INTERFACE_CLK, log, snmp, icmp, screen, comment, 1, nullptr),
      routers_(routers),
      ether_rules_(new TList<Entity>) {}

InterfaceCLK::~InterfaceCLK() {
  if (routers_ != nullptr) routers_->Delete_Data();
  delete routers_;
  DeleteEtherRules();
}

void InterfaceCLK::DeleteEtherRules() {
  ether_rules_->Delete_Data();
  delete ether_rules_;
}

void InterfaceCLK::Mark() {
  Interface::Mark();
  Mark_List(*ether_rules_);
}

void InterfaceCLK::RemoveIntraInterfaceRules() {
  Interface::RemoveIntraInterfaceRules();
  Interface::RemoveIntraInterfaceRules(*ether_rules_);
}

void InterfaceCLK::CleanUp() {
  Interface::CleanUp();
  DeleteEtherRules();
  ether_rules_ = new TList<Entity>;
}

void InterfaceCLK::SetAddresses(const Ferrowall& screen) {
  ResetInterfaceAddress();
  Address& broadcast = BroadcastAddressCLK();
  const Range* network = screen.CLKNetwork();
  if (network != nullptr) {
    IncludeHost(*InterfaceAddress(), network->Start());
    IncludeHost(broadcast, network->Start());
    IncludeHost(broadcast, network->End());
  }
  IncludeHost(broadcast, 0);
  IncludeHost(broadcast, 0xFFFFFFFFu);
  IncludeMulticast(broadcast);
}

void InterfaceCLK::AddEther(const Rule& rule, const Registry& registry, const TList<Entity>& family) {
  if (!TakesEther(rule)) return;
  RuleBroadcast* copy = new RuleBroadcast(rule);
  if (!copy->Source().Equal(*ProtectedAddress())) copy->Source(*ProtectedAddress());
  TagEtherExits(*copy, registry, family);
  ether_rules_->Append(*copy);
}

// A rule written from this interface's address is taken by name even when
// that address is empty, unless it also goes back to the same address.
bool InterfaceCLK::TakesEther(const Rule& rule) const {
  const Address& side = *ProtectedAddress();
  bool written_from_here = same_name(rule.Source(), side) && !same_name(rule.Destination(), side);
  return written_from_here || rule.Source().Intersects(side);
}

// A destination that names members' addresses is meant for exactly those
// members; only a destination named otherwise is matched by its ranges.
void InterfaceCLK::TagEtherExits(Rule& rule, const Registry& registry, const TList<Entity>& family) {
  const Address& destination = rule.Destination();
  bool everywhere = registry.Star() != nullptr && same_name(destination, *registry.Star());
  bool by_name = false;
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr && !by_name; cell = cell->Next())
    by_name = same_name(*member_of(cell).ProtectedAddress(), destination);
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& member = member_of(cell);
    const Address& side = *member.ProtectedAddress();
    bool exit = everywhere || (by_name ? same_name(side, destination) : side.Intersects(destination));
    if (exit) rule.SetInterface(member.UniqueID());
  }
}

std::ostream& InterfaceCLK::PrintRouters(std::ostream& out, const char* word) const {
  if (routers_ == nullptr) return out;
  for (TList_Cell<unsigned>* cell = routers_->Head(); cell != nullptr; cell = cell->Next())
    out << word << dotted_address(*cell->Data()) << ' ';
  return out;
}

std::ostream& InterfaceCLK::Enumerate(std::ostream& out, Enumerate_Type type) const {
  EnumerateHead(out, type);
  if (type != ENUM_NAME) EnumerateComment(PrintRouters(EnumerateDetails(out), "ROUTER "));
  return out << '\n';
}

std::ostream& InterfaceCLK::Print(std::ostream& out) const {
  PrintOptions(PrintHead(out, "CLK"));
  if (routers_ != nullptr && !routers_->Empty()) PrintRouters(out << ' ', "");
  return PrintTail(out);
}
