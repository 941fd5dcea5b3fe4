#include "policy/rule.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "model/time.h"
#include "model/user.h"
#include "policy/rule_fixture.h"

namespace {

std::vector<int> tags(const Rule& rule) {
  std::vector<int> ids;
  for (TList_Cell<int>* cell = rule.Interfaces().Head(); cell != nullptr; cell = cell->Next())
    ids.push_back(*cell->Data());
  return ids;
}

std::unique_ptr<Rule> rule_with_options() {
  return std::unique_ptr<Rule>(new Rule("www", "inside", "outside", "alice", nullptr, nullptr,
                                        "corp", ACTION_ALLOW, LOG_DETAIL, SNMP_TRAP, ICMP_NONE, 1,
                                        nullptr, "office", "gate", "note"));
}

TEST(RuleTest, ParsedRuleNamesWhatIsMissingAndIsItsOwnOrigin) {
  Rule rule(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, ACTION_DENY, LOG_NONE,
            SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
  EXPECT_STREQ(rule.Name(), "RULE");
  EXPECT_STREQ(rule.InputService().Name(), "Missing Service");
  EXPECT_STREQ(rule.Source().Name(), "Missing Source Address");
  EXPECT_STREQ(rule.Destination().Name(), "Missing Destination Address");
  EXPECT_EQ(rule.SvcResolved(), nullptr);
  EXPECT_EQ(rule.Use(), nullptr);
  EXPECT_EQ(rule.InputVpn(), nullptr);
  EXPECT_EQ(rule.InputTime(), nullptr);
  EXPECT_EQ(rule.Origin(), &rule);
  EXPECT_EQ(rule.IKE_RuleNum(), 0u);
  EXPECT_TRUE(rule.Interfaces().Empty());
}

TEST(RuleTest, EveryCopyLeadsBackToTheRuleOfThePolicy) {
  auto original = parsed_rule("www", "inside", "outside");
  Rule copy(*original);
  Rule copy_of_copy(copy);
  EXPECT_EQ(copy.Origin(), original.get());
  EXPECT_EQ(copy_of_copy.Origin(), original.get());

  copy_of_copy.Origin(&copy);
  EXPECT_EQ(copy_of_copy.Origin(), original.get());

  auto other = parsed_rule("smtp", "a", "b");
  other->Origin(original.get());
  other->Origin(&copy);
  EXPECT_EQ(other->Origin(), original.get());
}

TEST(RuleTest, UniqueIdsAreDrawnOnFirstDemandAndNeverCopied) {
  Rule::ResetUniqueId();
  auto first = parsed_rule("www", "a", "b");
  auto second = parsed_rule("www", "a", "b");
  EXPECT_EQ(second->UniqueID(), 0);
  EXPECT_EQ(first->UniqueID(), 1);
  EXPECT_EQ(first->UniqueID(), 1);
  Rule copy(*first);
  EXPECT_EQ(copy.UniqueID(), 2);
  Rule::ResetUniqueId();
}

TEST(RuleTest, CopyOwnsItsPartsButTakesNoTagsOrNumbers) {
  auto rule = rule_with_options();
  rule->SetInterface(3);
  rule->IKE_RuleNum(7);
  Rule copy(*rule);
  EXPECT_STREQ(copy.Use()->Name(), "alice");
  EXPECT_NE(copy.Use(), rule->Use());
  EXPECT_NE(&copy.Source(), &rule->Source());
  EXPECT_STREQ(copy.InputTime()->Name(), "office");
  EXPECT_EQ(copy.HAValue(), 1);
  EXPECT_TRUE(copy.Interfaces().Empty());
  EXPECT_EQ(copy.IKE_RuleNum(), 0u);
}

TEST(RuleTest, FirstNonZeroIkeRuleNumberStays) {
  auto rule = parsed_rule("www", "a", "b");
  EXPECT_EQ(rule->IKE_RuleNum(0), 0u);
  EXPECT_EQ(rule->IKE_RuleNum(5), 5u);
  EXPECT_EQ(rule->IKE_RuleNum(9), 5u);
}

TEST(RuleTest, InterfaceTagsHoldEachIdOnce) {
  auto rule = parsed_rule("www", "a", "b");
  rule->SetInterface(4);
  rule->SetInterface(4);
  TList<int>* more = ints({2, 4, 2, 6});
  rule->SetInterface(*more);
  more->Delete_Data();
  delete more;
  EXPECT_EQ(tags(*rule), (std::vector<int>{4, 2, 6}));
}

TEST(RuleTest, AddressSettersStoreCopiesAndKeepTheirOwnObject) {
  auto rule = parsed_rule("www", "a", "b");
  auto address = host("h", 7);
  rule->Source(*address);
  EXPECT_NE(&rule->Source(), address.get());
  EXPECT_TRUE(rule->Source().Equal(*address));
  Address* held = &rule->Destination();
  rule->Destination(*held);
  EXPECT_EQ(&rule->Destination(), held);
}

// The lists the Policy resolves against, each with one object of its kind.
struct ResolveLists {
  Engines engines;
  std::unique_ptr<Service> www = service_of("www", {params_set(engines.tcp, {0}, {{80, 80}})});
  std::unique_ptr<Address> inside = host("inside", 10);
  std::unique_ptr<Address> outside = host("outside", 20);
  Time office{"office", nullptr, nullptr, nullptr};
  Entity corp{"corp", nullptr, nullptr, 0};
  TList<Entity> services, addresses, times, vpns;
  ResolveLists() {
    services.Append(*www);
    addresses.Append(*inside);
    addresses.Append(*outside);
    times.Append(office);
    vpns.Append(corp);
  }
};

TEST(RuleTest, ResolveLinksEveryKindOfReference) {
  ResolveLists lists;
  auto rule = rule_with_options();
  std::ostringstream out;
  EXPECT_EQ(rule->Resolve(CO_SERVICE, lists.services, out), 0);
  EXPECT_EQ(rule->Resolve(CO_ADDRESS, lists.addresses, out), 0);
  EXPECT_EQ(rule->Resolve(CO_TIME, lists.times, out), 0);
  EXPECT_EQ(rule->Resolve(CO_VPN, lists.vpns, out), 0);
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(rule->SvcResolved(), lists.www.get());
  EXPECT_EQ(rule->TimeResolved(), &lists.office);
  EXPECT_NE(&rule->Source(), lists.inside.get());
  EXPECT_TRUE(rule->Source().Equal(*lists.inside));
  EXPECT_TRUE(rule->Destination().Equal(*lists.outside));
}

TEST(RuleTest, ResolveReportsEveryUndefinedNameWithItsKind) {
  ResolveLists lists;
  auto rule = std::unique_ptr<Rule>(new Rule("ftp", "lab", "dmz", nullptr, nullptr, nullptr,
                                             "partners", ACTION_ALLOW, LOG_NONE, SNMP_NONE,
                                             ICMP_NONE, 0, nullptr, "night", nullptr, nullptr));
  std::ostringstream out;
  EXPECT_EQ(rule->Resolve(CO_SERVICE, lists.services, out), 1);
  EXPECT_EQ(rule->Resolve(CO_ADDRESS, lists.addresses, out), 2);
  EXPECT_EQ(rule->Resolve(CO_VPN, lists.vpns, out), 1);
  EXPECT_EQ(rule->Resolve(CO_TIME, lists.times, out), 1);
  EXPECT_EQ(out.str(),
            "Error: \"RULE\" refers to undefined SERVICE: \"ftp\".\n"
            "Error: \"RULE\" refers to undefined ADDRESS: \"lab\".\n"
            "Error: \"RULE\" refers to undefined ADDRESS: \"dmz\".\n"
            "Error: \"RULE\" refers to undefined VPN: \"partners\".\n"
            "Error: \"RULE\" refers to undefined TIME: \"night\".\n");
  EXPECT_EQ(rule->SvcResolved(), nullptr);
  EXPECT_STREQ(rule->Source().Name(), "lab");
  EXPECT_EQ(rule->TimeResolved(), nullptr);
}

TEST(RuleTest, ResolveRefusesAnObjectOfAnotherKind) {
  ResolveLists lists;
  auto rule = parsed_rule("inside", "www", "outside");
  std::ostringstream out;
  EXPECT_EQ(rule->Resolve(CO_SERVICE, lists.addresses, out), 1);
  EXPECT_EQ(rule->Resolve(CO_ADDRESS, lists.services, out), 2);
  EXPECT_EQ(out.str(),
            "Error: \"RULE\" refers to undefined SERVICE: \"inside\".\n"
            "Error: \"RULE\" refers to undefined ADDRESS: \"www\".\n"
            "Error: \"RULE\" refers to undefined ADDRESS: \"outside\".\n");
}

TEST(RuleTest, TimeStarMeansAtAllTimes) {
  ResolveLists lists;
  Rule rule("www", "a", "b", nullptr, nullptr, nullptr, nullptr, ACTION_ALLOW, LOG_NONE,
            SNMP_NONE, ICMP_NONE, 0, nullptr, "*", nullptr, nullptr);
  std::ostringstream out;
  EXPECT_EQ(rule.Resolve(CO_TIME, lists.times, out), 0);
  EXPECT_EQ(rule.InputTime(), nullptr);
  EXPECT_EQ(rule.TimeResolved(), nullptr);
  EXPECT_EQ(out.str(), "");
  std::ostringstream text;
  rule.Print(text);
  EXPECT_EQ(text.str().find("TIME"), std::string::npos);
}

TEST(RuleTest, ResolveLeavesOtherKindsAlone) {
  ResolveLists lists;
  auto rule = rule_with_options();
  std::ostringstream out;
  for (Config_Objects kind : {CO_USER, CO_SCREEN, CO_CERTIFICATE, CO_KEY, CO_ALGORITHM, CO_RULE})
    EXPECT_EQ(rule->Resolve(kind, lists.addresses, out), 0) << kind;
  EXPECT_EQ(rule->ResolveAlgorithms(CO_ALG_KEY, lists.addresses, SKIP_V2, out), 0);
  EXPECT_EQ(out.str(), "");
  EXPECT_STREQ(rule->Use()->Name(), "alice");
}

TEST(RuleTest, ParameterBlockAnswersAreReportedByKind) {
  auto rule = parsed_rule("www", "a", "b");
  std::ostringstream out;
  EXPECT_EQ(rule->ReportParameterResolve(CO_ADDRESS, RESOLVE_NOT_FOUND, "t1", out), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_SCREEN, RESOLVE_NOT_FOUND, "s1", out), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_CERTIFICATE, RESOLVE_NOT_FOUND, "c1", out), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_KEY, RESOLVE_WRONG_TYPE, "k1", out), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_ALGORITHM, RESOLVE_NOT_FOUND, "a1", out), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_ALGORITHM, RESOLVE_WRONG_TYPE, "a2", out), 1);
  EXPECT_EQ(out.str(),
            "Error: \"RULE\" refers to undefined ADDRESS: \"t1\".\n"
            "Error: \"RULE\" refers to undefined SCREEN: \"s1\".\n"
            "Error: \"RULE\" refers to undefined CERTIFICATE: \"c1\".\n"
            "Error: Rule refers to invalid Certificate type: k1\n"
            "Error: \"RULE\" refers to undefined ALGORITHM: \"a1\".\n"
            "Error: Rule refers to invalid Algorithm: a2\n");

  std::ostringstream quiet;
  EXPECT_EQ(rule->ReportParameterResolve(CO_CERTIFICATE, RESOLVE_ALREADY_REPORTED, "c", quiet), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_ALGORITHM, RESOLVE_ALREADY_REPORTED, "a", quiet), 1);
  EXPECT_EQ(rule->ReportParameterResolve(CO_ADDRESS, RESOLVE_WRONG_TYPE, "t", quiet), 0);
  EXPECT_EQ(rule->ReportParameterResolve(CO_SCREEN, RESOLVE_ALREADY_REPORTED, "s", quiet), 0);
  EXPECT_EQ(rule->ReportParameterResolve(CO_ALGORITHM, RESOLVE_OK, "a", quiet), 0);
  EXPECT_EQ(rule->ReportParameterResolve(CO_TIME, RESOLVE_NOT_FOUND, "t", quiet), 0);
  EXPECT_EQ(quiet.str(), "");
}

