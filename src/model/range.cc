#include "model/range.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

const uint32_t kAllBits = 0xFFFFFFFFu;
const uint32_t kTimeGrain = 5;

// Number of low bits of x, when x is 2^n - 1 with n >= 1; else 0.
int low_block_bits(uint32_t x) {
  if (x == 0 || (x & (x + 1)) != 0) return 0;
  int bits = 0;
  for (; x != 0; x >>= 1) ++bits;
  return bits;
}

// Reads one number the way the language writes numbers (decimal, 0 octal,
// 0x hexadecimal).  Unlike bare strtoul, an empty number is no number:
// "1..2.3" must not pass for an address.
bool read_number(const char* text, const char** rest, unsigned long* value) {
  if (!isdigit(static_cast<unsigned char>(*text))) return false;
  char* end = nullptr;
  *value = strtoul(text, &end, 0);
  *rest = end;
  return end != text;
}

bool is_contiguous_mask(uint32_t mask) { return (mask | (mask - 1)) == kAllBits; }

uint32_t prefix_mask(unsigned long length) {
  return length == 0 ? 0 : kAllBits << (32 - length);
}

// The mask behind the "/" of a range text, with the style it was written in.
bool parse_mask(const char* text, uint32_t* mask, Range_Style* style) {
  if (parse_ipv4addr(text, mask) == 0) {
    *style = RS_DOTTED_MASK;
    return true;
  }
  const char* rest = nullptr;
  unsigned long number = 0;
  if (!read_number(text, &rest, &number) || *rest != '\0' || number > kAllBits) return false;
  if (number <= 32) {
    *mask = prefix_mask(number);
    *style = RS_PREFIX;
  } else {
    *mask = static_cast<uint32_t>(number);
    *style = RS_NUMERIC_MASK;
  }
  return true;
}

bool parse_two_addresses(const char* text, const char* dash, simplerange* out) {
  std::string first(text, dash - text);
  uint32_t start = 0, end = 0;
  if (parse_ipv4addr(first.c_str(), &start) != 0 || parse_ipv4addr(dash + 1, &end) != 0) return false;
  if (start > end) return false;
  *out = simplerange{start, end, RS_ADDRESSES};
  return true;
}

bool parse_masked(const char* text, const char* slash, simplerange* out) {
  std::string host(text, slash - text);
  uint32_t address = 0, mask = 0;
  Range_Style style = RS_ADDRESSES;
  if (parse_ipv4addr(host.c_str(), &address) != 0) return false;
  if (!parse_mask(slash + 1, &mask, &style) || !is_contiguous_mask(mask)) return false;
  uint32_t start = address & mask;
  *out = simplerange{start, start | ~mask, style};
  return true;
}

}  // namespace

Range::Range(uint32_t start, uint32_t end, Range_Type type, Range_Style style)
    : start_(start), end_(end), type_(type), style_(style) {
  Order();
  if (type_ == RT_TIME) {
    start_ -= start_ % kTimeGrain;
    end_ -= end_ % kTimeGrain;
  }
}

Range::Range(const simplerange* parsed)
    : start_(parsed->start), end_(parsed->end), type_(RT_ADDRESS), style_(parsed->style) {}

void Range::Order() {
  if (start_ > end_) std::swap(start_, end_);
}

void Range::Start(uint32_t start) {
  start_ = start;
  Order();
}

void Range::End(uint32_t end) {
  end_ = end;
  Order();
}

bool Range::Adjacent(const Range& other) const {
  if (type_ != other.type_) return false;
  return (start_ != 0 && other.end_ == start_ - 1) || (other.start_ != 0 && other.start_ - 1 == end_);
}

bool Range::Intersects(const Range& other) const {
  return type_ == other.type_ && other.start_ <= end_ && other.end_ >= start_;
}

bool Range::SubsetOf(const Range& other) const {
  return start_ >= other.start_ && end_ <= other.end_;
}

bool Range::ProperSubsetOf(const Range& other) const {
  return start_ > other.start_ && end_ < other.end_;
}

void Range::Consume(const Range& other) {
  if (other.start_ <= start_) start_ = other.start_;
  if (other.end_ >= end_) end_ = other.end_;
}

