// DayOfWeek is one entry of a time object's definition: a day, or every
// day, with the time ranges that hold on it.
#ifndef FW_MODEL_DAY_OF_WEEK_H
#define FW_MODEL_DAY_OF_WEEK_H

#include <ostream>

#include "model/range_list.h"

enum Day { EVERYDAY = 0, SUNDAY, MONDAY, TUESDAY, WEDNESDAY, THURSDAY, FRIDAY, SATURDAY };

class DayOfWeek {
 public:
  // Takes `times` with its ranges; null starts with no range.
  DayOfWeek(::Day day, RangeList* times);
  DayOfWeek(const DayOfWeek&) = delete;
  DayOfWeek& operator=(const DayOfWeek&) = delete;
  ~DayOfWeek();

  ::Day Day() const { return day_; }
  RangeList& Times() const { return *times_; }
  // Adds the ranges of `other`, merging what overlaps or touches.
  void Merge(const RangeList& other) { times_->Insert(other); }

  // The day's word in upper case.
  std::ostream& PrintDay(std::ostream& out) const;
  // The saved form: the word, then each range as four numbers.
  std::ostream& Print(std::ostream& out) const;
  // The listing form: the word, then the ranges as hh:mm hh:mm in braces.
  std::ostream& Enumerate(std::ostream& out) const;

 private:
  ::Day day_;
  RangeList* times_;
};

#endif
