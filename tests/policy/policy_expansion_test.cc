// The stages of policy verification that expand the rule list: the two
// reverse passes and the Ethernet split.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "driver/fw_file.h"
#include "model/registry.h"
#include "model/user.h"
#include "policy/policy.h"
#include "policy/proxy_data.h"
#include "policy/rule_broadcast.h"
#include "policy/rule_fixture.h"

namespace {

// "<service> <source>><destination>" for each rule, a forward parameter set
// shown as its first port, a reversed one with a leading "~".
std::vector<std::string> Lines(const TList<Entity>& rules) {
  std::vector<std::string> lines;
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next()) {
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    std::string line = std::string(rule.InputService().Name()) + " " + rule.Source().Name() + ">" +
                       rule.Destination().Name();
    for (TList_Cell<FilterParams>* set = rule.SvcResolved()->Filters().Head(); set != nullptr; set = set->Next())
      line += (set->Data()->Direction() == FD_REVERSE ? " ~" : " ") +
              std::to_string(set->Data()->Ranges().Head()->Data()->Start());
    lines.push_back(line);
  }
  return lines;
}

class PolicyExpansionTest : public testing::Test {
 protected:
  // A resolved rule of the policy from "in" to "out", whose service takes
  // the forward `sets` and, as REVERSE filters, the `reverse_sets`.
  Rule& Add(const char* service_name, std::initializer_list<FilterParams*> sets,
            std::initializer_list<FilterParams*> reverse_sets = {}) {
    Service* service = service_of(service_name, sets).release();
    for (FilterParams* set : reverse_sets) {
      service->Include(*set, 1);
      delete set;
    }
    registry.ServicesCompile(*service);
    Rule* rule = new Rule(*service, *host("in", 1), *host("out", 2), nullptr, nullptr, nullptr, nullptr,
                          ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, "gate", "note");
    policy.Rules(*rule);
    return *rule;
  }

  FilterParams* Port(StateEngine& engine, int port) { return params_set(engine, {0}, {{port, port}}); }

  Engines engines;
  // FORWARD and REVERSE, REVERSE alone, neither.
  StateEngine both{"both", "tcp_engine", "port", 1, 3, 65535, 1, ints({0}), 1, 1};
  StateEngine back{"back", "tcp_engine", "port", 1, 4, 65535, 1, ints({0}), 0, 1};
  StateEngine idle{"idle", "tcp_engine", "port", 1, 5, 65535, 1, ints({0}), 0, 0};
  StateEngine ether{"ether", "ether_engine", "type", 9, 1, 0xFFFF, 0, nullptr, 1, 0};
  Registry registry;
  Policy policy{new FWFile(nullptr, nullptr)};
};

TEST_F(PolicyExpansionTest, ReverseFiltersGiveARuleBehindTheirRuleFromDestinationToSource) {
  Rule& mixed = Add("mixed", {Port(engines.tcp, 80)}, {Port(engines.tcp, 20)});
  Add("only back", {}, {Port(engines.tcp, 21)});
  Add("empty", {});
  Rule& plain = Add("plain", {Port(engines.tcp, 25)});

  EXPECT_EQ(policy.GenerateReverseRulesFilter(registry), 0);
  EXPECT_EQ(Lines(policy.Rules().Items()),
            std::vector<std::string>(
                {"mixed in>out 80", "mixed_rev out>in 20", "only back_rev out>in 21", "plain in>out 25"}));
  TList_Cell<Entity>* cell = policy.Rules().Items().Head();
  EXPECT_EQ(cell->Data(), &mixed);
  const Rule& reverse = *static_cast<const Rule*>(cell->Next()->Data());
  EXPECT_EQ(reverse.Origin(), &mixed);
  EXPECT_EQ(reverse.Screen(), nullptr);
  EXPECT_EQ(reverse.Description(), nullptr);
  EXPECT_EQ(cell->Next()->Next()->Next()->Data(), &plain);
  EXPECT_STREQ(registry.ServicesCompile().Tail()->Data()->Name(), "only back_rev");
}

// The second pass also reverses what the first made, so a reverse filter of
// an engine with a reverse path ends as a "_rev_rev" service leading back
// to the rule of the policy.
TEST_F(PolicyExpansionTest, EnginePassSplitsSetsByTheirEnginesPaths) {
  Rule& ftp = Add("ftp", {Port(both, 21)}, {Port(both, 20)});
  Add("split", {Port(engines.tcp, 80), Port(back, 7)});
  Add("backward", {Port(back, 9)});
  Add("idle", {Port(idle, 5)});

  ASSERT_EQ(policy.GenerateReverseRulesFilter(registry), 0);
  ASSERT_EQ(policy.GenerateReverseRulesStateEngine(registry), 0);
  EXPECT_EQ(Lines(policy.Rules().Items()),
            std::vector<std::string>({"ftp in>out 21", "ftp_rev out>in ~21", "ftp_rev out>in 20",
                                      "ftp_rev_rev in>out ~20", "split in>out 80", "split_rev out>in ~7",
                                      "backward_rev out>in ~9"}));
  EXPECT_EQ(static_cast<Rule*>(policy.Rules().Items().Head()->Next()->Next()->Next()->Data())->Origin(), &ftp);
}