TEST(RuleTest, MarkReachesServiceAddressesUserAndTime) {
  ResolveLists lists;
  auto rule = rule_with_options();
  std::ostringstream out;
  rule->Resolve(CO_SERVICE, lists.services, out);
  rule->Resolve(CO_TIME, lists.times, out);
  rule->Mark();
  EXPECT_EQ(lists.www->Used(), 1);
  EXPECT_EQ(lists.office.Used(), 1);
  EXPECT_EQ(rule->Source().Used(), 1);
  EXPECT_EQ(rule->Destination().Used(), 1);
  EXPECT_EQ(rule->Use()->Used(), 1);

  auto unresolved = parsed_rule("www", "a", "b");
  unresolved->Mark();
  EXPECT_EQ(unresolved->Source().Used(), 1);
}

TEST(RuleTest, ReferFindsEachKindOfName) {
  auto rule = rule_with_options();
  EXPECT_EQ(rule->Refer(CO_SERVICE, "www", 0), 1);
  EXPECT_EQ(rule->Refer(CO_ADDRESS, "inside", 0), 1);
  EXPECT_EQ(rule->Refer(CO_ADDRESS, "outside", 0), 1);
  EXPECT_EQ(rule->Refer(CO_USER, "alice", 0), 1);
  EXPECT_EQ(rule->Refer(CO_TIME, "office", 0), 1);
  EXPECT_EQ(rule->Refer(CO_VPN, "corp", 0), 1);
  EXPECT_EQ(rule->Refer(CO_SCREEN, "gate", 0), 1);
  EXPECT_EQ(rule->Refer(CO_ADDRESS, "www", 0), 0);
  EXPECT_EQ(rule->Refer(CO_SERVICE, nullptr, 0), 0);
  EXPECT_EQ(rule->Refer(CO_CERTIFICATE, "www", 0), 0);
  EXPECT_EQ(parsed_rule("www", "a", "b")->Refer(CO_SCREEN, "gate", 0), 0);

  testing::internal::CaptureStdout();
  rule->Refer(CO_USER, "alice", 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "RULE\t\tSCREEN \"gate\" \"www\" \"inside\" \"outside\" USER \"alice\" VPN \"corp\""
            " ALLOW LOG DETAIL SNMP TIME \"office\" COMMENT \"note\"\n");
}

