#include "services/service.h"

#include <cstring>
#include <string>

#include "model/entity_text.h"

namespace {

const char kEtherEngine[] = "ether";

template <class T>
void free_owned(TList<T>* list) {
  if (list == nullptr) return;
  list->Delete_Data();
  delete list;
}

TList<Filter>* copies_of(const TList<Filter>* filters) {
  if (filters == nullptr) return nullptr;
  TList<Filter>* copy = new TList<Filter>;
  for (TList_Cell<Filter>* cell = filters->Head(); cell != nullptr; cell = cell->Next())
    copy->Append(*new Filter(*cell->Data()));
  return copy;
}

TList<FilterParams>* copies_of(const TList<FilterParams>& sets) {
  TList<FilterParams>* copy = new TList<FilterParams>;
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next())
    copy->Append(*new FilterParams(*cell->Data()));
  return copy;
}

// A fresh placeholder for each member name of the source.
TList<Entity>* placeholders_of(const TList<Entity>* members) {
  if (members == nullptr) return nullptr;
  TList<Entity>* copy = new TList<Entity>;
  for (TList_Cell<Entity>* cell = members->Head(); cell != nullptr; cell = cell->Next())
    copy->Append(*new Service(cell->Data()->Name(), nullptr, nullptr));
  return copy;
}

bool same_key(const FilterParams& a, const FilterParams& b) {
  return a.SameEngineAndParams(b) && a.Broadcast() == b.Broadcast() && a.Direction() == b.Direction();
}

std::string suffixed_name(const Entity& service, const char* suffix) {
  return std::string(service.Name()) + suffix;
}

bool is_word(const char* text, const char* word) { return strcmp(text, word) == 0; }

}  // namespace

Service::Service(const char* name, const char* screen, const char* comment)
    : Service(name, nullptr, nullptr, screen, comment) {}

Service::Service(const char* name, TList<Filter>* forward, TList<Filter>* reverse, const char* screen,
                 const char* comment)
    : Entity(name, screen, comment, 0),
      reduced_(0),
      type_(SERVICE_SINGLE),
      input_filters_(forward),
      input_reverse_filters_(reverse),
      input_services_(nullptr),
      resolved_services_(nullptr),
      filters_(new TList<FilterParams>),
      reverse_filters_(new TList<FilterParams>) {}

Service::Service(const char* name, TList<Entity>* members, const char* screen, const char* comment)
    : Service(name, nullptr, nullptr, screen, comment) {
  type_ = SERVICE_GROUP;
  input_services_ = members;
}

Service::Service(const Service& other)
    : Service(other.Name(), copies_of(other.input_filters_), copies_of(other.input_reverse_filters_),
              other.Screen(), other.Description()) {
  type_ = other.type_;
  input_services_ = placeholders_of(other.input_services_);
  Include(other);
}

Service::~Service() {
  free_owned(input_filters_);
  free_owned(input_reverse_filters_);
  free_owned(input_services_);
  delete resolved_services_;
  free_owned(filters_);
  free_owned(reverse_filters_);
}

Service* Service::Holding(const char* name, const char* screen, const char* comment,
                          TList<FilterParams>* sets) {
  Service* service = new Service(name, screen, comment);
  delete service->filters_;
  service->filters_ = sets;
  return service;
}

void Service::Include(const FilterParams& set, int reverse) {
  TList<FilterParams>& sets = reverse ? *reverse_filters_ : *filters_;
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next()) {
    if (same_key(*cell->Data(), set)) {
      cell->Data()->Include(set.Ranges());
      return;
    }
  }
  sets.Append(*new FilterParams(set));
}

void Service::Include(const TList<FilterParams>& sets, int reverse) {
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next())
    Include(*cell->Data(), reverse);
}

// The union of a service with itself is the service.
void Service::Include(const Service& other) {
  if (&other == this) return;
  Include(*other.filters_, 0);
  Include(*other.reverse_filters_, 1);
}

void Service::Exclude(const FilterParams& set) {
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->SameEngineAndParams(set)) cell->Data()->Exclude(set.Ranges());
}

void Service::Exclude(const TList<FilterParams>& sets) {
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next())
    Exclude(*cell->Data());
}