TEST_F(PolicyExpansionTest, ReverseRuleKeepsTheVerdictUserLogAndTime) {
  Service* service = service_of("echo", {Port(both, 7)}).release();
  registry.ServicesCompile(*service);
  User user("ann", nullptr);
  policy.Rules(*new Rule(*service, *host("in", 1), *host("out", 2), &user, nullptr, nullptr, nullptr, ACTION_DENY,
                         LOG_DETAIL, SNMP_TRAP, ICMP_HOST_UNREACHABLE, 1, nullptr, nullptr, nullptr, nullptr));
  ASSERT_EQ(policy.GenerateReverseRulesStateEngine(registry), 0);
  std::ostringstream text;
  text << *static_cast<Rule*>(policy.Rules().Items().Tail()->Data());
  EXPECT_EQ(text.str(), "RULE\t\"echo_rev\"  \"out\"  \"in\"  USER \"ann\"  DENY LOG DETAIL SNMP ICMP HOST_UNREACHABLE;\n");
  EXPECT_EQ(static_cast<Rule*>(policy.Rules().Items().Tail()->Data())->HAValue(), 1);
}

TEST_F(PolicyExpansionTest, EthernetSetsLeaveForTheEtherRulesAndFaultyRulesAreReportedInPlace) {
  Rule& only = Add("arp", {Port(ether, 0x806)});
  Add("mixed", {Port(ether, 0x800), Port(engines.tcp, 80)});
  Add("plain", {Port(engines.tcp, 25)});
  Service* ether_service = service_of("frames", {Port(ether, 0x86dd)}).release();
  registry.ServicesCompile(*ether_service);
  User user("ann", nullptr);
  Rule* with_user = new Rule(*ether_service, *host("in", 1), *host("out", 2), &user, nullptr, nullptr, nullptr,
                             ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
  policy.Rules(*with_user);
  Rule& last = Add("last ether", {Port(ether, 0x8035)});

  std::ostringstream out;
  EXPECT_EQ(policy.SplitEtherRules(out, registry), 1);
  EXPECT_EQ(out.str(),
            "Error: SKIP and Ethernet filtering not supported(RULE\t\"frames\"  \"in\"  \"out\"  USER \"ann\"  ALLOW;\n)");
  EXPECT_EQ(Lines(policy.Rules().Items()),
            std::vector<std::string>({"mixed in>out 80", "plain in>out 25", "frames in>out 34525"}));
  ASSERT_NE(policy.EtherRules(), nullptr);
  EXPECT_EQ(Lines(*policy.EtherRules()),
            std::vector<std::string>({"arp_ether in>out 2054", "mixed_ether in>out 2048", "last ether_ether in>out 32821"}));
  for (TList_Cell<Entity>* cell = policy.EtherRules()->Head(); cell != nullptr; cell = cell->Next()) {
    EXPECT_NE(dynamic_cast<RuleBroadcast*>(cell->Data()), nullptr);
    EXPECT_EQ(cell->Data()->Screen(), nullptr);
  }
  EXPECT_EQ(static_cast<Rule*>(policy.EtherRules()->Head()->Data())->Origin(), &only);
  EXPECT_EQ(static_cast<Rule*>(policy.EtherRules()->Tail()->Data())->Origin(), &last);
}

// The proxy takes the connection at the screen: the rule ends there, and
// a plain rule of its own carries the proxy's connection on.
TEST_F(PolicyExpansionTest, ProxiedRulesAreCutAtTheScreen) {
  Service* telnet = service_of("telnet", {Port(engines.tcp, 23)}).release();
  registry.ServicesCompile(*telnet);
  User user("ann", nullptr);
  ProxyData proxy;
  Rule* proxied = new Rule(*telnet, *host("in", 1), *host("out", 2), &user, nullptr, nullptr, nullptr, ACTION_ALLOW,
                           LOG_SUMMARY, SNMP_NONE, ICMP_NONE, 0, &proxy, nullptr, "gate", "note");
  policy.Rules(*proxied);
  Rule& plain = Add("plain", {Port(engines.tcp, 25)});

  policy.GenerateRulesProxy(registry);
  ASSERT_EQ(Lines(policy.Rules().Items()),
            std::vector<std::string>({"telnet localhost>out 23", "telnet in>localhost 23", "plain in>out 25"}));
  const Rule& onward = *static_cast<Rule*>(policy.Rules().Items().Head()->Data());
  EXPECT_EQ(onward.Origin(), &onward);
  EXPECT_EQ(onward.Use(), nullptr);
  EXPECT_EQ(onward.Proxy(), nullptr);
  EXPECT_EQ(onward.Screen(), nullptr);
  EXPECT_EQ(onward.Log(), LOG_SUMMARY);
  EXPECT_NE(proxied->Proxy(), nullptr);
  EXPECT_STREQ(proxied->Use()->Name(), "ann");
  EXPECT_EQ(policy.Rules().Items().Tail()->Data(), &plain);
}

}  // namespace