void Range::Exclude(const Range& other) {
  if (start_ >= other.start_ && start_ <= other.end_) {
    start_ = other.end_ + 1;
  } else if (end_ >= other.start_ && end_ <= other.end_) {
    end_ = other.start_ - 1;
  }
}

Range* Range::Intersection(const Range& other) {
  if (&other == this) return this;
  if (!Intersects(other)) return nullptr;
  return new Range(std::max(start_, other.start_), std::min(end_, other.end_), type_, style_);
}

Range* Range::Split(const Range& inner) {
  Range* upper = new Range(inner.end_ + 1, end_, type_, style_);
  end_ = inner.start_ - 1;
  return upper;
}

namespace {

char* put_text(char* at, const char* text) {
  while (*text != '\0') *at++ = *text++;
  return at;
}

char* put_decimal(char* at, unsigned long value) {
  char digits[20];
  int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  while (count > 0) *at++ = digits[--count];
  return at;
}

}  // namespace

char* put_dotted_address(char* at, uint32_t address) {
  for (int shift = 24; shift > 0; shift -= 8) {
    at = put_decimal(at, (address >> shift) & 0xFF);
    *at++ = '.';
  }
  return put_decimal(at, address & 0xFF);
}

// The text is made in a buffer of the caller's: formatting runs for every
// range of every rule written, so it avoids both printf and the heap.
char* Range::Format(char* at, int wide) const {
  switch (type_) {
    case RT_TIME:
      return at + snprintf(at, kFormatted, wide ? "%2u %2u %2u %2u" : "%02u:%02u %02u:%02u", start_ / 60,
                           start_ % 60, end_ / 60, end_ % 60);
    case RT_ADDRESS:
      break;
    default:
      at = put_decimal(at, start_);
      return start_ == end_ ? at : put_decimal(put_text(at, " - "), end_);
  }
  at = put_dotted_address(at, start_);
  if (start_ == end_) return at;
  uint32_t block = start_ ^ end_;
  int bits = low_block_bits(block);
  bool aligned = bits > 0 && (start_ & block) == 0 && (end_ & block) == block;
  switch (aligned ? style_ : RS_ADDRESSES) {
    case RS_PREFIX:
      return put_decimal(put_text(at, "/"), 32u - bits);
    case RS_DOTTED_MASK:
      return put_dotted_address(put_text(at, "/"), ~block);
    case RS_NUMERIC_MASK:
      return at + snprintf(at, kFormatted, "/0x%08lX", static_cast<unsigned long>(~block));
    default:
      return put_dotted_address(put_text(at, wide ? " - " : "-"), end_);
  }
}

std::string Range::toString(int wide) const {
  char text[kFormatted];
  return std::string(text, Format(text, wide));
}

std::ostream& Range::Print(std::ostream& out) const {
  char text[kFormatted];
  return out.write(text, Format(text, 1) - text);
}

std::ostream& Range::DumpRange(std::ostream& out) const {
  char text[kFormatted];
  char* end = put_dotted_address(put_text(put_dotted_address(text, start_), " - "), end_);
  return out.write(text, end - text);
}

std::ostream& operator<<(std::ostream& out, const Range& range) { return range.Print(out); }

std::string dotted_address(uint32_t address) {
  char text[16];
  return std::string(text, put_dotted_address(text, address));
}

int parse_ipv4addr(const char* text, uint32_t* out) {
  if (text == nullptr) return 1;
  uint32_t address = 0;
  const char* cursor = text;
  for (int part = 0; part < 4; ++part) {
    unsigned long number = 0;
    const char* rest = nullptr;
    if (!read_number(cursor, &rest, &number) || number > 255) return 1;
    if (*rest != (part < 3 ? '.' : '\0')) return 1;
    address = (address << 8) | static_cast<uint32_t>(number);
    cursor = rest + 1;
  }
  *out = address;
  return 0;
}

int parse_range(const char* text, simplerange* out) {
  if (text == nullptr) return 1;
  uint32_t single = 0;
  if (parse_ipv4addr(text, &single) == 0) {
    *out = simplerange{single, single, RS_ADDRESSES};
    return 0;
  }
  if (const char* dash = strchr(text, '-')) return parse_two_addresses(text, dash, out) ? 0 : 1;
  if (const char* slash = strchr(text, '/')) return parse_masked(text, slash, out) ? 0 : 1;
  return 1;
}
