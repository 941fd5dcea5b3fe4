// The saved statement and the listing line of rules.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "policy/rule.h"
#include "policy/rule_fixture.h"

namespace {

Rule rule_of(Action_Type action, Log_Type log, SNMP_Type snmp, ICMP_Type icmp) {
  return Rule("www", "inside", "outside", nullptr, nullptr, nullptr, nullptr, action, log, snmp,
              icmp, 0, nullptr, nullptr, nullptr, nullptr);
}

std::string printed(const Rule& rule) {
  std::ostringstream out;
  rule.Print(out);
  return out.str();
}

std::string listed(const Rule& rule) {
  std::ostringstream out;
  rule.Enumerate(out, ENUM_NAME);
  return out.str();
}

std::string flags(const Rule& rule) {
  std::ostringstream out;
  rule.PrintFlags(out);
  return out.str();
}

TEST(RuleTextTest, DenyWithoutOptionsEndsInDeny) {
  Rule rule = rule_of(ACTION_DENY, LOG_NONE, SNMP_NONE, ICMP_NONE);
  EXPECT_EQ(printed(rule), "RULE\t\"www\"  \"inside\"  \"outside\"  DENY");
  std::ostringstream out;
  out << rule;
  EXPECT_EQ(out.str(), "RULE\t\"www\"  \"inside\"  \"outside\"  DENY;\n");
  EXPECT_EQ(listed(rule), "\"www\" \"inside\" \"outside\" DENY\n");
}

TEST(RuleTextTest, EveryOptionInItsPlace) {
  Rule rule("www", "inside", "outside", "alice", nullptr, nullptr, "corp", ACTION_ALLOW,
            LOG_SESSION, SNMP_TRAP, ICMP_NONE, 0, nullptr, "office", "gate", "web \"out\"");
  // The listing line is always the full line; quotes inside a comment stay as written.
  EXPECT_EQ(listed(rule),
            "SCREEN \"gate\" \"www\" \"inside\" \"outside\" USER \"alice\" VPN \"corp\" ALLOW"
            " LOG SESSION SNMP TIME \"office\" COMMENT \"web \"out\"\"\n");
}

TEST(RuleTextTest, FlagWordsByValue) {
  const struct {
    Action_Type action; Log_Type log; SNMP_Type snmp; ICMP_Type icmp; const char* words;
  } cases[] = {
      {ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, ""},
      {ACTION_ALLOW, LOG_DETAIL, SNMP_NONE, ICMP_NONE, " LOG DETAIL"},
      {ACTION_ALLOW, LOG_DYNAMIC, SNMP_NONE, ICMP_NONE, " LOG DYNAMIC"},
      {ACTION_ALLOW, LOG_SESSION, SNMP_TRAP, ICMP_NONE, " LOG SESSION SNMP"},
      {ACTION_DENY, LOG_NONE, SNMP_NONE, ICMP_NET_UNREACHABLE, " ICMP NET_UNREACHABLE"},
      {ACTION_DENY, LOG_NONE, SNMP_NONE, ICMP_HOST_UNREACHABLE, " ICMP HOST_UNREACHABLE"},
      {ACTION_DENY, LOG_NONE, SNMP_NONE, ICMP_NET_FORBIDDEN, " ICMP NET_FORBIDDEN"},
      {ACTION_DENY, LOG_SUMMARY, SNMP_TRAP, ICMP_HOST_FORBIDDEN, " LOG SUMMARY SNMP ICMP HOST_FORBIDDEN"},
      // An answer only goes with a refusal.
      {ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_PORT_UNREACHABLE, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(flags(rule_of(c.action, c.log, c.snmp, c.icmp)), c.words);
}

TEST(RuleTextTest, DenyRuleWithUserAndAnswer) {
  Rule rule("www", "inside", "outside", "bob", nullptr, nullptr, nullptr, ACTION_DENY,
            LOG_SUMMARY, SNMP_NONE, ICMP_PORT_UNREACHABLE, 0, nullptr, nullptr, nullptr, "x");
  EXPECT_EQ(listed(rule),
            "\"www\" \"inside\" \"outside\" USER \"bob\" DENY LOG SUMMARY ICMP PORT_UNREACHABLE"
            " COMMENT \"x\"\n");
}

TEST(RuleTextTest, ResolvedRuleWritesTheNamesItWasGiven) {
  Engines engines;
  auto service = service_of("web", {params_set(engines.tcp, {0}, {{80, 80}})});
  auto source = host("a", 1);
  auto destination = host("b", 2);
  auto rule = derived_rule(*service, *source, *destination);
  EXPECT_EQ(printed(*rule),
            "RULE\t\"web\"  \"a\"  \"b\"  ALLOW LOG SUMMARY SNMP\tSCREEN\t\"gate\"\tCOMMENT\t\"derived\"");
}

}  // namespace
