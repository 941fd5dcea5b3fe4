#include "model/range.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "model/model_fixture.h"

namespace {

simplerange parsed(const char* text) {
  simplerange out{0, 0, RS_ADDRESSES};
  EXPECT_EQ(parse_range(text, &out), 0) << text;
  return out;
}

TEST(RangeTest, ConstructorOrdersBoundsAndTimeKeepsTheGrain) {
  Range swapped(9, 3, RT_NUMBER, RS_ADDRESSES);
  EXPECT_EQ(swapped.Start(), 3u);
  EXPECT_EQ(swapped.End(), 9u);
  Range time(7, 12, RT_TIME, RS_ADDRESSES);
  EXPECT_EQ(time.Start(), 5u);
  EXPECT_EQ(time.End(), 10u);
  time.End(2);  // the setters swap but don't round
  EXPECT_EQ(time.Start(), 2u);
  EXPECT_EQ(time.End(), 5u);
}

TEST(RangeTest, AdjacencyNeedsOneTypeAndDoesNotWrap) {
  Range low(1, 5, RT_NUMBER, RS_ADDRESSES), high(6, 9, RT_NUMBER, RS_ADDRESSES);
  EXPECT_TRUE(low.Adjacent(high));
  EXPECT_TRUE(high.Adjacent(low));
  Range address(6, 9, RT_ADDRESS, RS_ADDRESSES);
  EXPECT_FALSE(low.Adjacent(address));
  EXPECT_FALSE(Range(1, 7, RT_NUMBER, RS_ADDRESSES).Intersects(address));
  EXPECT_TRUE(Range(7, 7, RT_NUMBER, RS_ADDRESSES).SubsetOf(address));
  Range top(0xFFFFFFF0u, 0xFFFFFFFFu, RT_NUMBER, RS_ADDRESSES), bottom(0, 4, RT_NUMBER, RS_ADDRESSES);
  EXPECT_FALSE(top.Adjacent(bottom));
  EXPECT_FALSE(bottom.Adjacent(top));
}

TEST(RangeTest, ProperSubsetMustNotShareABound) {
  Range outer(1, 9, RT_NUMBER, RS_ADDRESSES);
  EXPECT_TRUE(Range(2, 8, RT_NUMBER, RS_ADDRESSES).ProperSubsetOf(outer));
  EXPECT_FALSE(Range(1, 8, RT_NUMBER, RS_ADDRESSES).ProperSubsetOf(outer));
  EXPECT_TRUE(Range(1, 8, RT_NUMBER, RS_ADDRESSES).SubsetOf(outer));
}

TEST(RangeTest, CuttingAndSplitting) {
  Range range(1, 9, RT_NUMBER, RS_ADDRESSES);
  range.Exclude(Range(0, 3, RT_NUMBER, RS_ADDRESSES));
  EXPECT_EQ(range.Start(), 4u);
  range.Exclude(Range(8, 20, RT_NUMBER, RS_ADDRESSES));
  EXPECT_EQ(range.End(), 7u);
  std::unique_ptr<Range> upper(range.Split(Range(5, 5, RT_NUMBER, RS_ADDRESSES)));
  EXPECT_EQ(range.End(), 4u);
  EXPECT_EQ(upper->Start(), 6u);
  EXPECT_EQ(upper->End(), 7u);
  EXPECT_EQ(range.Intersection(range), &range);
  EXPECT_EQ(range.Intersection(*upper), nullptr);
  std::unique_ptr<Range> common(range.Intersection(Range(0, 4, RT_NUMBER, RS_ADDRESSES)));
  EXPECT_EQ(common->Start(), 4u);
  EXPECT_EQ(common->End(), 4u);
}

TEST(RangeTest, ParsesTheFourNotations) {
  simplerange prefix = parsed("10.0.0.1/24");
  EXPECT_EQ(prefix.start, ip("10.0.0.0"));
  EXPECT_EQ(prefix.end, ip("10.0.0.255"));
  EXPECT_EQ(prefix.style, RS_PREFIX);
  EXPECT_EQ(parsed("10.0.0.1/255.255.255.0").style, RS_DOTTED_MASK);
  simplerange numeric = parsed("10.0.0.1/0xFFFFFF00");
  EXPECT_EQ(numeric.style, RS_NUMERIC_MASK);
  EXPECT_EQ(numeric.end, ip("10.0.0.255"));
  simplerange all = parsed("0.0.0.0/0");
  EXPECT_EQ(all.start, 0u);
  EXPECT_EQ(all.end, 0xFFFFFFFFu);
  simplerange host = parsed("1.2.3.4/32");
  EXPECT_EQ(host.start, host.end);
  EXPECT_EQ(host.style, RS_PREFIX);
  simplerange pair = parsed("10.0.0.1-10.0.0.9");
  EXPECT_EQ(pair.end - pair.start, 8u);
  EXPECT_EQ(ip("010.0.0.1"), ip("8.0.0.1"));
  EXPECT_EQ(ip("0x0a.0.0.1"), ip("10.0.0.1"));
}

TEST(RangeTest, RejectsBadText) {
  simplerange out{7, 7, RS_ADDRESSES};
  for (const char* bad : {"10.0.0.1/255.0.255.0", "10.0.0.9-10.0.0.1", "10.0.0.1-10.0.0.2/24", "1.2.3",
                          "1.2.3.4.5", "1..2.3", "256.0.0.1", "1.2.3.4/", "1.2.3.4/33x", "1.2.3.4/33",
                          "1.2.3.4/0x1FFFFFFFF", "", "-", "/", "a.b.c.d", "1.2.3.-1"})
    EXPECT_EQ(parse_range(bad, &out), 1) << bad;
  EXPECT_EQ(out.start, 7u);
  uint32_t value = 9;
  EXPECT_EQ(parse_ipv4addr("1.2.3.4 ", &value), 1);
  EXPECT_EQ(value, 9u);
}

TEST(RangeTest, ShowsAnAlignedBlockInItsWrittenStyle) {
  simplerange block = parsed("10.0.0.0/24");
  EXPECT_EQ(Range(&block).toString(), "10.0.0.0/24");
  block.style = RS_DOTTED_MASK;
  EXPECT_EQ(Range(&block).toString(), "10.0.0.0/255.255.255.0");
  block.style = RS_NUMERIC_MASK;
  EXPECT_EQ(Range(&block).toString(), "10.0.0.0/0xFFFFFF00");
  block.style = RS_ADDRESSES;
  EXPECT_EQ(Range(&block).toString(), "10.0.0.0-10.0.0.255");
  EXPECT_EQ(Range(&block).toString(1), "10.0.0.0 - 10.0.0.255");
  Range unaligned(ip("10.0.0.1"), ip("10.0.0.254"), RT_ADDRESS, RS_PREFIX);
  EXPECT_EQ(unaligned.toString(), "10.0.0.1-10.0.0.254");
  Range odd_block(ip("10.0.0.2"), ip("10.0.0.5"), RT_ADDRESS, RS_PREFIX);  // xor is 7, not a block
  EXPECT_EQ(odd_block.toString(), "10.0.0.2-10.0.0.5");
  Range host(ip("10.0.0.1"), ip("10.0.0.1"), RT_ADDRESS, RS_PREFIX);
  EXPECT_EQ(host.toString(1), "10.0.0.1");
  EXPECT_EQ(Range(0, 0xFFFFFFFFu, RT_ADDRESS, RS_PREFIX).toString(), "0.0.0.0/0");
  std::ostringstream dump;
  Range(&block).DumpRange(dump);
  EXPECT_EQ(dump.str(), "10.0.0.0 - 10.0.0.255");
}

TEST(RangeTest, ShowsNumbersAndTimes) {
  EXPECT_EQ(Range(80, 80, RT_NUMBER, RS_ADDRESSES).toString(), "80");
  EXPECT_EQ(Range(1, 1023, RT_NUMBER, RS_ADDRESSES).toString(), "1 - 1023");
  Range time(8 * 60 + 5, 17 * 60 + 30, RT_TIME, RS_ADDRESSES);
  EXPECT_EQ(time.toString(0), "08:05 17:30");
  EXPECT_EQ(time.toString(1), " 8  5 17 30");
}

}  // namespace
