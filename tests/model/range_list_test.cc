#include "model/range_list.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string shown(const RangeList& list) {
  std::ostringstream out;
  list.Enumerate(out);
  return out.str();
}

Range time(uint32_t start, uint32_t end) { return Range(start, end, RT_TIME, RS_ADDRESSES); }

TEST(RangeListTest, TouchingRangesMergeAndOthersStaySorted) {
  RangeList touching;
  touching.Insert(time(20, 30));
  touching.Insert(time(10, 20));
  EXPECT_EQ(touching.Length(), 1);
  EXPECT_EQ(touching.List().Head()->Data()->Start(), 10u);
  EXPECT_EQ(touching.List().Head()->Data()->End(), 30u);

  RangeList apart;
  apart.Insert(time(25, 30));
  apart.Insert(time(10, 20));
  EXPECT_EQ(shown(apart), " { 00:10 00:20 00:25 00:30 }");
}

TEST(RangeListTest, InsertKeepsACopyOnTheGrain) {
  RangeList list;
  list.Insert(time(0, 10));
  Range inside = time(0, 5);
  list.Insert(inside);
  EXPECT_EQ(list.Length(), 1);
  EXPECT_EQ(list.List().Head()->Data()->End(), 10u);
  EXPECT_NE(list.List().Head()->Data(), &inside);
  list.Insert(Range(62, 64, RT_NUMBER, RS_ADDRESSES));  // another type: merges with nothing
  EXPECT_EQ(shown(list), " { 00:00 00:10 01:00 01:00 }");
}

TEST(RangeListTest, ARangeBridgingTwoSwallowsBoth) {
  RangeList list;
  list.Insert(time(0, 10));
  list.Insert(time(30, 40));
  list.Insert(time(60, 70));
  list.Insert(time(15, 25));
  list.Insert(time(10, 30));
  EXPECT_EQ(shown(list), " { 00:00 00:40 01:00 01:10 }");
  RangeList copy;
  copy.Insert(list);
  copy.Insert(copy);
  EXPECT_EQ(shown(copy), shown(list));
}

}  // namespace
