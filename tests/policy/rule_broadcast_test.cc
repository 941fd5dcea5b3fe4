#include "policy/rule_broadcast.h"

#include <gtest/gtest.h>

#include <memory>

#include "policy/rule_fixture.h"

namespace {

// A derived rule of the given sets, with a policy rule as its origin.
struct SplitCase {
  Engines engines;
  std::unique_ptr<Service> service;
  std::unique_ptr<Address> source = host("a", 1);
  std::unique_ptr<Address> destination = host("b", 2);
  std::unique_ptr<Rule> original = parsed_rule("svc", "a", "b");
  std::unique_ptr<Rule> rule;
  Rule* plain = nullptr;
  Rule* broadcast = nullptr;

  explicit SplitCase(std::initializer_list<std::pair<int, int>> ports_and_flags) {
    service.reset(new Service("svc", nullptr, nullptr));
    for (const auto& entry : ports_and_flags) {
      FilterParams* set = params_set(engines.tcp, {0}, {{uint32_t(entry.first), uint32_t(entry.first)}},
                                     entry.second);
      service->Include(*set, 0);
      delete set;
    }
    rule = derived_rule(*service, *source, *destination);
    rule->Origin(original.get());
    rule->SetInterface(9);
    rule->BroadcastSplit(&plain, &broadcast);
  }
  ~SplitCase() {
    if (plain != rule.get()) delete plain;
    if (broadcast != rule.get()) delete broadcast;
  }
};

TEST(RuleBroadcastTest, PlainServiceKeepsTheRuleItself) {
  SplitCase split({{80, 0}, {443, 0}});
  EXPECT_EQ(split.plain, split.rule.get());
  EXPECT_EQ(split.broadcast, nullptr);
}

TEST(RuleBroadcastTest, BroadcastOnlyServiceGivesANewBroadcastRuleOnTheSameService) {
  SplitCase split({{137, 1}});
  EXPECT_EQ(split.plain, nullptr);
  ASSERT_NE(dynamic_cast<RuleBroadcast*>(split.broadcast), nullptr);
  EXPECT_NE(split.broadcast, split.rule.get());
  EXPECT_EQ(split.broadcast->SvcResolved(), split.service.get());
  EXPECT_EQ(split.broadcast->Origin(), split.original.get());
}

TEST(RuleBroadcastTest, MixedServiceGivesTwoNewRulesWithTheirOwnServices) {
  SplitCase split({{80, 0}, {137, 1}});
  ASSERT_NE(split.plain, nullptr);
  ASSERT_NE(dynamic_cast<RuleBroadcast*>(split.broadcast), nullptr);
  EXPECT_NE(split.plain, split.rule.get());
  EXPECT_EQ(dynamic_cast<RuleBroadcast*>(split.plain), nullptr);

  Service* plain_service = split.plain->SvcResolved();
  Service* broadcast_service = split.broadcast->SvcResolved();
  EXPECT_NE(plain_service, split.service.get());
  EXPECT_STREQ(plain_service->Name(), "svc");
  EXPECT_STREQ(broadcast_service->Name(), "svc-Broadcast");
  // The new services are the caller's.
  delete plain_service;
  delete broadcast_service;
}

TEST(RuleBroadcastTest, ABroadcastRuleIsNotCutAgainAndItsPlainCopyIsPlain) {
  SplitCase split({{80, 0}, {137, 1}});
  RuleBroadcast broadcast(*split.rule);
  Rule* sentinel = split.rule.get();
  Rule* plain = sentinel;
  Rule* half = nullptr;
  broadcast.BroadcastSplit(&plain, &half);
  EXPECT_EQ(half, &broadcast);
  EXPECT_EQ(plain, sentinel);
  std::unique_ptr<Rule> copy(new Rule(broadcast));
  EXPECT_EQ(dynamic_cast<RuleBroadcast*>(copy.get()), nullptr);
  EXPECT_EQ(copy->Origin(), split.original.get());
  delete split.plain->SvcResolved();
  delete split.broadcast->SvcResolved();
}

}  // namespace
