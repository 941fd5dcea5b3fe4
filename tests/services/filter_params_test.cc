#include "services/filter_params.h"

#include <gtest/gtest.h>

#include <memory>

#include "services/services_fixture.h"

namespace {

using Set = std::unique_ptr<FilterParams>;

class FilterParamsTest : public ::testing::Test {
 protected:
  Engines engines_;
};

TEST_F(FilterParamsTest, IncludeIsOnePassAndAppendsTheMerger) {
  Set set(params_set(engines_.tcp, {0}, {{1, 5}, {20, 20}}));
  set->Include(Range(6, 9, RT_NUMBER, RS_ADDRESSES));
  EXPECT_EQ(listed(set->Ranges()), (Bounds{{20, 20}, {1, 9}}));
  // A list made of touching ranges stays as it is where the walk has passed.
  Set late(params_set(engines_.tcp, {0}, {{1, 6}, {7, 10}}));
  late->Include(Range(9, 12, RT_NUMBER, RS_ADDRESSES));
  EXPECT_EQ(listed(late->Ranges()), (Bounds{{1, 6}, {7, 12}}));
  late->Include(late->Ranges());
  EXPECT_EQ(listed(late->Ranges()), (Bounds{{1, 6}, {7, 12}}));
}

TEST_F(FilterParamsTest, ExcludeSplitsTrimsAndKeepsTheEmptySet) {
  Set set(params_set(engines_.tcp, {0}, {{1, 5}, {10, 20}}));
  set->Exclude(Range(3, 3, RT_NUMBER, RS_ADDRESSES));
  EXPECT_EQ(listed(set->Ranges()), (Bounds{{1, 2}, {10, 20}, {4, 5}}));
  set->Exclude(Range(15, 30, RT_NUMBER, RS_ADDRESSES));
  set->Exclude(Range(0, 1, RT_NUMBER, RS_ADDRESSES));
  EXPECT_EQ(listed(set->Ranges()), (Bounds{{2, 2}, {10, 14}, {4, 5}}));
  set->Exclude(Range(0, 65535, RT_NUMBER, RS_ADDRESSES));
  EXPECT_TRUE(set->Ranges().Empty());
  Set own(params_set(engines_.tcp, {0}, {{1, 5}}));
  own->Exclude(own->Ranges());
  EXPECT_TRUE(own->Ranges().Empty());
}

TEST_F(FilterParamsTest, MatchingComparesEngineParamsAndBroadcastButNotDirection) {
  Set set(params_set(engines_.tcp, {0}, {{1, 100}}));
  Set reverse(params_set(engines_.tcp, {0}, {{50, 60}}, 0, FD_REVERSE));
  Set other_params(params_set(engines_.tcp, {1}, {{50, 60}}));
  Set broadcast_text(params_set(engines_.tcp, {0}, {{50, 60}}, -1));
  Set broadcast_builtin(params_set(engines_.tcp, {0}, {{50, 60}}, 1));
  EXPECT_TRUE(reverse->SubsetOf(*set));
  EXPECT_TRUE(set->Intersects(*reverse));
  EXPECT_FALSE(other_params->SubsetOf(*set));
  EXPECT_FALSE(set->Intersects(*other_params));
  EXPECT_FALSE(broadcast_text->Intersects(*broadcast_builtin));
  EXPECT_FALSE(broadcast_text->SubsetOf(*broadcast_builtin));
  Set empty(params_set(engines_.tcp, {0}, {}));
  EXPECT_TRUE(empty->SubsetOf(*set));
  EXPECT_FALSE(empty->Intersects(*set));
}

TEST_F(FilterParamsTest, ContainmentNeedsOneSingleRange) {
  Set touching(params_set(engines_.tcp, {0}, {{1, 5}, {6, 9}}));
  EXPECT_FALSE(touching->Contains(Range(4, 7, RT_NUMBER, RS_ADDRESSES)));
  EXPECT_TRUE(touching->Contains(Range(6, 9, RT_NUMBER, RS_ADDRESSES)));
  Set inner(params_set(engines_.tcp, {0}, {{4, 7}}));
  EXPECT_FALSE(inner->SubsetOf(*touching));
}

TEST_F(FilterParamsTest, IntersectionIsForwardAndUnmerged) {
  Set left(params_set(engines_.tcp, {0}, {{10, 20}, {1, 5}}, 0, FD_REVERSE));
  Set right(params_set(engines_.tcp, {0}, {{4, 12}, {15, 30}}));
  Set common(left->Intersection(*right));
  ASSERT_NE(common, nullptr);
  EXPECT_EQ(listed(common->Ranges()), (Bounds{{10, 12}, {15, 20}, {4, 5}}));
  EXPECT_EQ(common->Direction(), FD_FORWARD);
  EXPECT_EQ(common->stateEngine(), &engines_.tcp);
  Set apart(params_set(engines_.tcp, {0}, {{100, 200}}));
  EXPECT_EQ(left->Intersection(*apart), nullptr);
  Set self(left->Intersection(*left));
  EXPECT_EQ(listed(self->Ranges()), (Bounds{{10, 20}, {1, 5}}));
}

TEST_F(FilterParamsTest, ConflictRules) {
  Set set(params_set(engines_.tcp, {0}, {{1, 100}}));
  Set same(params_set(engines_.tcp, {0}, {{50, 60}}));
  Set other_params(params_set(engines_.tcp, {7}, {{50, 60}}));
  Set rival(params_set(engines_.rival, {0}, {{50, 60}}));
  Set ranked(params_set(engines_.ranked, {0}, {{50, 60}}));
  Set udp(params_set(engines_.udp, {}, {{50, 60}}));
  Set rival_apart(params_set(engines_.rival, {0}, {{200, 300}}));
  Set rival_broadcast(params_set(engines_.rival, {0}, {{50, 60}}, -1));
  Set rival_reverse(params_set(engines_.rival, {0}, {{50, 60}}, 0, FD_REVERSE));
  EXPECT_FALSE(set->Conflicts(*set));
  EXPECT_FALSE(set->Conflicts(*same));
  EXPECT_TRUE(set->Conflicts(*other_params));
  EXPECT_TRUE(set->Conflicts(*rival));
  EXPECT_TRUE(rival->Conflicts(*set));
  EXPECT_FALSE(set->Conflicts(*ranked));
  EXPECT_FALSE(set->Conflicts(*udp));
  EXPECT_FALSE(set->Conflicts(*rival_apart));
  EXPECT_FALSE(set->Conflicts(*rival_broadcast));
  EXPECT_TRUE(set->Conflicts(*rival_reverse));
}

TEST_F(FilterParamsTest, LargeSetsGiveTheSameAnswersAsSmallOnes) {
  Bounds many, overlapping;
  for (uint32_t i = 0; i < 200; ++i) many.emplace_back(10 * i, 10 * i + 4);
  overlapping.emplace_back(0, 3000);  // long range first: the sorted view must keep its reach
  for (uint32_t i = 0; i < 100; ++i) overlapping.emplace_back(5000 + 3 * i, 5000 + 3 * i + 1);
  Set big(params_set(engines_.tcp, {0}, many));
  Set wide(params_set(engines_.tcp, {0}, overlapping));
  Set probe(params_set(engines_.tcp, {0}, {{2995, 2999}, {5006, 5007}}));
  Set gap_probe(params_set(engines_.tcp, {0}, {{15, 19}, {25, 29}, {35, 39}, {45, 49}, {55, 59}, {65, 69},
                                                {75, 79}, {85, 89}, {95, 99}}));
  EXPECT_TRUE(probe->SubsetOf(*wide));
  EXPECT_FALSE(gap_probe->Intersects(*big));
  EXPECT_TRUE(gap_probe->Intersects(*wide));
  Set rival(params_set(engines_.rival, {0}, many));
  EXPECT_TRUE(rival->Conflicts(*wide));
  EXPECT_FALSE(gap_probe->SubsetOf(*big));
  Set every_other(params_set(engines_.tcp, {0}, Bounds(many.begin(), many.begin() + 100)));
  EXPECT_TRUE(every_other->SubsetOf(*big));
}

}  // namespace
