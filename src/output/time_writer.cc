#include "output/time_writer.h"

#include "model/range_list.h"
#include "model/registry.h"
#include "model/time.h"

std::ostream& TimeWriter::GenerateTimeFile(std::ostream& out, const Registry& registry) {
  int used = 0;
  for (TList_Cell<Entity>* cell = registry.Times().Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Used()) ++used;
  out << used << '\n';
  for (TList_Cell<Entity>* cell = registry.Times().Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Used()) GenerateData(out, *static_cast<Time*>(cell->Data()));
  return out;
}

std::ostream& TimeWriter::GenerateData(std::ostream& out, Time& time) {
  out << '"' << time.Name() << "\"\n" << time.UniqueId() << '\n';
  for (int day = SUNDAY; day <= SATURDAY; ++day) GenerateData(out, time.DayList(static_cast<Day>(day)));
  return out;
}

std::ostream& TimeWriter::GenerateData(std::ostream& out, const RangeList& ranges) {
  out << ranges.Length() << '\n';
  for (TList_Cell<Range>* cell = ranges.List().Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Enumerate(out) << '\n';
  return out;
}
