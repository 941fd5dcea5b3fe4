#include "model/address_list.h"

#include "model/entity_text.h"

namespace {

TList<Entity>* list_or_empty(TList<Entity>* list) {
  return list != nullptr ? list : new TList<Entity>;
}

// Calls `apply` with the reduced set of each member, in order.
template <class Apply>
void for_each_reduced(TList<Entity>* members, Apply apply) {
  if (members == nullptr) return;
  for (TList_Cell<Entity>* cell = members->Head(); cell != nullptr; cell = cell->Next())
    if (Address* member = dynamic_cast<Address*>(cell->Data()->Reduce())) apply(*member);
}

std::ostream& enumerate_names(std::ostream& out, const TList<Entity>& names) {
  out << " {";
  for (TList_Cell<Entity>* cell = names.Head(); cell != nullptr; cell = cell->Next())
    out << " \"" << cell->Data()->Name() << '"';
  return out << " }";
}

std::ostream& print_names(std::ostream& out, const TList<Entity>& names, const char* mark) {
  for (TList_Cell<Entity>* cell = names.Head(); cell != nullptr; cell = cell->Next())
    out << '\t' << mark << '"' << cell->Data()->Name() << '"';
  return out;
}

}  // namespace

AddressList::AddressList(const char* name, TList<Entity>* include, TList<Entity>* exclude,
                         const char* screen, const char* description)
    : Address(name, screen, description, ADDRESS_GROUP),
      include_names_(list_or_empty(include)),
      exclude_names_(list_or_empty(exclude)),
      include_members_(nullptr),
      exclude_members_(nullptr),
      reduced_(0) {
  if (include_names_->Empty() && !exclude_names_->Empty())
    include_names_->Append(*new Entity("*", nullptr, nullptr, 0));
}

AddressList::~AddressList() {
  include_names_->Delete_Data();
  delete include_names_;
  exclude_names_->Delete_Data();
  delete exclude_names_;
  FreeMembers();
}

void AddressList::FreeMembers() {
  delete include_members_;
  delete exclude_members_;
  include_members_ = exclude_members_ = nullptr;
}

void AddressList::Mark() {
  if (include_members_ != nullptr) Mark_List(*include_members_);
  if (exclude_members_ != nullptr) Mark_List(*exclude_members_);
}

void AddressList::CleanUp() {
  reduced_ = 0;
  ClearRanges();
}

int AddressList::DetectCycle() { return DetectCycleFromMembers({include_members_, exclude_members_}); }

int AddressList::DetectCycle(Entity& start) {
  return DetectCycleThroughMembers(start, {include_members_, exclude_members_});
}

int AddressList::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_ADDRESS) return 0;
  FreeMembers();
  include_members_ = new TList<Entity>;
  exclude_members_ = new TList<Entity>;
  int misses = Resolve_Names(*include_names_, *include_members_, list, "ADDRESS", out);
  return misses + Resolve_Names(*exclude_names_, *exclude_members_, list, "ADDRESS", out);
}

int AddressList::Refer(Config_Objects kind, const char* name, int print) const {
  if (kind == CO_SCREEN) return Address::Refer(kind, name, print);
  if (kind != CO_ADDRESS || name == nullptr) return 0;
  if (!Refer_List(*include_names_, name) && !Refer_List(*exclude_names_, name)) return 0;
  if (print) entity_text_reference(*this, "ADDRESS");
  return 1;
}

void AddressList::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind != CO_ADDRESS) {
    Entity::RenameReference(kind, old_name, new_name);
    return;
  }
  if (old_name == nullptr || new_name == nullptr) return;
  Rename_Reference_List(*include_names_, old_name, new_name);
  Rename_Reference_List(*exclude_names_, old_name, new_name);
}

Entity* AddressList::Reduce() {
  if (reduced_) return this;
  reduced_ = 1;
  for_each_reduced(include_members_, [this](const Address& member) { Include(member); });
  for_each_reduced(exclude_members_, [this](const Address& member) { Exclude(member); });
  return this;
}

int AddressList::Member(const char* name, int remove, int second) {
  TList<Entity>& names = second ? *exclude_names_ : *include_names_;
  Entity placeholder(name, nullptr, nullptr, 0);
  if (remove) placeholder.DeleteSelf(names);
  else if (placeholder.FindSelf(names, 0) == nullptr) names.Append(*new Entity(name, nullptr, nullptr, 0));
  return 0;
}

std::ostream& AddressList::Enumerate(std::ostream& out, Enumerate_Type type) const {
  entity_text_head(out, *this, type) << "GROUP";
  if (type == ENUM_FULL) {
    enumerate_names(out, *include_names_);
    enumerate_names(out, *exclude_names_);
    entity_text_comment(out, *this);
  }
  return out << '\n';
}

std::ostream& AddressList::Print(std::ostream& out) const {
  out << '"' << Name() << "\"\tADDRESS";
  print_names(out, *include_names_, "");
  print_names(out, *exclude_names_, "!");
  return entity_text_tail(out, *this);
}
