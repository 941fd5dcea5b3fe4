// A registry whose interfaces are set up by hand the way its verification
// leaves them (private protected addresses, other addresses, the unknown
// and broadcast sets of each family, ids drawn in list order), and the
// helpers that read back what distribution made of a rule.
#ifndef FW_TESTS_SCREEN_DISTRIBUTION_FIXTURE_H
#define FW_TESTS_SCREEN_DISTRIBUTION_FIXTURE_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "model/address.h"
#include "model/registry.h"
#include "policy/rule.h"
#include "policy/rule_fixture.h"
#include "screen/interface.h"
#include "screen/interface_clk.h"

using Ranges = std::vector<std::string>;
using Tags = std::vector<int>;

inline uint32_t ip(const char* text) {
  uint32_t value = 0;
  EXPECT_EQ(parse_ipv4addr(text, &value), 0) << text;
  return value;
}

inline Range span(const char* start, const char* end) { return Range(ip(start), ip(end), RT_ADDRESS, RS_ADDRESSES); }

// The ranges in ascending order, "a-b" each, or "a" for a single address.
inline Ranges ranges_of(const Address& address) {
  Ranges texts;
  TList<Range>* ordered = address.CreateOrderedRangeList();
  for (TList_Cell<Range>* cell = ordered->Head(); cell != nullptr; cell = cell->Next()) {
    const Range& range = *cell->Data();
    std::string text = dotted_address(range.Start());
    if (range.End() != range.Start()) text += "-" + dotted_address(range.End());
    texts.push_back(text);
  }
  delete ordered;
  return texts;
}

inline std::unique_ptr<Address> address_of(const char* name, std::initializer_list<Range> ranges) {
  auto address = std::make_unique<Address>(name, nullptr, nullptr, ADDRESS_SINGLE);
  for (const Range& range : ranges) address->Include(range);
  return address;
}

// A single host.
inline std::unique_ptr<Address> one(const char* name, const char* host) { return address_of(name, {span(host, host)}); }

const Range kEverything(0, 0xFFFFFFFFu, RT_ADDRESS, RS_ADDRESSES);

inline std::vector<Rule*> rules_of(const TList<Entity>& list) {
  std::vector<Rule*> rules;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    rules.push_back(static_cast<Rule*>(cell->Data()));
  return rules;
}

inline std::vector<Rule*> rules_of(const Interface& interface) { return rules_of(interface.Rules()); }

inline std::vector<Interface*> members_of(const TList<Entity>& family) {
  std::vector<Interface*> members;
  for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next())
    members.push_back(static_cast<Interface*>(cell->Data()));
  return members;
}

inline Tags tags_of(const Rule& rule) { return rule.Interfaces(); }

class DistributionTest : public testing::Test {
 protected:
  void SetUp() override {
    Interface::ResetUniqueId();
    Interface::ResetBroadcastAddresses();
  }

  // An interface of `type` that protects `ranges`, kept by the registry
  // together with the address "<name>-net" it resolves from.
  Interface& AddInterface(const char* name, Interface_Type type, std::initializer_list<Range> ranges,
                          int strict = 0) {
    std::string network = std::string(name) + "-net";
    registry.Addresses(*address_of(network.c_str(), ranges).release());
    Interface* interface =
        type == INTERFACE_CLK
            ? new InterfaceCLK(name, network.c_str(), LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, nullptr, nullptr)
            : new Interface(name, network.c_str(), type, LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, nullptr, strict,
                            nullptr);
    std::ostringstream errors;
    EXPECT_EQ(interface->Resolve(CO_ADDRESS, registry.Addresses(), errors), 0) << errors.str();
    registry.InterfaceList(type).Append(*interface);
    return *interface;
  }

  // The screen's own hosts on the routing side: taken out of every routing
  // interface and protected by the reverse interface at the list's end.
  Interface& AddRoutingReverse(std::initializer_list<const char*> hosts) {
    auto own = address_of("Ferrowall", {});
    for (const char* host : hosts) own->Include(span(host, host));
    for (Interface* member : members_of(registry.GWYInterfaces())) member->ProtectedAddress()->Exclude(*own);
    Interface* reverse = new Interface("Ferrowall", "Reverse Interface", own.get(), nullptr, 0, nullptr);
    registry.GWYInterfaces().Append(*reverse);
    registry.ReverseGWYInterface(reverse);
    return *reverse;
  }

  // Other addresses, unknown sets and ids of all three families.
  void Seal() {
    Seal(registry.AdminInterfaces(), *registry.UnknownAdminAddresses());
    Seal(registry.GWYInterfaces(), *registry.UnknownGWYAddresses());
    Seal(registry.CLKInterfaces(), *registry.UnknownCLKAddresses());
  }

  static void Seal(TList<Entity>& family, Address& unknown) {
    if (family.Empty()) return;
    unknown.Include(Range(0, 0xFFFFFFFFu, RT_ADDRESS, RS_ADDRESSES));
    for (TList_Cell<Entity>* cell = family.Head(); cell != nullptr; cell = cell->Next()) {
      Interface& member = *static_cast<Interface*>(cell->Data());
      unknown.Exclude(*member.ProtectedAddress());
      member.OtherAddress(family);
      member.UniqueID();
    }
  }

  // A service without broadcast sets.
  std::unique_ptr<Service> Plain(const char* name = "www") {
    return service_of(name, {params_set(engines.tcp, {0}, {{80, 80}})});
  }

  // A rule of the policy, kept by the fixture.
  Rule& Written(Service& service, std::unique_ptr<Address> source, std::unique_ptr<Address> destination) {
    rules.push_back(derived_rule(service, *source, *destination));
    return *rules.back();
  }

  // What Registry::AddRules does for the routing family.
  void AddToRouting(const Rule& rule) {
    for (Interface* member : members_of(registry.GWYInterfaces()))
      member->Add(rule, registry, registry.GWYInterfaces(), *registry.UnknownGWYAddresses());
  }

  Registry registry;
  Engines engines;
  std::vector<std::unique_ptr<Rule>> rules;
};

#endif
