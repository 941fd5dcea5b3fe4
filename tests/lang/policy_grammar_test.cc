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
  ASSERT_NE(policy.Load(), nullptr);
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

TEST(HeaderGrammarTest, RegistryVersionWithoutLoadOnlySetsAnUnsetVersion) {
  ParsedConfiguration unset("REGISTRY_VERSION 4\n");
  EXPECT_EQ(unset.config.ThePolicy()->Version(), 4);
  ParsedConfiguration set("POLICY_VERSION 2 REGISTRY_VERSION 4\n");
  EXPECT_EQ(set.config.ThePolicy()->Version(), 2);
}

TEST(HeaderGrammarTest, ASecondLoadReplacesTheFirst) {
  ParsedConfiguration parsed("LOAD first LOAD second\n");
  EXPECT_STREQ(parsed.config.ThePolicy()->Load()->Versname(), "second");
}

TEST(HeaderGrammarTest, HeaderStatementsTakeNoSemicolon) {
  ExpectSyntaxError("POLICY_VERSION 1 ;", ";");
  ExpectSyntaxError("LOAD x ;", ";");
  ExpectSyntaxError("REGISTRY_VERSION x", "x");
}

}  // namespace
