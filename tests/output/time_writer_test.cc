#include "output/time_writer.h"

#include <sstream>

#include "model/day_of_week.h"
#include "model/registry.h"
#include "model/time.h"
#include "output/output_fixture.h"

namespace {

// A day with one time range, given in minutes since midnight.
DayOfWeek* day_with(Day day, uint32_t start, uint32_t end) {
  RangeList* times = new RangeList;
  times->Insert(Range(start, end, RT_TIME, RS_ADDRESSES));
  return new DayOfWeek(day, times);
}

TEST(TimeWriterTest, TableHoldsUsedTimesWithSevenDayLists) {
  Time::ResetUniqueId();
  Registry registry;
  TList<DayOfWeek>* days = new TList<DayOfWeek>;
  days->Append(*day_with(MONDAY, 8 * 60 + 3, 12 * 60));
  days->Append(*day_with(WEDNESDAY, 17 * 60, 13 * 60 + 30));
  Time* office = new Time("office", days, nullptr, nullptr);
  Time* night = new Time("night", nullptr, nullptr, nullptr);
  registry.Times(*night);
  registry.Times(*office);
  for (TList_Cell<Entity>* cell = registry.Times().Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Used(0);
  office->Used(1);
  office->Reduce();
  ASSERT_EQ(office->UniqueId(), 1);
  std::ostringstream out;
  TimeWriter::GenerateTimeFile(out, registry);
  // Monday starts at 08:03, written on the five-minute grain; Wednesday's
  // range was written backwards.
  EXPECT_EQ(out.str(),
            "1\n"
            "\"office\"\n"
            "1\n"
            "0\n"
            "1\n08:00 12:00\n"
            "0\n"
            "1\n13:30 17:00\n"
            "0\n"
            "0\n"
            "0\n");
}

}  // namespace
