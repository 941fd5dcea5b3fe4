// The compile stages of the Registry between policy verification and
// output: rules to interfaces, then the clean-up of the interface lists.

#include <cstring>
#include <iostream>

#include "model/address.h"
#include "model/ordered_entity_list.h"
#include "model/registry.h"
#include "policy/rule.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "screen/interface_clk.h"
#include "services/service.h"
#include "support/fwi18n.h"

namespace {

const int kRegistrySet = 48;

Interface& InterfaceOf(const TList_Cell<Entity>* cell) { return *static_cast<Interface*>(cell->Data()); }

// Hands `rule` to each member of `family`; with `skip_ha` the HA members
// are passed over.
void AddToFamily(const Rule& rule, const Registry& registry, const TList<Entity>& family, Address& unknown,
                 bool skip_ha) {
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& interface = InterfaceOf(cell);
    if (skip_ha && interface.Type() == INTERFACE_HA) continue;
    interface.Add(rule, registry, family, unknown);
  }
}

// The last HA interface among the routing interfaces, or null.
Service* CompileService(const Registry& registry, const char* name) {
  Entity probe(name, nullptr, nullptr, 0);
  return dynamic_cast<Service*>(probe.FindSelf(registry.ServicesCompile(), 0));
}

Rule* HARule(Service& service, const Address& source, const Address& destination) {
  return new Rule(service, source, destination, nullptr, nullptr, nullptr, nullptr, ACTION_ALLOW, LOG_NONE,
                  SNMP_NONE, ICMP_NONE, 1, nullptr, nullptr, nullptr, nullptr);
}

void ClearMarks(const TList<Entity>& list) {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) cell->Data()->Used(0);
}

}  // namespace

void Registry::AddAdminRules(TList<Entity>& rules) {
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next()) {
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    AddToFamily(rule, *this, *admin_interfaces_, *unknown_admin_, false);
    AddToFamily(rule, *this, *gwy_interfaces_, *unknown_gwy_, true);
  }
}

// The screen itself is the reverse interface of the admin family, so a rule
// towards "localhost" is the only policy rule an admin interface needs.
void Registry::AddRules(OrderedEntityList& rules) {
  for (TList_Cell<Entity>* cell = rules.Items().Head(); cell != nullptr; cell = cell->Next()) {
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    AddToFamily(rule, *this, *gwy_interfaces_, *unknown_gwy_, false);
    AddToFamily(rule, *this, *clk_interfaces_, *unknown_clk_, false);
    if (strcmp(rule.Destination().Name(), "localhost") == 0)
      AddToFamily(rule, *this, *admin_interfaces_, *unknown_admin_, false);
  }
}

void Registry::AddEtherRules(const TList<Entity>* rules) {
  if (rules == nullptr) return;
  for (TList_Cell<Entity>* cell = rules->Head(); cell != nullptr; cell = cell->Next()) {
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    for (TList_Cell<Entity>* member = clk_interfaces_->Head(); member != nullptr; member = member->Next())
      static_cast<InterfaceCLK*>(member->Data())->AddEther(rule, *this, *clk_interfaces_);
  }
}

Interface* Registry::LastHAInterface() const {
  Interface* found = nullptr;
  for (TList_Cell<Entity>* cell = gwy_interfaces_->Head(); cell != nullptr; cell = cell->Next())
    if (InterfaceOf(cell).Type() == INTERFACE_HA) found = &InterfaceOf(cell);
  return found;
}

int Registry::AddHARules(Ferrowall& screen) {
  Interface* ha_interface = LastHAInterface();
  if (ha_interface == nullptr) return 0;
  Service* administration = CompileService(*this, "HA administration");
  Service* heartbeat = CompileService(*this, "HA heartbeat");
  if (administration == nullptr || heartbeat == nullptr) {
    std::cerr << fwi18n_text(kRegistrySet, 40, "Error: Could not find HA Service") << std::endl;
    return 1;
  }
  const Address* hosts = screen.HA_HOSTS();
  if (hosts == nullptr) {
    std::cerr << fwi18n_text(kRegistrySet, 41, "Error: HA cluster missing HA IP Addresses") << std::endl;
    return 1;
  }
  // A secondary without a master never gets this far (its virtual name
  // can't be figured); should one, its own HA address is the best guess.
  const Ferrowall* primary = screen.HA_Primary() || screen.MasterResolved() == nullptr ? &screen
                                                                                      : screen.MasterResolved();
  Address primary_address("HA primary", primary->HA_IP(), nullptr, nullptr);
  Address network("HA network!", nullptr, nullptr, ADDRESS_GROUP);
  const Entity* interface_network = ha_interface->ProtectedAddress()->FindSelf(*addresses_, 0);
  if (interface_network != nullptr) network.Include(*static_cast<const Address*>(interface_network));
  network.Include(*hosts);
  if (!primary_address.SubsetOf(network) || !hosts->SubsetOf(network)) {
    std::cerr << fwi18n_text(kRegistrySet, 42, "Error: HA IP address is not on HA interface") << ' '
              << network.Name() << '.' << std::endl;
    return 1;
  }
  Rule* administer = HARule(*administration, primary_address, network);
  Rule* beat = HARule(*heartbeat, *hosts, *hosts);
  for (Interface* interface : {ha_interface, reverse_gwy_}) {
    if (interface == nullptr) continue;
    interface->Add(*administer, *this, *gwy_interfaces_, *unknown_gwy_);
    interface->Add(*beat, *this, *gwy_interfaces_, *unknown_gwy_);
  }
  // The copies on the interfaces lead back to these two as their origin, so
  // they live as long as the store.
  ha_rules_->Append(*administer);
  ha_rules_->Append(*beat);
  return 0;
}

// Disabled interfaces carry no rules.
void Registry::OptimizeRules() {
  for (TList<Entity>* family : {admin_interfaces_, gwy_interfaces_, clk_interfaces_}) OptimizeRules(*family);
}

void Registry::OptimizeRules(TList<Entity>& interfaces) {
  for (TList_Cell<Entity>* cell = interfaces.Head(); cell != nullptr; cell = cell->Next())
    InterfaceOf(cell).RemoveIntraInterfaceRules();
}

void Registry::OrderServicesByStateEngine() {
  for (TList_Cell<Entity>* cell = services_compile_->Head(); cell != nullptr; cell = cell->Next())
    static_cast<Service*>(cell->Data())->OrderByStateEngine(*state_engines_);
}

std::vector<TList<Entity>*> Registry::MarkedLists() const {
  return {services_compile_, services_, addresses_, certificates_, keys_};
}

void Registry::UnMark() {
  for (TList<Entity>* list : MarkedLists()) ClearMarks(*list);
}

std::vector<Entity*> Registry::Unmarked() const {
  std::vector<Entity*> unmarked;
  for (TList<Entity>* list : MarkedLists())
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next())
      if (!cell->Data()->Used()) unmarked.push_back(cell->Data());
  return unmarked;
}
