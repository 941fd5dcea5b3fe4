// StatementNumbers remembers the numbers, from 1, of the entries of a
// policy list as they were written, so that an entry, or a copy the
// compile made of it, can be named by its number after the compile has
// dropped, expanded and reordered the list.  Entries are recognised by the
// position of the statement that made them.
#ifndef FW_DRIVER_STATEMENT_NUMBERS_H
#define FW_DRIVER_STATEMENT_NUMBERS_H

#include <map>
#include <ostream>
#include <tuple>

#include "model/entity.h"

class StatementNumbers {
 public:
  explicit StatementNumbers(const TList<Entity>& written);

  // The entry's number, or 0 for an entry that no statement of the list made.
  int Of(const Entity& entry) const;
  // "<what> <number> (file:line)" for an entry of the list.
  std::ostream& Name(std::ostream& out, const char* what, const Entity& entry) const;
  // The same, ": " and the entry's saved form with its line end.
  std::ostream& Describe(std::ostream& out, const char* what, const Entity& entry) const;

 private:
  using Key = std::tuple<const char*, int, int>;
  static Key KeyOf(const SourcePosition& position) { return {position.file, position.line, position.column}; }

  std::map<Key, int> numbers_;
};

#endif
