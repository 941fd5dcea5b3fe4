// attrib: one element of a list of typed, named values, the in-memory form
// of the attribute text "name:type=value; ...".  A value is kept as the text
// that was written, quotes included; a struct holds a nested list instead.
// An element owns its children and the rest of its list.
//
// Text form: items "name:type=value;", optionally the whole in braces or in
// double quotes.  A type is any prefix of a type name, in either case; a
// value that starts with "{" is a nested list ending at the first ";" at
// brace depth 0.  printable() gives text that parses back to an equal list.
#ifndef FW_SUPPORT_ATTRIB_H
#define FW_SUPPORT_ATTRIB_H

#include "support/xstring.h"

enum attrib_type {
  attr_unknown = 0,
  attr_struct = 1,
  attr_bytes = 2,
  attr_ascii = 3,
  attr_signed32 = 4,
  attr_unsigned32 = 5,
  attr_ipV4 = 6,
  attr_skipname = 7,
  attr_ipV6 = 8,
  attr_ntptime = 9,
  attr_utime = 10,
  attr_utf8 = 11,
};

extern const char* const attrib_type_name[];

// The type's name; a value outside the table is "type#<n>", in one static
// buffer that the next such call overwrites.
const char* attrib_type_printable(unsigned type);

// The priority word of the attribute library's log messages: the daemon
// facility, error severity, text wrapped as a message attribute.
constexpr unsigned attr_fac = 0x18;
constexpr unsigned attr_pri = attr_fac | 3 | 0x10000;

class attrib {
 public:
  attrib() = default;  // type unknown, null name and value
  attrib(attrib_type type, const Xstring& name, const Xstring& value);
  attrib(attrib_type type, const Xstring& name, long value);
  attrib(attrib_type type, const Xstring& name, unsigned long value);
  attrib(const Xstring& name, long value);            // signed32
  attrib(const Xstring& name, unsigned long value);   // unsigned32
  attrib(attrib_type type, const Xstring& name, attrib* children);  // takes them
  // Parses `text` into this element and the ones behind it; a failure is
  // logged with the start of what is left over.
  explicit attrib(const char* text);
  // The same; `remainder` gets the text that didn't parse, "" on success.
  attrib(const char* text, Xstring& remainder);
  // Deep copy of this element and its children, not of its next.
  attrib(const attrib& other);
  attrib& operator=(const attrib&) = delete;
  ~attrib();

  // Deep copy of the whole list from this element on.
  attrib* clone() const;
  // Deletes the whole list from this element on.
  void reap();
  // Hangs `tail` at the end of the list.
  void append(attrib* tail);
  // The first element with exactly `name`, or null.
  attrib* find(const char* name) const;
  // The text of the list from this element on.
  Xstring printable() const;
  // True if every element of `pattern` has a partner here: same name and,
  // unless the pattern's type is unknown, compatible type and equal value
  // or matching children.  A null pattern matches everything.
  bool match(const attrib* pattern) const;
  // Takes out, behind this element, every element equal to the one-element
  // `pattern` (name, type as in match, value).  -1, logged, for a longer
  // pattern or when this first element itself is equal; else 0.
  int remove(const attrib* pattern);
  // The value as a base-10 number when the element has `type`; otherwise
  // logs under `who` and gives 0x7fffffff or 0xffffffff.
  long val_s32(attrib_type type, const char* who) const;
  unsigned long val_u32(attrib_type type, const char* who) const;

  attrib_type type = attr_unknown;
  Xstring name;
  Xstring value;
  attrib* children = nullptr;
  attrib* next = nullptr;
};

// Parses `text` into the list whose tail pointer `*tail` is: an element
// already there is filled, otherwise a new one is made, and `tail` moves
// behind each.  Returns 0, or -1 with the failed item and all behind it in
// `remainder` (elements made before it stay linked).
int attrib_parse(attrib** tail, const char* text, Xstring& remainder);

// 1 when `list` is null or holds "deleted" with the value 1.
int isdeleted(const attrib* list);
// 1 when `list` holds "enabled" with the value 1.
int isenabled(const attrib* list);

// True for the two text types, which compare as one.
bool attrib_is_text(attrib_type type);

#endif
