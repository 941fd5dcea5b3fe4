// Address is a named set of IPv4 addresses: a host, a range, or (through
// AddressList) a group built from other addresses.  The set is a list of
// address ranges that are disjoint and never touch.  The list keeps the
// order in which the set operations left its ranges (a merged or split-off
// range goes to the end); CreateOrderedRangeList and DumpRanges give them in
// ascending order.  A private index by start keeps every single-range
// operation logarithmic and every set-to-set comparison linear, which is
// what rule distribution needs on large sets.  Copies share the ranges
// until one of them changes, as rule distribution copies every piece's
// addresses and changes few of them.
//
// Intersection, Exclusion and Merge answer with one of their operands when
// they can, else with a new address; the caller compares pointers to learn
// whether it owns the result.
#ifndef FW_MODEL_ADDRESS_H
#define FW_MODEL_ADDRESS_H

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>

#include "model/entity.h"
#include "model/range.h"
#include "model/t_list.h"

enum Address_Type { ADDRESS_SINGLE = 1, ADDRESS_GROUP = 2 };

class Address : public Entity {
 public:
  // One range as parsed, keeping its written style; a null range gives an
  // empty set.
  Address(const char* name, const simplerange* range, const char* screen, const char* description);
  // One host.
  Address(const char* name, uint32_t host, const char* screen, const char* description);
  Address(const char* name, uint32_t start, uint32_t end, const char* screen,
          const char* description, Range_Style style);
  // An empty set of the given type.
  Address(const char* name, const char* screen, const char* description, int type);
  // Name, screen, comment, used mark, type and set; not the unique id nor
  // the inline mark.
  Address(const Address& other);
  // The address written directly where it is used, named by its own text.
  explicit Address(const simplerange* range);
  Address& operator=(const Address&) = delete;
  ~Address() override;

  void Include(const Range& range);
  void Include(const TList<Range>& ranges);
  void Include(const Address& other);
  void Exclude(const Range& range);
  void Exclude(const TList<Range>& ranges);
  void Exclude(const Address& other);

  bool Intersects(const Range& range) const;
  // True for the very same object, even an empty one.
  bool Intersects(const Address& other) const;
  // Null when nothing is common; else new ranges in list order, which the
  // caller frees with Delete_Data and the list.
  TList<Range>* Intersection(const Range& range) const;
  // One range of the set covers `range` whole.
  bool Contains(const Range& range) const;
  bool SubsetOf(const Address& other) const;
  bool Equal(const Address& other) const;

  Address* Intersection(Address& other);
  Address* Exclusion(const Address& other);
  Address* Merge(Address& other);

  // The set's own ranges in ascending order; the caller frees the list only.
  TList<Range>* CreateOrderedRangeList() const;
  // Calls `visit` with each range of the set in ascending order.
  template <class Visit>
  void ForEachOrdered(Visit visit) const {
    for (const auto& slot : set_->index) visit(*slot.second.cell->Data());
  }
  // Counted in 64 bits: the whole space is 4294967296 addresses.
  unsigned long long SizeOf() const;
  // Given on first demand from a class-wide counter.
  int UniqueID();
  static void ResetUniqueId();

  const TList<Range>& Ranges() const { return set_->ranges; }
  int Type() const { return type_; }
  int Inline() const { return inline_; }

  // The ranges in ascending order, each in dump form behind `prefix` (when
  // it isn't empty); with `count` their number first.  A null prefix puts
  // the ranges on one line.
  std::ostream& DumpRanges(std::ostream& out, const char* prefix, int count) const;

  int Refer(Config_Objects kind, const char* name, int print) const override;
  int Match(const char* screen, const char* name, const char* type, int exact) const override;
  // HOST or RANGE, and in a full line the range and the comment.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The ADDRESS statement; an inline address writes its bare text.
  std::ostream& Print(std::ostream& out) const override;

 protected:
  // Takes the set back to empty.
  void ClearRanges();

 private:
  struct Slot {
    TList_Cell<Range>* cell;
    uint64_t order;  // rank in the list: ranges only ever join at its end
  };
  using Index = std::map<uint32_t, Slot>;
  // The ranges, and whether each is an address range in the plain style
  // that a copy would give it, so that a copy may share them.
  struct RangeSet {
    ~RangeSet() { ranges.Delete_Data(); }
    TList<Range> ranges;
    Index index;
    uint64_t next_order = 0;
    bool plain = true;
  };

  Address(const char* name, const char* screen, const char* description, int type,
          std::shared_ptr<RangeSet> set);
  // Makes the ranges this object's alone before it changes them.
  void Own();

  void AppendRange(Range* range);
  Index::iterator RemoveRange(Index::iterator slot);
  void ExcludeFrom(Index::iterator slot, const Range& cut);
  // The first range that may hold `value` or lie above it.
  Index::const_iterator FirstReaching(uint32_t value) const;
  Index::iterator FirstReaching(uint32_t value);

  std::shared_ptr<RangeSet> set_;
  int type_;
  int inline_;
  int unique_id_;

  static int unique_id_counter_;
};

#endif
