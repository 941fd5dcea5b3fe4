#include "model/day_of_week.h"

namespace {

const char* const kDayWords[] = {"EVERYDAY", "SUNDAY",   "MONDAY", "TUESDAY",
                                 "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY"};

}  // namespace

DayOfWeek::DayOfWeek(::Day day, RangeList* times)
    : day_(day), times_(times != nullptr ? times : new RangeList) {}

DayOfWeek::~DayOfWeek() { delete times_; }

std::ostream& DayOfWeek::PrintDay(std::ostream& out) const { return out << kDayWords[day_]; }

std::ostream& DayOfWeek::Print(std::ostream& out) const {
  PrintDay(out) << ' ';
  for (TList_Cell<Range>* cell = times_->List().Head(); cell != nullptr; cell = cell->Next())
    out << cell->Data()->toString(1) << ' ';
  return out;
}

std::ostream& DayOfWeek::Enumerate(std::ostream& out) const {
  PrintDay(out);
  return times_->Enumerate(out);
}
