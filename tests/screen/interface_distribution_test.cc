#include <gtest/gtest.h>

#include "crypto/ipsec_man_parameters.h"
#include "crypto/security_parameters_man.h"
#include "policy/rule_broadcast.h"
#include "screen/distribution_fixture.h"
#include "services/service.h"

namespace {

// Routing interfaces A (strict, 10.0.0.0/24) and B (10.0.1.0/24), the screen
// on 10.0.0.1 and 10.0.1.1 behind the reverse interface R, and the directed
// broadcasts of both networks in the family's broadcast set.
class RoutingDistributionTest : public DistributionTest {
 protected:
  void SetUp() override {
    DistributionTest::SetUp();
    a = &AddInterface("A", INTERFACE_GWY, {span("10.0.0.0", "10.0.0.255")}, 1);
    b = &AddInterface("B", INTERFACE_GWY, {span("10.0.1.0", "10.0.1.255")});
    r = &AddRoutingReverse({"10.0.0.1", "10.0.1.1"});
    Seal();
    for (const char* broadcast : {"10.0.0.255", "10.0.1.255"})
      Interface::BroadcastAddressGWY().Include(span(broadcast, broadcast));
  }

  Interface* a = nullptr;
  Interface* b = nullptr;
  Interface* r = nullptr;
  std::unique_ptr<Service> www = Plain();
};

TEST_F(RoutingDistributionTest, EveryEntryNarrowsTheSourceAndSendsTheRuleOutByB) {
  Rule& rule = Written(*www, address_of("*", {kEverything}), one("b5", "10.0.1.5"));
  AddToRouting(rule);

  const Ranges expected_sources[] = {
      {"10.0.0.0", "10.0.0.2-10.0.0.255"},
      {"0.0.0.0-9.255.255.255", "10.0.1.0", "10.0.1.2-255.255.255.255"},
      {"0.0.0.0-9.255.255.255", "10.0.0.1", "10.0.1.1", "10.0.2.0-255.255.255.255"}};
  int entry = 0;
  for (Interface* interface : {a, b, r}) {
    std::vector<Rule*> copies = rules_of(*interface);
    ASSERT_EQ(copies.size(), 1u) << interface->Name();
    EXPECT_EQ(ranges_of(copies[0]->Source()), expected_sources[entry++]) << interface->Name();
    EXPECT_EQ(ranges_of(copies[0]->Destination()), Ranges({"10.0.1.5"}));
    EXPECT_EQ(tags_of(*copies[0]), Tags({1}));
  }
}

TEST_F(RoutingDistributionTest, StrictSourceIsAPrivateCopyOfTheProtectedAddress) {
  AddToRouting(Written(*www, address_of("*", {kEverything}), one("b5", "10.0.1.5")));
  Rule& copy = *rules_of(*a)[0];
  EXPECT_NE(&copy.Source(), a->ProtectedAddress());
  EXPECT_STREQ(copy.Source().Name(), "A-net");
  EXPECT_EQ(ranges_of(*a->ProtectedAddress()), ranges_of(copy.Source()));
}

TEST_F(RoutingDistributionTest, UnknownSourceEntersOnlyByInterfacesThatAreNotStrict) {
  AddToRouting(Written(*www, one("far", "192.168.0.1"), one("a5", "10.0.0.5")));
  EXPECT_TRUE(a->Rules().Empty());
  ASSERT_EQ(rules_of(*b).size(), 1u);
  ASSERT_EQ(rules_of(*r).size(), 1u);
  EXPECT_EQ(ranges_of(rules_of(*b)[0]->Source()), Ranges({"192.168.0.1"}));
  EXPECT_EQ(tags_of(*rules_of(*b)[0]), Tags({0}));
}

TEST_F(RoutingDistributionTest, DestinationIsCutInFamilyOrderWithTheUnknownPieceLast) {
  AddToRouting(Written(*www, one("b9", "10.0.1.9"),
                       address_of("spread", {span("10.0.0.5", "10.0.1.5"), span("192.168.0.1", "192.168.0.1")})));
  EXPECT_TRUE(a->Rules().Empty());
  EXPECT_TRUE(r->Rules().Empty());

  std::vector<Rule*> pieces = rules_of(*b);
  ASSERT_EQ(pieces.size(), 4u);
  const Ranges destinations[] = {{"10.0.0.5-10.0.0.254"}, {"10.0.1.0", "10.0.1.2-10.0.1.5"}, {"10.0.1.1"},
                                 {"192.168.0.1"}};
  // A strict interface is never an exit for unknown addresses.
  const Tags exits[] = {{0}, {1}, {2}, {1, 2}};
  for (size_t n = 0; n < pieces.size(); ++n) {
    EXPECT_EQ(ranges_of(pieces[n]->Destination()), destinations[n]) << n;
    EXPECT_EQ(tags_of(*pieces[n]), exits[n]) << n;
  }
}

TEST_F(RoutingDistributionTest, PieceOfBroadcastAddressesOnlyEndsTheWalk) {
  // A's piece is exactly the broadcast set, so neither it nor B's piece
  // behind it is kept.
  Rule& rule = Written(*www, one("b9", "10.0.1.9"),
                       address_of("mixed", {span("10.0.0.255", "10.0.0.255"), span("10.0.1.5", "10.0.1.5")}));
  Interface::ResetBroadcastAddresses();
  Interface::BroadcastAddressGWY().Include(span("10.0.0.255", "10.0.0.255"));
  AddToRouting(rule);
  EXPECT_TRUE(b->Rules().Empty());

  // A piece inside a larger broadcast set is no longer equal to it: it stays,
  // with nothing left of its destination.
  Interface::BroadcastAddressGWY().Include(span("10.0.1.255", "10.0.1.255"));
  AddToRouting(rule);
  std::vector<Rule*> pieces = rules_of(*b);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_TRUE(ranges_of(pieces[0]->Destination()).empty());
  EXPECT_EQ(ranges_of(pieces[1]->Destination()), Ranges({"10.0.1.5"}));
}

TEST_F(RoutingDistributionTest, BroadcastPartFollowsThePlainPiecesTaggedWithEveryExitTheDestinationTouches) {
  auto mixed = service_of("mix", {params_set(engines.tcp, {0}, {{80, 80}}),
                                  params_set(engines.udp, {}, {{137, 137}}, 1)});
  Rule& rule = Written(*mixed, one("b9", "10.0.1.9"), address_of("A side", {span("10.0.0.0", "10.0.0.255")}));
  AddToRouting(rule);

  std::vector<Rule*> copies = rules_of(*b);
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_EQ(tags_of(*copies[0]), Tags({0}));
  EXPECT_EQ(tags_of(*copies[1]), Tags({2}));
  EXPECT_EQ(dynamic_cast<RuleBroadcast*>(copies[0]), nullptr);
  RuleBroadcast* broadcast = dynamic_cast<RuleBroadcast*>(copies[2]);
  ASSERT_NE(broadcast, nullptr);
  EXPECT_STREQ(broadcast->SvcResolved()->Name(), "mix-Broadcast");
  EXPECT_EQ(tags_of(*broadcast), Tags({0, 2}));
  EXPECT_EQ(ranges_of(broadcast->Destination()), ranges_of(Interface::BroadcastAddressGWY()));

  const TList<Entity>& compiled = registry.ServicesCompile();
  ASSERT_EQ(compiled.Length(), 2) << "both halves, once for the one interface reached";
  EXPECT_EQ(compiled.Head()->Data(), copies[0]->SvcResolved());
  EXPECT_EQ(compiled.Tail()->Data(), broadcast->SvcResolved());
}

TEST_F(RoutingDistributionTest, BroadcastTowardsUnknownAddressesGoesOutByEveryInterfaceThatIsNotStrict) {
  auto netbios = service_of("netbios", {params_set(engines.udp, {}, {{137, 137}}, 1)});
  AddToRouting(Written(*netbios, one("a9", "10.0.0.9"), address_of("*", {kEverything})));
  ASSERT_EQ(rules_of(*a).size(), 1u);
  RuleBroadcast* broadcast = dynamic_cast<RuleBroadcast*>(rules_of(*a)[0]);
  ASSERT_NE(broadcast, nullptr);
  EXPECT_EQ(broadcast->SvcResolved(), netbios.get()) << "a broadcast-only service is not split";
  EXPECT_EQ(tags_of(*broadcast), Tags({1, 2}));
  EXPECT_TRUE(registry.ServicesCompile().Empty());
  EXPECT_EQ(broadcast->PartitionByInterface(registry, *a, registry.GWYInterfaces(),
                                            *registry.UnknownGWYAddresses()),
            nullptr);
}

TEST_F(DistributionTest, StrictInterfacesOnlyLetInWhatTheyProtect) {
  Interface& a = AddInterface("A", INTERFACE_GWY, {span("10.0.0.0", "10.0.0.255")}, 1);
  Interface& b = AddInterface("B", INTERFACE_GWY, {span("10.0.1.0", "10.0.1.255")}, 1);
  Seal();
  auto www = Plain();
  AddToRouting(Written(*www, one("a7", "10.0.0.7"), one("b9", "10.0.1.9")));
  ASSERT_EQ(rules_of(a).size(), 1u);
  EXPECT_EQ(tags_of(*rules_of(a)[0]), Tags({1}));
  EXPECT_TRUE(b.Rules().Empty());
}

TEST_F(DistributionTest, FamilyThatKnowsEverythingMakesNoUnknownPiece) {
  Interface& a = AddInterface("A", INTERFACE_GWY, {span("0.0.0.0", "127.255.255.255")}, 1);
  AddInterface("B", INTERFACE_GWY, {span("128.0.0.0", "255.255.255.255")});
  Seal();
  EXPECT_TRUE(registry.UnknownGWYAddresses()->Ranges().Empty());
  auto www = Plain();
  AddToRouting(Written(*www, address_of("*", {kEverything}), address_of("*", {kEverything})));
  std::vector<Rule*> pieces = rules_of(a);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(tags_of(*pieces[0]), Tags({0}));
  EXPECT_EQ(tags_of(*pieces[1]), Tags({1}));
}

TEST_F(DistributionTest, StealthInterfaceHasNoRuleBackToItself) {
  Interface& s1 = AddInterface("S1", INTERFACE_CLK, {span("10.1.0.0", "10.1.0.255")});
  Interface& s2 = AddInterface("S2", INTERFACE_CLK, {span("10.2.0.0", "10.2.0.255")});
  Seal();
  auto www = Plain();
  auto add = [&](const Rule& rule) {
    for (Interface* member : {&s1, &s2})
      member->Add(rule, registry, registry.CLKInterfaces(), *registry.UnknownCLKAddresses());
  };
  add(Written(*www, one("in", "10.1.0.5"), one("also in", "10.1.0.6")));
  EXPECT_TRUE(s1.Rules().Empty());
  EXPECT_TRUE(s2.Rules().Empty());

  // All stealth interfaces are strict, and the entry is left out: the
  // unknown piece goes nowhere, and is kept all the same.
  add(Written(*www, one("in", "10.1.0.5"), one("far", "192.168.1.1")));
  ASSERT_EQ(rules_of(s1).size(), 1u);
  EXPECT_TRUE(tags_of(*rules_of(s1)[0]).empty());
  EXPECT_EQ(ranges_of(rules_of(s1)[0]->Destination()), Ranges({"192.168.1.1"}));
}

// Ethernet rules are never cut: each stealth interface that the source
// comes from takes one copy from its whole side, tagged with every member
// the destination is meant for, by name first and by ranges otherwise.
TEST_F(DistributionTest, EtherRulesEnterByTheirSourceAndAreTaggedByTheirDestination) {
  std::vector<InterfaceCLK*> stealth;
  for (const char* name : {"S1", "S2", "S3"}) {
    std::string net = std::string("10.") + name[1] + ".0.";
    stealth.push_back(static_cast<InterfaceCLK*>(
        &AddInterface(name, INTERFACE_CLK, {span((net + "0").c_str(), (net + "255").c_str())})));
  }
  Seal();
  auto service = Plain("arp");
  TList<Entity> ether_rules;
  ether_rules.Append(Written(*service, address_of("*", {kEverything}), address_of("*", {kEverything})));
  ether_rules.Append(Written(*service, address_of("S1-net", {}), one("S2-net", "10.3.0.5")));
  ether_rules.Append(Written(*service, one("h", "10.2.0.7"), address_of("x", {span("10.1.0.9", "10.2.0.3")})));
  registry.AddEtherRules(&ether_rules);
  registry.AddEtherRules(nullptr);

  std::vector<Tags> expected_tags[] = {{{0, 1, 2}, {1}}, {{0, 1, 2}, {0, 1}}, {{0, 1, 2}}};
  for (size_t member = 0; member < stealth.size(); ++member) {
    std::vector<Rule*> copies = rules_of(stealth[member]->EtherRules());
    ASSERT_EQ(copies.size(), expected_tags[member].size()) << member;
    for (size_t i = 0; i < copies.size(); ++i) {
      EXPECT_NE(dynamic_cast<RuleBroadcast*>(copies[i]), nullptr);
      EXPECT_EQ(tags_of(*copies[i]), expected_tags[member][i]) << member << " " << i;
      EXPECT_EQ(ranges_of(copies[i]->Source()), ranges_of(*stealth[member]->ProtectedAddress()));
    }
  }
  EXPECT_TRUE(stealth[0]->Rules().Empty());
}

// The interface only asks whether a rule carries a block, so any kind of
// block serves.
SecurityParameters* manual_block() {
  ManualNames names = {"DES", nullptr, nullptr, "key", nullptr, nullptr};
  return new SecurityParametersMan(new IPsecManParameters(1000, 0, names), nullptr,
                                   {nullptr, nullptr, nullptr, nullptr, false});
}

Rule* encrypting_rule(const char* destination_name, std::initializer_list<Range> destination) {
  Rule* rule = new Rule("svc", "a", destination_name, nullptr, manual_block(), manual_block(), nullptr,
                        ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
  rule->Destination(*address_of(destination_name, destination));
  return rule;
}

TEST_F(RoutingDistributionTest, OnlyEncryptingRulesThatStayInsideAreRemoved) {
  AddToRouting(Written(*www, one("a7", "10.0.0.7"), one("a9", "10.0.0.9")));
  Rule* kept_plain = rules_of(*a)[0];
  Rule* partly_inside = encrypting_rule("part", {span("10.0.0.200", "10.0.1.5")});
  a->Rules().Append(*encrypting_rule("inside", {span("10.0.0.7", "10.0.0.9")}));
  a->Rules().Append(*partly_inside);
  a->Rules().Append(*encrypting_rule("whole", {span("10.0.0.0", "10.0.0.0"), span("10.0.0.2", "10.0.0.255")}));

  a->RemoveIntraInterfaceRules();
  EXPECT_EQ(rules_of(*a), std::vector<Rule*>({kept_plain, partly_inside}));
}

TEST_F(DistributionTest, StealthInterfaceAlsoCleansItsEthernetRules) {
  auto& stealth = static_cast<InterfaceCLK&>(AddInterface("S1", INTERFACE_CLK, {span("10.1.0.0", "10.1.0.255")}));
  Rule* other_side = encrypting_rule("far", {span("10.2.0.1", "10.2.0.1")});
  stealth.Rules().Append(*encrypting_rule("in", {span("10.1.0.1", "10.1.0.1")}));
  stealth.EtherRules().Append(*encrypting_rule("in", {span("10.1.0.2", "10.1.0.2")}));
  stealth.EtherRules().Append(*other_side);

  stealth.RemoveIntraInterfaceRules();
  EXPECT_TRUE(stealth.Rules().Empty());
  EXPECT_EQ(rules_of(stealth.EtherRules()), std::vector<Rule*>({other_side}));
}

}  // namespace
