#include "model/address.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "model/entity_text.h"

int Address::unique_id_counter_ = 0;

namespace {

bool is_word(const char* text, const char* word) { return strcmp(text, word) == 0; }

// An inline address is named by the text it was written as.
std::string inline_name(const simplerange* range) {
  return range != nullptr ? Range(range).toString() : std::string();
}

}  // namespace

Address::Address(const char* name, const simplerange* range, const char* screen,
                 const char* description)
    : Address(name, screen, description, ADDRESS_SINGLE) {
  if (range != nullptr) AppendRange(new Range(range));
}

Address::Address(const char* name, uint32_t host, const char* screen, const char* description)
    : Address(name, host, host, screen, description, RS_ADDRESSES) {}

Address::Address(const char* name, uint32_t start, uint32_t end, const char* screen,
                 const char* description, Range_Style style)
    : Address(name, screen, description, ADDRESS_SINGLE) {
  AppendRange(new Range(start, end, RT_ADDRESS, style));
}

Address::Address(const char* name, const char* screen, const char* description, int type)
    : Address(name, screen, description, type, std::make_shared<RangeSet>()) {}

Address::Address(const char* name, const char* screen, const char* description, int type,
                 std::shared_ptr<RangeSet> set)
    : Entity(name, screen, description, 0), set_(std::move(set)), type_(type), inline_(0), unique_id_(-1) {}

Address::Address(const Address& other)
    : Address(other.Name(), other.Screen(), other.Description(), other.type_,
              other.set_->plain ? other.set_ : std::make_shared<RangeSet>()) {
  Used(other.Used());
  if (set_ != other.set_) Include(other);
}

Address::Address(const simplerange* range)
    : Address(inline_name(range).c_str(), range, nullptr, nullptr) {
  inline_ = 1;
}

Address::~Address() = default;

// The copy keeps list order and ranks, so that it behaves as the shared
// ranges did.
void Address::Own() {
  if (set_.use_count() == 1) return;
  auto own = std::make_shared<RangeSet>();
  for (TList_Cell<Range>* cell = set_->ranges.Head(); cell != nullptr; cell = cell->Next()) {
    Range* range = new Range(*cell->Data());
    own->ranges.Append(*range);
    own->index[range->Start()] = Slot{own->ranges.Tail(), set_->index.at(range->Start()).order};
  }
  own->next_order = set_->next_order;
  own->plain = set_->plain;
  set_ = std::move(own);
}

void Address::AppendRange(Range* range) {
  set_->ranges.Append(*range);
  set_->index[range->Start()] = Slot{set_->ranges.Tail(), set_->next_order++};
  if (range->Type() != RT_ADDRESS || range->Style() != RS_ADDRESSES) set_->plain = false;
}

Address::Index::iterator Address::RemoveRange(Index::iterator slot) {
  set_->ranges.Delete_Data_Cell(slot->second.cell);
  return set_->index.erase(slot);
}

void Address::ClearRanges() { set_ = std::make_shared<RangeSet>(); }

// Ranges are disjoint, so only the last range starting at or below `value`
// can reach it from below.
Address::Index::const_iterator Address::FirstReaching(uint32_t value) const {
  const Index& index = set_->index;
  auto slot = index.upper_bound(value);
  return slot == index.begin() ? slot : std::prev(slot);
}

Address::Index::iterator Address::FirstReaching(uint32_t value) {
  Index& index = set_->index;
  auto slot = index.upper_bound(value);
  return slot == index.begin() ? slot : std::prev(slot);
}

// A range that touches the new one can't touch another range of the set,
// so growing the new range never brings in a range beyond those that touch
// the argument: one ordered pass finds them all.
void Address::Include(const Range& range) {
  Own();
  Range* merged = new Range(range.Start(), range.End(), RT_ADDRESS, RS_ADDRESSES);
  auto slot = FirstReaching(merged->Start());
  while (slot != set_->index.end()) {
    const Range& candidate = *slot->second.cell->Data();
    if (candidate.Intersects(*merged) || candidate.Adjacent(*merged)) {
      merged->Consume(candidate);
      slot = RemoveRange(slot);
    } else if (candidate.Start() > merged->End()) {
      break;
    } else {
      ++slot;
    }
  }
  AppendRange(merged);
}

