// Time names the hours of the week during which a rule holds: a list of
// days with time ranges, reduced on demand to one sorted list a weekday.
// At most 31 time objects may be in use in one compile, which is why ids
// count from 1.
#ifndef FW_MODEL_TIME_H
#define FW_MODEL_TIME_H

#include <ostream>

#include "model/day_of_week.h"
#include "model/entity.h"

class Time : public Entity {
 public:
  // Takes `days` with its entries; null starts with none.
  Time(const char* name, TList<DayOfWeek>* days, const char* screen, const char* description);
  ~Time() override;

  const TList<DayOfWeek>& Days() const { return *days_; }
  // The reduced ranges of a weekday, SUNDAY to SATURDAY.
  const RangeList& DayList(Day day) const { return *week_[day - SUNDAY]; }
  int Reduced() const { return reduced_; }

  // Given on first demand from a class-wide counter that starts at 1.
  int UniqueId();
  static void ResetUniqueId();

  // Forgets the id; the reduced lists stay.
  void CleanUp() override;
  // Fills the seven weekday lists once; an EVERYDAY entry goes to all.
  Entity* Reduce() override;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

 private:
  static const int kWeekdays = 7;
  int unique_id_ = -1;
  int reduced_ = 0;
  TList<DayOfWeek>* days_;
  RangeList* week_[kWeekdays];
  static int next_unique_id_;
};

#endif