void Service::Exclude(const Service& other) { Exclude(*other.filters_); }

int Service::Intersects(const FilterParams& set) const {
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Intersects(set)) return 1;
  return 0;
}

int Service::Intersects(const TList<FilterParams>& sets) const {
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next())
    if (Intersects(*cell->Data())) return 1;
  return 0;
}

int Service::Intersects(const Service& other) const {
  return &other == this || Intersects(*other.filters_);
}

TList<FilterParams>* Service::Intersection(const FilterParams& set) const {
  if (!Intersects(set)) return nullptr;
  TList<FilterParams>* common = new TList<FilterParams>;
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (FilterParams* piece = cell->Data()->Intersection(set)) common->Append(*piece);
  return common;
}

Service* Service::Intersection(Service& other) {
  if (&other == this || SubsetOf(other)) return this;
  if (other.SubsetOf(*this)) return &other;
  Service* common = new Service(entity_text_joined(*this, " ^ ", other).c_str(), nullptr, nullptr);
  if (!Intersects(other)) return common;
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next()) {
    TList<FilterParams>* pieces = other.Intersection(*cell->Data());
    if (pieces == nullptr) continue;
    common->Include(*pieces, 0);
    free_owned(pieces);
  }
  return common;
}

Service* Service::Exclusion(Service& other) {
  if (!Intersects(other)) return this;
  if (Equal(other)) return nullptr;
  Service* rest = new Service(entity_text_joined(*this, " - ", other).c_str(), nullptr, nullptr);
  rest->Include(*this);
  rest->Exclude(other);
  return rest;
}

Service* Service::Merge(Service& other) {
  if (&other == this || Equal(other)) return this;
  Service* both = new Service(entity_text_joined(*this, " + ", other).c_str(), nullptr, nullptr);
  both->Include(*this);
  both->Include(other);
  return both;
}

int Service::Contains(const FilterParams& set) const {
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (set.SubsetOf(*cell->Data())) return 1;
  return 0;
}

int Service::SubsetOf(const Service& other) const {
  if (&other == this) return 1;
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (!other.Contains(*cell->Data())) return 0;
  return 1;
}

int Service::Equal(const Service& other) const { return SubsetOf(other) && other.SubsetOf(*this); }

int Service::Consistent(const FilterParams& set) const {
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (set.Conflicts(*cell->Data())) return 1;
  return 0;
}

int Service::Consistent(const TList<FilterParams>& sets) const {
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next())
    if (Consistent(*cell->Data())) return 1;
  return 0;
}

int Service::Consistent() const {
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Consistent()) return 1;
  return Consistent(*filters_);
}

int Service::Conflicts(const Service& other) const {
  if (&other == this) return 0;
  return Consistent(*other.filters_) || other.Consistent(*filters_);
}

int Service::Broadcast() const {
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Broadcast() != 0) return 1;
  return 0;
}

void Service::BroadcastSplit(Service** plain, Service** broadcast) {
  TList<FilterParams> plain_sets, broadcast_sets;
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    (cell->Data()->Broadcast() != 0 ? broadcast_sets : plain_sets).Append(*cell->Data());
  if (plain_sets.Empty()) {
    *broadcast = this;
  } else if (broadcast_sets.Empty()) {
    *plain = this;
  } else {
    *plain = Holding(Name(), Screen(), Description(), copies_of(plain_sets));
    *broadcast = Holding(suffixed_name(*this, "-Broadcast").c_str(), Screen(), Description(),
                         copies_of(broadcast_sets));
  }
}

void Service::ReverseServiceFilter(Service** forward, Service** reverse) {
  if (!reverse_filters_->Empty()) {
    *reverse = new Service(suffixed_name(*this, "_rev").c_str(), Screen(), Description());
    (*reverse)->Include(*reverse_filters_, 0);
  }
  if (!filters_->Empty()) *forward = this;
}

