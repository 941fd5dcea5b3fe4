// Range is a closed interval of unsigned 32-bit values: the atom of address
// sets, port sets and time windows.  Its start is never above its end; the
// constructor and both setters swap values that come in the wrong order.
// A time range is kept on the five-minute grain of the system: its bounds
// are rounded down to a multiple of 5 at construction (not by the setters).
//
// Adjacent and Intersects never hold between ranges of different type; the
// other comparisons look at the bounds alone.
#ifndef FW_MODEL_RANGE_H
#define FW_MODEL_RANGE_H

#include <cstdint>
#include <ostream>
#include <string>

// What the values of a range are.  2 is unused.
enum Range_Type { RT_NUMBER = 0, RT_ADDRESS = 1, RT_TIME = 3 };

// How an address range was written, so that it can be shown the same way.
enum Range_Style {
  RS_ADDRESSES = 0,    // one address, or two joined by "-"
  RS_PREFIX = 1,       // address/length
  RS_DOTTED_MASK = 2,  // address/dotted mask
  RS_NUMERIC_MASK = 3  // address/number
};

// The plain result of parse_range, in host byte order.
struct simplerange {
  uint32_t start;
  uint32_t end;
  Range_Style style;
};

class Range {
 public:
  Range(uint32_t start, uint32_t end, Range_Type type, Range_Style style);
  // An address range as parsed: bounds and style taken as they are.
  explicit Range(const simplerange* parsed);

  uint32_t Start() const { return start_; }
  uint32_t End() const { return end_; }
  Range_Type Type() const { return type_; }
  Range_Style Style() const { return style_; }
  // A new start above the end becomes the end, the old end the start.
  void Start(uint32_t start);
  // A new end below the start becomes the start, the old start the end.
  void End(uint32_t end);

  // The two touch without a common value; no wrap-around at the top.
  bool Adjacent(const Range& other) const;
  bool Intersects(const Range& other) const;
  bool SubsetOf(const Range& other) const;
  // Strictly inside at both ends: sharing a bound is not enough.
  bool ProperSubsetOf(const Range& other) const;
  bool SupersetOf(const Range& other) const { return other.SubsetOf(*this); }
  bool Equal(const Range& other) const { return start_ == other.start_ && end_ == other.end_; }

  // Widens this range to cover the other as well.
  void Consume(const Range& other);
  // Cuts away the end of this range that the other covers (one end only).
  void Exclude(const Range& other);
  // This object for itself, null when disjoint, else a new range that the
  // caller owns, with this range's type and style.
  Range* Intersection(const Range& other);
  // For a range strictly inside this one: keeps the lower piece here and
  // returns the upper piece as a new range.
  Range* Split(const Range& inner);

  // The text of the configuration language.  `wide` selects the spaced
  // form of the saved files.
  std::string toString(int wide) const;
  std::string toString() const { return toString(0); }
  // The text of toString into `at`, which has room for kFormatted
  // characters; returns the end of what was written.
  static constexpr int kFormatted = 64;
  char* Format(char* at, int wide) const;
  std::ostream& Print(std::ostream& out) const;
  std::ostream& Enumerate(std::ostream& out) const { return out << toString(0); }
  // Both bounds in dotted form, whatever the style.
  std::ostream& DumpRange(std::ostream& out) const;

 private:
  void Order();

  uint32_t start_;
  uint32_t end_;
  Range_Type type_;
  Range_Style style_;
};

std::ostream& operator<<(std::ostream& out, const Range& range);

// The dotted form of an address in host byte order; the second form writes
// it at `at` (room for 15 characters) and returns the end.
std::string dotted_address(uint32_t address);
char* put_dotted_address(char* at, uint32_t address);

// Four numbers joined by points, each in decimal, octal (leading 0) or
// hexadecimal (leading 0x) and below 256.  0 on success, 1 on failure;
// `*out` changes only on success.
int parse_ipv4addr(const char* text, uint32_t* out);

// An address, "a-b", or "a/length", "a/mask", "a/number" with a contiguous
// mask; host bits of a masked address are dropped.  0 on success, 1 on
// failure.
int parse_range(const char* text, simplerange* out);

#endif
