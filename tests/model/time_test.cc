#include "model/time.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

DayOfWeek* NewDay(Day day, std::initializer_list<std::pair<int, int>> minutes) {
  RangeList* hours = new RangeList;
  for (auto [from, to] : minutes) hours->Insert(Range(from, to, RT_TIME, RS_ADDRESSES));
  return new DayOfWeek(day, hours);
}

std::string Hours(const RangeList& list) {
  std::ostringstream out;
  list.Enumerate(out);
  return out.str();
}

TEST(TimeTest, EverydayGoesToAllDaysAndMergesWithOne) {
  TList<DayOfWeek>* days = new TList<DayOfWeek>;
  days->Append(*NewDay(EVERYDAY, {{8 * 60, 9 * 60}}));
  days->Append(*NewDay(MONDAY, {{8 * 60 + 30, 10 * 60}}));
  Time time("office", days, nullptr, nullptr);
  EXPECT_EQ(time.Reduce(), &time);
  EXPECT_EQ(Hours(time.DayList(MONDAY)), " { 08:00 10:00 }");
  for (Day day : {SUNDAY, TUESDAY, SATURDAY}) EXPECT_EQ(Hours(time.DayList(day)), " { 08:00 09:00 }");
}

TEST(TimeTest, EntriesOfOneDayMergeOnlyWhenTheyOverlap) {
  TList<DayOfWeek>* days = new TList<DayOfWeek>;
  days->Append(*NewDay(FRIDAY, {{60, 120}}));
  days->Append(*NewDay(FRIDAY, {{100, 200}, {600, 660}}));
  Time time("t", days, nullptr, nullptr);
  time.Reduce();
  time.Reduce();  // a second reduction must not add the entries again
  EXPECT_EQ(Hours(time.DayList(FRIDAY)), " { 01:00 03:20 10:00 11:00 }");
  EXPECT_EQ(time.DayList(THURSDAY).Length(), 0);
}

TEST(TimeTest, IdsStartAtOneAndCleanUpForgetsThem) {
  Time::ResetUniqueId();
  Time first("a", nullptr, nullptr, nullptr);
  Time second("b", nullptr, nullptr, nullptr);
  EXPECT_EQ(second.UniqueId(), 1);
  EXPECT_EQ(first.UniqueId(), 2);
  EXPECT_EQ(second.UniqueId(), 1);
  second.CleanUp();
  EXPECT_EQ(second.UniqueId(), 3);
  Time::ResetUniqueId();
  EXPECT_EQ(Time("c", nullptr, nullptr, nullptr).UniqueId(), 1);
}

TEST(TimeTest, SavedAndListedForms) {
  TList<DayOfWeek>* days = new TList<DayOfWeek>;
  days->Append(*NewDay(MONDAY, {{7 * 60, 19 * 60 + 7}}));
  days->Append(*NewDay(SUNDAY, {}));
  Time time("office hours", days, "gate", "weekdays");
  std::ostringstream printed, listed, named;
  time.Print(printed);
  time.Enumerate(listed, ENUM_FULL);
  time.Enumerate(named, ENUM_NAME);
  EXPECT_EQ(printed.str(), "\"office hours\"\tTIME\tMONDAY  7  0 19  5  SUNDAY  \tSCREEN\t\"gate\"\tCOMMENT\t\"weekdays\"");
  EXPECT_EQ(listed.str(), "SCREEN \"gate\" \"office hours\"  MONDAY { 07:00 19:05 } SUNDAY { } COMMENT \"weekdays\"\n");
  EXPECT_EQ(named.str(), "\"office hours\" \n");
}

}  // namespace