// A set whose engine runs on neither path belongs to neither half.
void Service::ReverseServiceStateEngine(Service** forward, Service** reverse) {
  TList<FilterParams> forward_sets;
  TList<FilterParams>* reversed = new TList<FilterParams>;
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next()) {
    FilterParams& set = *cell->Data();
    if (set.stateEngine()->Forward()) forward_sets.Append(set);
    if (set.stateEngine()->Reverse()) {
      FilterParams* copy = new FilterParams(set);
      copy->Reverse();
      reversed->Append(*copy);
    }
  }
  if (forward_sets.Length() == filters_->Length()) *forward = this;
  else if (!forward_sets.Empty()) *forward = Holding(Name(), nullptr, nullptr, copies_of(forward_sets));
  if (reversed->Empty()) free_owned(reversed);
  else *reverse = Holding(suffixed_name(*this, "_rev").c_str(), nullptr, nullptr, reversed);
}

void Service::EtherSplit(Service** ether, Service** other) {
  TList<FilterParams> ether_sets, other_sets;
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next()) {
    bool of_ether = strcmp(cell->Data()->stateEngine()->Name(), kEtherEngine) == 0;
    (of_ether ? ether_sets : other_sets).Append(*cell->Data());
  }
  if (ether_sets.Empty()) {
    *other = this;
    return;
  }
  if (!other_sets.Empty()) *other = Holding(Name(), nullptr, nullptr, copies_of(other_sets));
  *ether = Holding(suffixed_name(*this, "_ether").c_str(), nullptr, nullptr, copies_of(ether_sets));
}

// Sets of an engine missing from `engines` keep their order behind all
// others rather than being lost: dropping them would silently narrow the
// rule that uses the service.
void Service::OrderByStateEngine(const TList<Entity>& engines) {
  TList<FilterParams>* ordered = new TList<FilterParams>;
  for (TList_Cell<Entity>* engine = engines.Head(); engine != nullptr; engine = engine->Next()) {
    TList_Cell<FilterParams>* cell = filters_->Head();
    while (cell != nullptr) {
      TList_Cell<FilterParams>* next = cell->Next();
      if (static_cast<Entity*>(cell->Data()->stateEngine()) == engine->Data()) {
        ordered->Append(*cell->Data());
        filters_->Delete_Cell(cell);
      }
      cell = next;
    }
  }
  for (TList_Cell<FilterParams>* cell = filters_->Head(); cell != nullptr; cell = cell->Next())
    ordered->Append(*cell->Data());
  delete filters_;
  filters_ = ordered;
}

void Service::Mark() {
  if (resolved_services_ != nullptr) Mark_List(*resolved_services_);
}

int Service::DetectCycle() {
  if (type_ == SERVICE_SINGLE) return 0;
  if (input_services_ == nullptr) {
    Used(1);
    return 0;
  }
  return DetectCycleFromMembers({resolved_services_});
}

int Service::DetectCycle(Entity& origin) { return DetectCycleThroughMembers(origin, {resolved_services_}); }

int Service::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  int misses = 0;
  if (type_ == SERVICE_SINGLE && kind == CO_STATE_ENGINE) {
    for (const TList<Filter>* filters : {input_filters_, input_reverse_filters_})
      for (TList_Cell<Filter>* cell = filters ? filters->Head() : nullptr; cell; cell = cell->Next())
        misses += cell->Data()->Resolve(list, out);
  } else if (type_ == SERVICE_GROUP && kind == CO_SERVICE) {
    delete resolved_services_;
    resolved_services_ = new TList<Entity>;
    if (input_services_ != nullptr)
      misses = Resolve_Names(*input_services_, *resolved_services_, list, "SERVICE", out);
  }
  return misses;
}

int Service::Refer(Config_Objects kind, const char* name, int print) const {
  if (name == nullptr) return 0;
  bool hit = false;
  if (kind == CO_SERVICE) {
    hit = input_services_ != nullptr && Refer_List(*input_services_, name);
  } else if (kind == CO_SCREEN) {
    hit = Screen() != nullptr && strcmp(Screen(), name) == 0;
  } else if (kind == CO_STATE_ENGINE) {
    for (const TList<Filter>* filters : {input_filters_, input_reverse_filters_})
      for (TList_Cell<Filter>* cell = filters ? filters->Head() : nullptr; cell && !hit; cell = cell->Next())
        hit = cell->Data()->Refer(name, 0);
  }
  if (hit && print) entity_text_reference(*this, "SERVICE");
  return hit;
}