TEST(RuleTest, RenameReferenceFollowsEachKind) {
  Rule rule("www", "net", "net", "alice", nullptr, nullptr, "corp", ACTION_ALLOW, LOG_NONE,
            SNMP_NONE, ICMP_NONE, 0, nullptr, "office", "gate", nullptr);
  rule.RenameReference(CO_SERVICE, "www", "web");
  rule.RenameReference(CO_ADDRESS, "net", "lan");
  rule.RenameReference(CO_USER, "alice", "bob");
  rule.RenameReference(CO_TIME, "office", "hours");
  rule.RenameReference(CO_VPN, "corp", "group");
  rule.RenameReference(CO_SCREEN, "gate", "wall");
  rule.RenameReference(CO_ADDRESS, "web", "nothing");
  EXPECT_STREQ(rule.InputService().Name(), "web");
  EXPECT_STREQ(rule.Source().Name(), "lan");
  EXPECT_STREQ(rule.Destination().Name(), "lan");
  EXPECT_STREQ(rule.Use()->Name(), "bob");
  EXPECT_STREQ(rule.InputTime()->Name(), "hours");
  EXPECT_STREQ(rule.InputVpn()->Name(), "group");
  EXPECT_STREQ(rule.Screen(), "wall");
}

TEST(RuleTest, DerivedRuleLinksTheServiceAndCopiesTheAddresses) {
  Engines engines;
  auto service = service_of("web", {params_set(engines.tcp, {0}, {{80, 80}})});
  auto source = host("a", 1);
  auto destination = host("b", 2);
  User user("carol", nullptr);
  Time time("office", nullptr, nullptr, nullptr);
  Rule rule(*service, *source, *destination, &user, nullptr, nullptr, nullptr, ACTION_DENY,
            LOG_SUMMARY, SNMP_NONE, ICMP_HOST_UNREACHABLE, 1, nullptr, &time, nullptr, nullptr);
  EXPECT_EQ(rule.SvcResolved(), service.get());
  EXPECT_STREQ(rule.InputService().Name(), "web");
  EXPECT_NE(&rule.Source(), source.get());
  EXPECT_TRUE(rule.Destination().Equal(*destination));
  EXPECT_NE(rule.Use(), &user);
  EXPECT_STREQ(rule.Use()->Name(), "carol");
  EXPECT_EQ(rule.TimeResolved(), &time);
  EXPECT_STREQ(rule.InputTime()->Name(), "office");
  EXPECT_EQ(rule.Origin(), &rule);
  EXPECT_EQ(rule.ICMPValue(), ICMP_HOST_UNREACHABLE);
}

