#include "driver/statement_numbers.h"

StatementNumbers::StatementNumbers(const TList<Entity>& written) {
  int number = 0;
  for (TList_Cell<Entity>* cell = written.Head(); cell != nullptr; cell = cell->Next())
    numbers_.emplace(KeyOf(cell->Data()->Position()), ++number);
}

int StatementNumbers::Of(const Entity& entry) const {
  if (!entry.HasPosition()) return 0;
  auto found = numbers_.find(KeyOf(entry.Position()));
  return found != numbers_.end() ? found->second : 0;
}

std::ostream& StatementNumbers::Name(std::ostream& out, const char* what, const Entity& entry) const {
  SourcePosition position = entry.Position();
  return out << what << ' ' << Of(entry) << " (" << position.file << ':' << position.line << ')';
}

std::ostream& StatementNumbers::Describe(std::ostream& out, const char* what, const Entity& entry) const {
  return Name(out, what, entry) << ": " << entry;
}