void Service::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_SCREEN) Entity::RenameReference(kind, old_name, new_name);
  if (kind != CO_SERVICE || input_services_ == nullptr || old_name == nullptr || new_name == nullptr) return;
  Rename_Reference_List(*input_services_, old_name, new_name);
}

void Service::IncludeGenerated(const TList<Filter>* filters, int reverse) {
  if (filters == nullptr) return;
  for (TList_Cell<Filter>* cell = filters->Head(); cell != nullptr; cell = cell->Next()) {
    TList<FilterParams>* sets = cell->Data()->GenerateFilterParams();
    Include(*sets, reverse);
    free_owned(sets);
  }
}

Entity* Service::Reduce() {
  if (reduced_) return this;
  reduced_ = 1;
  if (type_ == SERVICE_SINGLE) {
    IncludeGenerated(input_filters_, 0);
    IncludeGenerated(input_reverse_filters_, 1);
    return this;
  }
  if (resolved_services_ == nullptr) return this;
  for (TList_Cell<Entity>* cell = resolved_services_->Head(); cell != nullptr; cell = cell->Next())
    if (Service* member = dynamic_cast<Service*>(cell->Data()->Reduce())) Include(*member);
  return this;
}

int Service::Member(const char* name, int remove, int) {
  if (type_ != SERVICE_GROUP) return Entity::Member(name, remove, 0);
  if (input_services_ == nullptr) input_services_ = new TList<Entity>;
  Entity placeholder(name, nullptr, nullptr, 0);
  if (remove) placeholder.DeleteSelf(*input_services_);
  else if (placeholder.FindSelf(*input_services_, 0) == nullptr)
    input_services_->Append(*new Entity(name, nullptr, nullptr, 0));
  return 0;
}

int Service::Match(const char* screen, const char* name, const char* type, int exact) const {
  if (exact && name == nullptr) return 0;
  if (screen == nullptr && name == nullptr && type == nullptr) return 1;
  if (type != nullptr) {
    int wanted = is_word(type, "SINGLE") ? SERVICE_SINGLE : is_word(type, "GROUP") ? SERVICE_GROUP : -1;
    if (wanted != type_) return 0;
  }
  return Entity::Match(screen, name, type, exact);
}

std::ostream& Service::Enumerate(std::ostream& out, Enumerate_Type type) const {
  bool builtin_all = is_word(Name(), "*");
  entity_text_head(out, *this, type) << (type_ == SERVICE_GROUP || builtin_all ? "GROUP" : "SINGLE");
  if (type != ENUM_FULL || builtin_all) return out << '\n';
  if (type_ == SERVICE_GROUP) {
    for (TList_Cell<Entity>* cell = input_services_ ? input_services_->Head() : nullptr; cell; cell = cell->Next())
      out << " \"" << cell->Data()->Name() << '"';
  } else {
    for (TList_Cell<Filter>* cell = input_filters_ ? input_filters_->Head() : nullptr; cell; cell = cell->Next())
      cell->Data()->Enumerate(out, FD_FORWARD);
    for (TList_Cell<Filter>* cell = input_reverse_filters_ ? input_reverse_filters_->Head() : nullptr; cell;
         cell = cell->Next())
      cell->Data()->Enumerate(out, FD_REVERSE);
  }
  return entity_text_comment(out, *this) << '\n';
}

std::ostream& Service::Print(std::ostream& out) const {
  out << '"' << Name() << '"';
  if (type_ == SERVICE_GROUP) {
    out << "\tSERVICE_GROUP";
    for (TList_Cell<Entity>* cell = input_services_ ? input_services_->Head() : nullptr; cell; cell = cell->Next())
      out << "\t\"" << cell->Data()->Name() << '"';
  } else {
    out << "\tSERVICE";
    for (TList_Cell<Filter>* cell = input_filters_ ? input_filters_->Head() : nullptr; cell; cell = cell->Next())
      cell->Data()->Print(out);
    for (TList_Cell<Filter>* cell = input_reverse_filters_ ? input_reverse_filters_->Head() : nullptr; cell;
         cell = cell->Next())
      cell->Data()->Print(out << " REVERSE ");
  }
  return entity_text_tail(out, *this);
}