TEST(RuleTest, SplitByFilterParamsMakesOneRulePerSet) {
  Engines engines;
  auto service = service_of("mixed", {params_set(engines.tcp, {0}, {{80, 80}}),
                                      params_set(engines.udp, {}, {{53, 53}})});
  auto source = host("a", 1);
  auto destination = host("b", 2);
  auto original = parsed_rule("mixed", "a", "b");
  auto rule = derived_rule(*service, *source, *destination);
  rule->Origin(original.get());
  rule->SetInterface(5);
  TList<Entity> services;
  TList<Entity>* rules = rule->SplitRuleByFilterParams(services);

  ASSERT_EQ(rules->Length(), 2);
  ASSERT_EQ(services.Length(), 2);
  const char* expected_names[] = {"mixed.tcp", "mixed.udp"};
  TList_Cell<Entity>* service_cell = services.Head();
  int index = 0;
  for (TList_Cell<Entity>* cell = rules->Head(); cell != nullptr; cell = cell->Next(), ++index) {
    Rule& part = static_cast<Rule&>(*cell->Data());
    Service& part_service = static_cast<Service&>(*service_cell->Data());
    EXPECT_EQ(part.SvcResolved(), &part_service);
    EXPECT_STREQ(part_service.Name(), expected_names[index]);
    EXPECT_STREQ(part.InputService().Name(), expected_names[index]);
    EXPECT_EQ(part_service.Filters().Length(), 1);
    EXPECT_EQ(part.Origin(), original.get());
    EXPECT_EQ(tags(part), std::vector<int>{5});
    EXPECT_EQ(part.Log(), LOG_SUMMARY);
    service_cell = service_cell->Next();
  }
  EXPECT_EQ(rule->SvcResolved(), service.get());
  rules->Delete_Data();
  delete rules;
  services.Delete_Data();

  auto unresolved = parsed_rule("x", "a", "b");
  TList<Entity>* none = unresolved->SplitRuleByFilterParams(services);
  EXPECT_TRUE(none->Empty());
  EXPECT_TRUE(services.Empty());
  delete none;
}

}  // namespace
