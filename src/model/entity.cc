#include "model/entity.h"

#include <cstdlib>
#include <cstring>

#include "model/name_index.h"
#include "support/fwi18n.h"

namespace {

char* copy_or_null(const char* text) { return text != nullptr ? strdup(text) : nullptr; }

bool equal_or_both_null(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return strcmp(a, b) == 0;
}

bool contains(const char* haystack, const char* needle) {
  return haystack != nullptr && strstr(haystack, needle) != nullptr;
}

bool is_star(const char* screen) { return screen != nullptr && strcmp(screen, "*") == 0; }

}  // namespace

unsigned long Entity::renames_ = 0;

Entity::Entity(const char* name, const char* screen, const char* description, int used)
    : name_(strdup(name != nullptr ? name : "ENTITY")),
      screen_(copy_or_null(screen)),
      description_(copy_or_null(description)),
      used_(used),
      statement_(current_statement_) {}

std::vector<SourcePosition> Entity::statements_(1);
int Entity::current_statement_ = 0;

void Entity::StatementPosition(const SourcePosition& position) {
  if (!position.Known()) {
    current_statement_ = 0;
    return;
  }
  statements_.push_back(position);
  current_statement_ = static_cast<int>(statements_.size() - 1);
}

Entity::~Entity() {
  free(name_);
  free(screen_);
  free(description_);
}

int Entity::Resolve(Config_Objects, TList<Entity>&, std::ostream&) { return 0; }

int Entity::Resolve2(Config_Objects, TList<Entity>&, std::ostream&) { return 0; }

int Entity::ResolveAlgorithms(Config_Objects, TList<Entity>&, Skip_Version, std::ostream&) {
  return 0;
}

int Entity::Refer(Config_Objects, const char*, int) const { return 0; }

void Entity::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind != CO_SCREEN || screen_ == nullptr || old_name == nullptr) return;
  if (strcmp(screen_, old_name) != 0 || screen_ == new_name) return;
  free(screen_);
  screen_ = copy_or_null(new_name);
}

int Entity::Member(const char*, int, int) { return 223; }

std::ostream& Entity::Enumerate(std::ostream& out, Enumerate_Type type) const {
  if (type != ENUM_NAME && screen_ != nullptr) out << "SCREEN \"" << screen_ << "\" ";
  out << '"' << name_ << "\" ";
  if (type == ENUM_FULL && description_ != nullptr) out << " COMMENT \"" << description_ << '"';
  return out;
}

int Entity::Match(const char* screen, const char* name, const char*, int exact) const {
  bool any_screen = screen == nullptr || is_star(screen);
  if (!exact) {
    if (screen == nullptr && name == nullptr) return 1;
    if (!any_screen && !equal_or_both_null(screen_, screen)) return 0;
    return ContainsString(name);
  }
  if (name == nullptr) return 0;
  if (!any_screen && (screen_ == nullptr || strcmp(screen_, screen) != 0)) return 0;
  return strcmp(name_, name) == 0;
}

std::ostream& Entity::Print(std::ostream& out) const { return out << '"' << name_ << '"'; }

void Entity::Name(const char* name) {
  if (name == nullptr || name == name_) return;
  free(name_);
  name_ = strdup(name);
  ++renames_;
}

void Entity::ClearScreen() {
  free(screen_);
  screen_ = nullptr;
}

void Entity::Description(const char* description) {
  if (description == description_) return;
  free(description_);
  description_ = copy_or_null(description);
}

bool Entity::SameName(const Entity& other) const { return strcmp(name_, other.name_) == 0; }

// Exact mode: a general searcher finds general objects (also those written
// for "*"), a "*" searcher only truly general ones, and a screen-bound
// searcher only objects of its own screen.
bool Entity::ScreenPasses(const Entity& candidate) const {
  const char* candidate_screen = candidate.screen_;
  if (screen_ == nullptr) return candidate_screen == nullptr || is_star(candidate_screen);
  if (is_star(screen_)) return candidate_screen == nullptr;
  return candidate_screen != nullptr && strcmp(screen_, candidate_screen) == 0;
}

