// The statements that fill the policy: the file header statements, whose
// effect depends on their order.
#include <gtest/gtest.h>

#include "lang/parsed_configuration.h"
#include "policy/policy.h"

namespace {

TEST(HeaderGrammarTest, VersionsBeforeTheLoadGoToThePolicyFile) {
  ParsedConfiguration parsed("POLICY_VERSION 7 REGISTRY_USED_VERSION 3 LOAD \"registry.4\"\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Policy& policy = *parsed.config.ThePolicy();
  EXPECT_EQ(policy.Version(), 7);
  EXPECT_STREQ(policy.Load()->Versname(), "registry.4");
  EXPECT_EQ(policy.RegVersion(), 0);
}

TEST(HeaderGrammarTest, VersionsBehindTheLoadGoToTheLoadFile) {
  ParsedConfiguration parsed("LOAD reg POLICY_VERSION 5 REGISTRY_USED_VERSION 6 REGISTRY_VERSION 9\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Policy& policy = *parsed.config.ThePolicy();
  EXPECT_EQ(policy.Version(), 0);
  EXPECT_EQ(policy.RegVersion(), 9);
}

TEST(HeaderGrammarTest, WithoutLoadRegistryVersionOnlySetsAnUnsetVersionAndLastLoadWins) {
  ParsedConfiguration unset("REGISTRY_VERSION 4\n");
  EXPECT_EQ(unset.config.ThePolicy()->Version(), 4);
  ParsedConfiguration set("POLICY_VERSION 2 REGISTRY_VERSION 4\n");
  EXPECT_EQ(set.config.ThePolicy()->Version(), 2);
  ParsedConfiguration reloaded("LOAD first LOAD second\n");
  EXPECT_STREQ(reloaded.config.ThePolicy()->Load()->Versname(), "second");
}

TEST(HeaderGrammarTest, HeaderStatementsTakeNoSemicolon) {
  ExpectSyntaxError("POLICY_VERSION 1 ;", ";");
  ExpectSyntaxError("LOAD x ;", ";");
  ExpectSyntaxError("REGISTRY_VERSION x", "x");
}

}  // namespace

#include <sstream>


namespace {

std::string PrintedEntries(const OrderedEntityList& list) {
  std::ostringstream out;
  for (TList_Cell<Entity>* cell = list.Items().Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Print(out) << '\n';
  return out.str();
}

TEST(RuleGrammarTest, AllowAndDenyFormsWithEveryOption) {
  ParsedConfiguration parsed(
      "RULE www \"*\" web USER bob VPN corp ALLOW LOG_SESSION SNMP TIME office SCREEN gate COMMENT \"c\" ;\n"
      "RULE ping \"*\" office DENY LOG DETAIL SNMP ICMP_HOST_UNREACHABLE ;\n"
      "RULE ping \"*\" office DENY LOG_SESSION ICMP NET_FORBIDDEN ;\n"
      "RULE any \"*\" \"*\" DENY ;\n"
      "RULE any \"*\" \"*\" ALLOW LOG SESSION ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(PrintedEntries(parsed.config.ThePolicy()->Rules()),
            "RULE\t\"www\"  \"*\"  \"web\"  USER \"bob\" VPN \"corp\"  ALLOW LOG SESSION SNMP TIME\t\"office\""
            "\tSCREEN\t\"gate\"\tCOMMENT\t\"c\"\n"
            "RULE\t\"ping\"  \"*\"  \"office\"  DENY LOG DETAIL SNMP ICMP HOST_UNREACHABLE\n"
            "RULE\t\"ping\"  \"*\"  \"office\"  DENY LOG SUMMARY ICMP NET_FORBIDDEN\n"
            "RULE\t\"any\"  \"*\"  \"*\"  DENY\n"
            "RULE\t\"any\"  \"*\"  \"*\"  ALLOW LOG SESSION\n");
}

TEST(RuleGrammarTest, OptionsThatTheFormsRefuse) {
  ExpectSyntaxError("RULE s a b ALLOW ICMP_NET_FORBIDDEN ;", "ICMP_NET_FORBIDDEN");
  ExpectSyntaxError("RULE s a b VPN v DENY ;", "DENY");
  ExpectSyntaxError("RULE s a b ALLOW SNMP LOG_DETAIL ;", "LOG_DETAIL");
  ExpectSyntaxError("RULE s a b ALLOW TIME t LOG_DETAIL ;", "LOG_DETAIL");
  ExpectSyntaxError("RULE s a b ;", ";");
  ExpectSyntaxError("RULE s a ALLOW ;", "ALLOW");
  ExpectSyntaxError("RULE s a b ALLOW PROXY_Telnet ;", "PROXY_Telnet");
}

TEST(NatGrammarTest, StaticAndDynamicEntriesInOrder) {
  ParsedConfiguration parsed(
      "NAT STATIC web \"*\" public \"*\" SCREEN gate COMMENT \"w\" ;\n"
      "NAT DYNAMIC office \"*\" outside \"*\" ;\n"
      "NAT DYNAMIC office \"*\" outside \"*\" ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(PrintedEntries(parsed.config.ThePolicy()->Nats()),
            "NAT\tSTATIC \"web\" \"*\" \"public\" \"*\"\tSCREEN\t\"gate\"\tCOMMENT\t\"w\"\n"
            "NAT\tDYNAMIC \"office\" \"*\" \"outside\" \"*\"\n"
            "NAT\tDYNAMIC \"office\" \"*\" \"outside\" \"*\"\n");
  ExpectSyntaxError("NAT web \"*\" public \"*\" ;", "web");
  ExpectSyntaxError("NAT STATIC a b c ;", ";");
}

}  // namespace
