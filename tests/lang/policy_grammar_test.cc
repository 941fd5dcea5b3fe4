// The statements that fill the policy: the file header statements, whose
// effect depends on their order.
#include <gtest/gtest.h>

#include <string>

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
}

// Saved, a clause names every option, the ones that are off behind "!";
// listed, it names only those that are on, and spells the last Java value
// out.
TEST(RuleGrammarTest, ProxyClausesReadBackFromTheirSavedText) {
  const char* written =
      "RULE ftp a b USER u ALLOW PROXY_FTP FTP_GET !FTP_PUT FTP_CHDIR ! FTP_MKDIR FTP_RENAME FTP_REMOVE_DIR "
      "!FTP_DELETE TIME t ;\n"
      "RULE web a b ALLOW LOG_SUMMARY PROXY_HTTP COOKIES !ACTIVE_X SSL JAVA_SIG_HASH ;\n"
      "RULE web a b DENY ICMP_NET_FORBIDDEN PROXY_HTTP !COOKIES !ACTIVE_X !SSL ! JAVA ;\n"
      "RULE mail a b ALLOW PROXY_SMTP !RELAY ;\n"
      "RULE tn a b USER u ALLOW PROXY_Telnet ;\n";
  const std::string saved =
      "RULE\t\"ftp\"  \"a\"  \"b\"  USER \"u\"  ALLOW PROXY_FTP FTP_GET ! FTP_PUT FTP_CHDIR ! FTP_MKDIR FTP_RENAME "
      "FTP_REMOVE_DIR ! FTP_DELETE TIME\t\"t\"\n"
      "RULE\t\"web\"  \"a\"  \"b\"  ALLOW LOG SUMMARY PROXY_HTTP COOKIES ! ACTIVE_X SSL JAVA_SIG_HASH\n"
      "RULE\t\"web\"  \"a\"  \"b\"  DENY ICMP NET_FORBIDDEN PROXY_HTTP ! COOKIES ! ACTIVE_X ! SSL !JAVA\n"
      "RULE\t\"mail\"  \"a\"  \"b\"  ALLOW PROXY_SMTP ! RELAY\n"
      "RULE\t\"tn\"  \"a\"  \"b\"  USER \"u\"  ALLOW PROXY_Telnet\n";
  ParsedConfiguration parsed(written);
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(PrintedEntries(parsed.config.ThePolicy()->Rules()), saved);
  EXPECT_EQ(ListedEntries(parsed.config.ThePolicy()->Rules()),
            "\"ftp\" \"a\" \"b\" USER \"u\" ALLOW PROXY_FTP FTP_GET FTP_CHDIR FTP_RENAME FTP_REMOVE_DIR TIME \"t\"\n"
            "\"web\" \"a\" \"b\" ALLOW LOG SUMMARY PROXY_HTTP COOKIES SSL JAVA_SIGNATURE_HASH\n"
            "\"web\" \"a\" \"b\" DENY ICMP NET_FORBIDDEN PROXY_HTTP \n"
            "\"mail\" \"a\" \"b\" ALLOW PROXY_SMTP\n"
            "\"tn\" \"a\" \"b\" USER \"u\" ALLOW PROXY_Telnet\n");

  std::string again;
  for (size_t start = 0, end; (end = saved.find('\n', start)) != std::string::npos; start = end + 1)
    again += saved.substr(start, end - start) + " ;\n";
  ParsedConfiguration reread(again);
  ASSERT_EQ(reread.result, 0) << reread.err;
  EXPECT_EQ(PrintedEntries(reread.config.ThePolicy()->Rules()), saved);
}

TEST(RuleGrammarTest, ProxyClausesTakeEveryOptionInOrderAndOnlyOnPlainRules) {
  ExpectSyntaxError("RULE s a b USER u ALLOW PROXY_FTP FTP_GET FTP_CHDIR ;", "FTP_CHDIR");
  ExpectSyntaxError("RULE s a b ALLOW PROXY_HTTP COOKIES ACTIVE_X SSL ;", ";");
  ExpectSyntaxError("RULE s a b ALLOW PROXY_HTTP COOKIES ACTIVE_X SSL ! JAVA_HASH ;", "JAVA_HASH");
  ExpectSyntaxError("RULE s a b ALLOW PROXY_SMTP ;", ";");
  ExpectSyntaxError("RULE s a b USER u ALLOW TIME t PROXY_Telnet ;", "PROXY_Telnet");
  ExpectSyntaxError("RULE s a b USER u DENY PROXY_Telnet ICMP_NET_FORBIDDEN ;", "ICMP_NET_FORBIDDEN");
  ExpectSyntaxError("RULE s a b IKE \"DES\" \"MD5\" \"PRE-SHARED\" k \"\" ALLOW PROXY_Telnet ;", "PROXY_Telnet");
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