TList_Cell<Entity>* Entity::FindSelfCell(const TList<Entity>& list, int any) const {
  if (const NameIndex* index = NameIndex::Of(list)) {
    const NameIndex::Cells* named = index->Find(name_);
    if (named == nullptr) return nullptr;
    for (TList_Cell<Entity>* cell : *named)
      if (any || ScreenPasses(*cell->Data())) return cell;
    return nullptr;
  }
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    const Entity& candidate = *cell->Data();
    if (SameName(candidate) && (any || ScreenPasses(candidate))) return cell;
  }
  return nullptr;
}

Entity* Entity::FindSelf(const TList<Entity>& list, int any) const {
  TList_Cell<Entity>* cell = FindSelfCell(list, any);
  return cell != nullptr ? cell->Data() : nullptr;
}

TList<Entity>* Entity::FindSelfAll(const TList<Entity>& list) const {
  TList<Entity>* found = nullptr;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    Entity& candidate = *cell->Data();
    if (!SameName(candidate)) continue;
    bool passes = screen_ == nullptr ? candidate.screen_ == nullptr
                                     : is_star(screen_) || equal_or_both_null(screen_, candidate.screen_);
    if (!passes) continue;
    if (found == nullptr) found = new TList<Entity>;
    found->Append(candidate);
  }
  return found;
}

void Entity::DeleteSelf(TList<Entity>& list) const {
  list.Delete_Data_Cell(FindSelfCell(list, 0));
}

int Entity::InList(const TList<Entity>& list) const { return FindSelf(list, 0) != nullptr; }

std::ostream& Entity::NotDefined(std::ostream& out, const char* name, const char* what) const {
  return out << fwi18n_text(46, 1, "Error: ") << '"' << name_ << "\" "
             << fwi18n_text(46, 2, "refers to undefined ") << what << ": \"" << name << "\"."
             << std::endl;
}

int Entity::Resolve_Names(TList<Entity>& names, TList<Entity>& resolved, TList<Entity>& list,
                          const char* what, std::ostream& out) const {
  int misses = 0;
  for (TList_Cell<Entity>* cell = names.Head(); cell != nullptr; cell = cell->Next()) {
    Entity* found = cell->Data()->FindSelf(list, 1);
    if (found != nullptr) {
      resolved.Append(*found);
    } else {
      NotDefined(out, cell->Data()->Name(), what);
      ++misses;
    }
  }
  return misses;
}

int Entity::Refer_List(const TList<Entity>& list, const char* name) const {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    if (strcmp(cell->Data()->Name(), name) == 0) return 1;
  return 0;
}

void Entity::Rename_Reference_List(TList<Entity>& list, const char* old_name, const char* new_name) {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    if (strcmp(cell->Data()->Name(), old_name) == 0) cell->Data()->Name(new_name);
}

void Entity::Mark_List(TList<Entity>& list) {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    cell->Data()->Used(1);
    cell->Data()->Mark();
  }
}

int Entity::ContainsString(const char* needle) const {
  if (needle == nullptr) return 1;
  return contains(screen_, needle) || contains(name_, needle) || contains(description_, needle);
}

namespace {

int AnyMemberReaches(std::initializer_list<const TList<Entity>*> members, Entity& start) {
  for (const TList<Entity>* list : members) {
    if (list == nullptr) continue;
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next())
      if (cell->Data()->DetectCycle(start)) return 1;
  }
  return 0;
}

}  // namespace

int Entity::DetectCycleFromMembers(std::initializer_list<const TList<Entity>*> members) {
  Used(1);
  return AnyMemberReaches(members, *this);
}

int Entity::DetectCycleThroughMembers(Entity& start, std::initializer_list<const TList<Entity>*> members) {
  if (this == &start) return 1;
  if (Used()) return 0;
  Used(1);
  return AnyMemberReaches(members, start);
}

std::ostream& operator<<(std::ostream& out, const Entity& entity) {
  return entity.Print(out) << ";\n";
}
