#include "model/time.h"

int Time::next_unique_id_ = 1;

Time::Time(const char* name, TList<DayOfWeek>* days, const char* screen, const char* description)
    : Entity(name, screen, description, 0), days_(days != nullptr ? days : new TList<DayOfWeek>) {
  for (RangeList*& list : week_) list = new RangeList;
}

Time::~Time() {
  days_->Delete_Data();
  delete days_;
  for (RangeList* list : week_) delete list;
}

int Time::UniqueId() {
  if (unique_id_ == -1) unique_id_ = next_unique_id_++;
  return unique_id_;
}

void Time::ResetUniqueId() { next_unique_id_ = 1; }

void Time::CleanUp() { unique_id_ = -1; }

Entity* Time::Reduce() {
  if (reduced_) return this;
  for (TList_Cell<DayOfWeek>* cell = days_->Head(); cell != nullptr; cell = cell->Next()) {
    const DayOfWeek& entry = *cell->Data();
    if (entry.Day() == EVERYDAY) {
      for (RangeList* list : week_) list->Insert(entry.Times());
    } else {
      week_[entry.Day() - SUNDAY]->Insert(entry.Times());
    }
  }
  reduced_ = 1;
  return this;
}

std::ostream& Time::Enumerate(std::ostream& out, Enumerate_Type type) const {
  if (type != ENUM_NAME && Screen() != nullptr) out << "SCREEN \"" << Screen() << "\" ";
  out << '"' << Name() << "\" ";
  if (type == ENUM_NAME) return out << '\n';
  for (TList_Cell<DayOfWeek>* cell = days_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Enumerate(out << ' ');
  if (type == ENUM_FULL && Description() != nullptr) out << " COMMENT \"" << Description() << '"';
  return out << '\n';
}

std::ostream& Time::Print(std::ostream& out) const {
  out << '"' << Name() << "\"\tTIME\t";
  for (TList_Cell<DayOfWeek>* cell = days_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Print(out) << ' ';
  if (Screen() != nullptr) out << "\tSCREEN\t\"" << Screen() << '"';
  if (Description() != nullptr) out << "\tCOMMENT\t\"" << Description() << '"';
  return out;
}
