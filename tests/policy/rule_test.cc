#include "policy/rule.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "crypto/vpn_set.h"
#include "model/time.h"
#include "model/user.h"
#include "policy/rule_fixture.h"

namespace {

std::vector<int> tags(const Rule& rule) { return rule.Interfaces(); }

std::unique_ptr<Rule> rule_with_options() {
  return std::unique_ptr<Rule>(new Rule("www", "inside", "outside", "alice", nullptr, nullptr,
                                        "corp", ACTION_ALLOW, LOG_DETAIL, SNMP_TRAP, ICMP_NONE, 1,
                                        nullptr, "office", "gate", "note"));
}

TEST(RuleTest, ParsedRuleNamesWhatIsMissing) {
  Rule rule(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, ACTION_DENY, LOG_NONE,
            SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
  EXPECT_STREQ(rule.InputService().Name(), "Missing Service");
  EXPECT_STREQ(rule.Source().Name(), "Missing Source Address");
  EXPECT_STREQ(rule.Destination().Name(), "Missing Destination Address");
}

TEST(RuleTest, EveryCopyLeadsBackToTheRuleOfThePolicy) {
  auto original = parsed_rule("www", "inside", "outside");
  Rule copy(*original);
  Rule copy_of_copy(copy);
  copy_of_copy.Origin(&copy);
  EXPECT_EQ(copy_of_copy.Origin(), original.get());
}

TEST(RuleTest, UniqueIdsAreDrawnOnFirstDemandAndNeverCopied) {
  Rule::ResetUniqueId();
  auto first = parsed_rule("www", "a", "b");
  auto second = parsed_rule("www", "a", "b");
  EXPECT_EQ(second->UniqueID(), 0);
  EXPECT_EQ(first->UniqueID(), 1);
  Rule copy(*first);
  EXPECT_EQ(copy.UniqueID(), 2);
  Rule::ResetUniqueId();
}

TEST(RuleTest, TagsAndIkeNumbersAreHeldOnceAndNotCopied) {
  auto rule = rule_with_options();
  rule->SetInterface(4);
  rule->SetInterface(std::vector<int>{2, 4, 2, 6});
  EXPECT_EQ(tags(*rule), (std::vector<int>{4, 2, 6}));
  EXPECT_EQ(rule->IKE_RuleNum(0), 0u);
  EXPECT_EQ(rule->IKE_RuleNum(5), 5u);
  EXPECT_EQ(rule->IKE_RuleNum(9), 5u);
  Rule copy(*rule);
  EXPECT_TRUE(copy.Interfaces().empty());
  EXPECT_EQ(copy.IKE_RuleNum(), 0u);
}

// The lists the Policy resolves against, each with one object of its kind.
struct ResolveLists {
  Engines engines;
  std::unique_ptr<Service> www = service_of("www", {params_set(engines.tcp, {0}, {{80, 80}})});
  std::unique_ptr<Address> inside = host("inside", 10);
  std::unique_ptr<Address> outside = host("outside", 20);
  Time office{"office", nullptr, nullptr, nullptr};
  VPNSet corp{"corp"};
  TList<Entity> services, addresses, times, vpns;
  ResolveLists() {
    services.Append(*www);
    addresses.Append(*inside);
    addresses.Append(*outside);
    times.Append(office);
    vpns.Append(corp);
  }
};

TEST(RuleTest, ResolveLinksEveryKindAndMarkReachesThem) {
  ResolveLists lists;
  auto rule = rule_with_options();
  std::ostringstream out;
  EXPECT_EQ(rule->Resolve(CO_SERVICE, lists.services, out), 0);
  EXPECT_EQ(rule->Resolve(CO_ADDRESS, lists.addresses, out), 0);
  EXPECT_EQ(rule->Resolve(CO_TIME, lists.times, out), 0);
  EXPECT_EQ(rule->Resolve(CO_VPN, lists.vpns, out), 0);
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(rule->SvcResolved(), lists.www.get());
  EXPECT_EQ(rule->Vpn(), &lists.corp);
  EXPECT_NE(&rule->Source(), lists.inside.get());
  EXPECT_TRUE(rule->Destination().Equal(*lists.outside));
  rule->Mark();
  EXPECT_EQ(lists.www->Used(), 1);
  EXPECT_EQ(lists.office.Used(), 1);
  EXPECT_EQ(rule->Use()->Used(), 1);
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
  EXPECT_EQ(rule.TimeResolved(), nullptr);
  rule.Print(out);
  EXPECT_EQ(out.str().find("TIME"), std::string::npos);
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

  struct Quiet { Config_Objects kind; Resolve_Error answer; int errors; };
  for (Quiet quiet : {Quiet{CO_CERTIFICATE, RESOLVE_ALREADY_REPORTED, 1},
                      Quiet{CO_ALGORITHM, RESOLVE_ALREADY_REPORTED, 1},
                      Quiet{CO_ADDRESS, RESOLVE_WRONG_TYPE, 0},
                      Quiet{CO_SCREEN, RESOLVE_ALREADY_REPORTED, 0},
                      Quiet{CO_ALGORITHM, RESOLVE_OK, 0},
                      Quiet{CO_TIME, RESOLVE_NOT_FOUND, 0}}) {
    std::ostringstream silent;
    EXPECT_EQ(rule->ReportParameterResolve(quiet.kind, quiet.answer, "x", silent), quiet.errors)
        << quiet.kind;
    EXPECT_EQ(silent.str(), "");
  }
}

TEST(RuleTest, ReferAndRenameFollowEachKind) {
  auto rule = rule_with_options();
  EXPECT_EQ(rule->Refer(CO_SCREEN, "gate", 0), 1);
  EXPECT_EQ(rule->Refer(CO_ADDRESS, "www", 0), 0);
  EXPECT_EQ(rule->Refer(CO_SERVICE, nullptr, 0), 0);
  testing::internal::CaptureStdout();
  rule->Refer(CO_USER, "alice", 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "RULE\t\tSCREEN \"gate\" \"www\" \"inside\" \"outside\" USER \"alice\" VPN \"corp\""
            " ALLOW LOG DETAIL SNMP TIME \"office\" COMMENT \"note\"\n");

  rule->RenameReference(CO_SERVICE, "www", "web");
  rule->RenameReference(CO_ADDRESS, "inside", "lan");
  rule->RenameReference(CO_USER, "alice", "bob");
  rule->RenameReference(CO_TIME, "office", "hours");
  rule->RenameReference(CO_VPN, "corp", "group");
  rule->RenameReference(CO_SCREEN, "gate", "wall");
  rule->RenameReference(CO_ADDRESS, "web", "nothing");
  testing::internal::CaptureStdout();
  rule->Refer(CO_USER, "bob", 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "RULE\t\tSCREEN \"wall\" \"web\" \"lan\" \"outside\" USER \"bob\" VPN \"group\""
            " ALLOW LOG DETAIL SNMP TIME \"hours\" COMMENT \"note\"\n");
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
    EXPECT_EQ(part.SvcResolved(), service_cell->Data());
    EXPECT_STREQ(service_cell->Data()->Name(), expected_names[index]);
    EXPECT_EQ(part.Origin(), original.get());
    EXPECT_EQ(tags(part), std::vector<int>{5});
    service_cell = service_cell->Next();
  }
  rules->Delete_Data();
  delete rules;
  services.Delete_Data();

  TList<Entity>* none = parsed_rule("x", "a", "b")->SplitRuleByFilterParams(services);
  EXPECT_TRUE(none->Empty());
  delete none;
}

}  // namespace