void Address::Include(const TList<Range>& ranges) {
  if (&ranges == &set_->ranges) return;
  for (TList_Cell<Range>* cell = ranges.Head(); cell != nullptr; cell = cell->Next())
    Include(*cell->Data());
}

void Address::Include(const Address& other) { Include(other.set_->ranges); }

// Each range of the set meets the cut on its own: it goes, it is split (the
// upper piece joins the end of the list), or it loses the end that the cut
// covers.
void Address::Exclude(const Range& cut) {
  if (!Intersects(cut)) return;
  Own();
  auto slot = FirstReaching(cut.Start());
  while (slot != set_->index.end() && slot->first <= cut.End()) {
    Range& range = *slot->second.cell->Data();
    if (cut.SupersetOf(range)) {
      slot = RemoveRange(slot);
      continue;
    }
    auto next = std::next(slot);
    if (cut.ProperSubsetOf(range)) {
      AppendRange(range.Split(cut));
    } else if (cut.Intersects(range)) {
      ExcludeFrom(slot, cut);
    }
    slot = next;
  }
}

void Address::ExcludeFrom(Index::iterator slot, const Range& cut) {
  Range& range = *slot->second.cell->Data();
  uint32_t old_start = range.Start();
  range.Exclude(cut);
  if (range.Start() == old_start) return;
  Slot moved = slot->second;
  set_->index.erase(slot);
  set_->index[range.Start()] = moved;
}

void Address::Exclude(const TList<Range>& ranges) {
  if (&ranges == &set_->ranges) {
    ClearRanges();
    return;
  }
  for (TList_Cell<Range>* cell = ranges.Head(); cell != nullptr; cell = cell->Next())
    Exclude(*cell->Data());
}

void Address::Exclude(const Address& other) {
  if (set_->ranges.Empty()) return;
  Exclude(other.set_->ranges);
}

bool Address::Intersects(const Range& range) const {
  const Index& index = set_->index;
  auto slot = index.upper_bound(range.End());
  if (slot == index.begin()) return false;
  return std::prev(slot)->second.cell->Data()->Intersects(range);
}

bool Address::Intersects(const Address& other) const {
  if (&other == this) return true;
  const Address& small = set_->index.size() <= other.set_->index.size() ? *this : other;
  const Address& large = &small == this ? other : *this;
  for (TList_Cell<Range>* cell = small.set_->ranges.Head(); cell != nullptr; cell = cell->Next())
    if (large.Intersects(*cell->Data())) return true;
  return false;
}

TList<Range>* Address::Intersection(const Range& range) const {
  std::vector<std::pair<uint64_t, Range*>> pieces;
  for (auto slot = FirstReaching(range.Start()); slot != set_->index.end() && slot->first <= range.End();
       ++slot) {
    const Range& own = *slot->second.cell->Data();
    if (!own.Intersects(range)) continue;
    pieces.emplace_back(slot->second.order,
                        new Range(std::max(own.Start(), range.Start()), std::min(own.End(), range.End()),
                                  own.Type(), own.Style()));
  }
  if (pieces.empty()) return nullptr;
  std::sort(pieces.begin(), pieces.end());
  TList<Range>* list = new TList<Range>;
  for (auto& piece : pieces) list->Append(*piece.second);
  return list;
}

bool Address::Contains(const Range& range) const {
  const Index& index = set_->index;
  auto slot = index.upper_bound(range.Start());
  if (slot == index.begin()) return false;
  return std::prev(slot)->second.cell->Data()->SupersetOf(range);
}

bool Address::SubsetOf(const Address& other) const {
  if (&other == this || other.set_ == set_) return true;
  for (TList_Cell<Range>* cell = set_->ranges.Head(); cell != nullptr; cell = cell->Next())
    if (!other.Contains(*cell->Data())) return false;
  return true;
}

// Disjoint ranges that never touch are the one way of writing a set, so two
// sets are equal exactly when their ranges are, in ascending order.
bool Address::Equal(const Address& other) const {
  if (&other == this || other.set_ == set_) return true;
  const Index& mine = set_->index;
  const Index& theirs = other.set_->index;
  if (mine.size() != theirs.size()) return false;
  return std::equal(mine.begin(), mine.end(), theirs.begin(),
                    [](const Index::value_type& mine, const Index::value_type& theirs) {
                      return mine.second.cell->Data()->Equal(*theirs.second.cell->Data());
                    });
}

