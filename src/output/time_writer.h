// TimeWriter writes the Time table: the time objects that some rule of an
// enabled interface uses, each with its id and its seven weekday lists.
#ifndef FW_OUTPUT_TIME_WRITER_H
#define FW_OUTPUT_TIME_WRITER_H

#include <ostream>

class RangeList;
class Registry;
class Time;

class TimeWriter {
 public:
  // The whole table: the count of used time objects, then each of them in
  // registry order.
  static std::ostream& GenerateTimeFile(std::ostream& out, const Registry& registry);
  // Time::GenerateData: quoted name, id, then the lists SUNDAY to SATURDAY.
  static std::ostream& GenerateData(std::ostream& out, Time& time);
  // RangeList::GenerateData: the number of ranges, then one "hh:mm hh:mm"
  // range a line.
  static std::ostream& GenerateData(std::ostream& out, const RangeList& ranges);
};

#endif
