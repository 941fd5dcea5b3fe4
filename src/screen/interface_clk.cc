#include "screen/interface_clk.h"

#include "model/address.h"
#include "model/range.h"
#include "screen/ferrowall.h"

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