Address* Address::Intersection(Address& other) {
  if (&other == this || SubsetOf(other)) return this;
  if (other.SubsetOf(*this)) return &other;
  Address* common = new Address(entity_text_joined(*this, " ^ ", other).c_str(), nullptr, nullptr,
                                ADDRESS_SINGLE);
  if (!Intersects(other)) return common;
  for (TList_Cell<Range>* cell = set_->ranges.Head(); cell != nullptr; cell = cell->Next()) {
    TList<Range>* pieces = other.Intersection(*cell->Data());
    if (pieces == nullptr) continue;
    common->Include(*pieces);
    pieces->Delete_Data();
    delete pieces;
  }
  return common;
}

Address* Address::Exclusion(const Address& other) {
  if (!Intersects(other)) return this;
  if (Equal(other)) return nullptr;
  Address* rest = new Address(entity_text_joined(*this, " - ", other).c_str(), nullptr, nullptr,
                              ADDRESS_SINGLE);
  rest->Include(*this);
  rest->Exclude(other);
  return rest;
}

Address* Address::Merge(Address& other) {
  if (&other == this || other.SubsetOf(*this)) return this;
  if (SubsetOf(other)) return &other;
  Address* both = new Address(entity_text_joined(*this, " + ", other).c_str(), nullptr, nullptr,
                              ADDRESS_SINGLE);
  both->Include(*this);
  both->Include(other);
  return both;
}

TList<Range>* Address::CreateOrderedRangeList() const {
  TList<Range>* ordered = new TList<Range>;
  for (const auto& slot : set_->index) ordered->Append(*slot.second.cell->Data());
  return ordered;
}

unsigned long long Address::SizeOf() const {
  unsigned long long size = 0;
  for (TList_Cell<Range>* cell = set_->ranges.Head(); cell != nullptr; cell = cell->Next())
    size += static_cast<unsigned long long>(cell->Data()->End() - cell->Data()->Start()) + 1;
  return size;
}

int Address::UniqueID() {
  if (unique_id_ == -1) unique_id_ = unique_id_counter_++;
  return unique_id_;
}

void Address::ResetUniqueId() { unique_id_counter_ = 0; }

std::ostream& Address::DumpRanges(std::ostream& out, const char* prefix, int count) const {
  if (count) out << set_->index.size() << '\n';
  for (const auto& slot : set_->index) {
    if (prefix != nullptr && *prefix != '\0') out << prefix;
    slot.second.cell->Data()->DumpRange(out);
    out << (prefix != nullptr ? '\n' : ' ');
  }
  return out;
}

int Address::Refer(Config_Objects kind, const char* name, int print) const {
  if (kind != CO_SCREEN || name == nullptr || Screen() == nullptr || strcmp(Screen(), name) != 0)
    return 0;
  if (print) entity_text_reference(*this, "ADDRESS");
  return 1;
}

int Address::Match(const char* screen, const char* name, const char* type, int exact) const {
  if (exact && name == nullptr) return 0;
  if (screen == nullptr && name == nullptr && type == nullptr) return 1;
  if (type != nullptr) {
    int wanted = 0;
    if (is_word(type, "SINGLE") || is_word(type, "HOST") || is_word(type, "RANGE")) wanted = ADDRESS_SINGLE;
    else if (is_word(type, "GROUP")) wanted = ADDRESS_GROUP;
    if (wanted != type_) return 0;
  }
  return Entity::Match(screen, name, type, exact);
}

std::ostream& Address::Enumerate(std::ostream& out, Enumerate_Type type) const {
  const Range* first = set_->ranges.Empty() ? nullptr : set_->ranges.Head()->Data();
  entity_text_head(out, *this, type) << (first != nullptr && first->Start() == first->End() ? "HOST" : "RANGE");
  if (type == ENUM_FULL) {
    if (first != nullptr) first->Enumerate(out << ' ');
    entity_text_comment(out, *this);
  }
  return out << '\n';
}

std::ostream& Address::Print(std::ostream& out) const {
  if (inline_) return out << Name() << '\t';
  out << '"' << Name() << "\"\tADDRESS\t";
  if (!set_->ranges.Empty()) set_->ranges.Head()->Data()->Print(out);
  return entity_text_tail(out, *this);
}
