#include "support/attrib.h"

#include <strings.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/fwi18n.h"
#include "support/fwlog.h"

const char* const attrib_type_name[] = {
    "unknown", "struct", "bytes", "ascii", "signed32", "unsigned32",
    "ipV4",    "skipname", "ipV6", "ntptime", "utime", "utf8",
};

namespace {

constexpr unsigned kTypeCount = sizeof attrib_type_name / sizeof attrib_type_name[0];

bool is_blank(char c) { return isspace(static_cast<unsigned char>(c)) != 0; }
bool is_name_start(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool is_name_char(char c) { return is_name_start(c) || (c >= '0' && c <= '9'); }

void skip_blanks(const char*& p, const char* end) {
  while (p < end && is_blank(*p)) ++p;
}

void trim(const char*& begin, const char*& end) {
  skip_blanks(begin, end);
  while (end > begin && is_blank(end[-1])) --end;
}

// Types are written as any prefix of their name.  The table is searched
// from its end so that the short prefixes keep the meaning they always had
// ("u" is utf8, "s" skipname).
int type_of(const char* text, size_t length) {
  for (int type = kTypeCount - 1; type >= 0; --type) {
    const char* name = attrib_type_name[type];
    if (strlen(name) >= length && strncasecmp(name, text, length) == 0) return type;
  }
  return -1;
}

// The ";" that ends a struct value starting at `p`: the first one at brace
// depth 0.  Braces inside double quotes don't count, and there a backslash
// protects the byte behind it, or the three behind it for an octal or hex
// escape.  Null when the text ends first.
const char* struct_end(const char* p, const char* end) {
  int depth = 0;
  bool quoted = false;
  while (p < end) {
    char c = *p;
    if (quoted && c == '\\') {
      char escaped = p + 1 < end ? p[1] : '\0';
      bool long_escape = (escaped >= '0' && escaped <= '3') || escaped == 'x' || escaped == 'X';
      p += long_escape ? 4 : 2;
      continue;
    }
    if (c == '"') {
      quoted = !quoted;
    } else if (!quoted) {
      if (c == '{') ++depth;
      if (c == '}') --depth;
      if (c == ';' && depth == 0) return p;
    }
    ++p;
  }
  return nullptr;
}

// The element that `*tail` designates: the one already there (the object a
// constructor is building) or a new one.  `tail` moves behind it.
attrib* place(attrib**& tail) {
  if (*tail == nullptr) *tail = new attrib;
  attrib* element = *tail;
  tail = &element->next;
  return element;
}

bool is_ascii(const Xstring& text) {
  for (size_t i = 0; i < text.length(); ++i) {
    if (static_cast<unsigned char>(text.c_str()[i]) > 0x7f) return false;
  }
  return true;
}

bool types_conflict(attrib_type a, attrib_type b) {
  return a != b && attrib_is_text(a) != attrib_is_text(b);
}

// How an element answers a pattern element of the same name.
enum class Fit { kYes, kNo, kNever };

Fit fits(const attrib& element, const attrib& pattern) {
  if (pattern.type == attr_unknown) return Fit::kYes;
  if (types_conflict(element.type, pattern.type)) return Fit::kNever;
  if (element.children == nullptr) {
    if (pattern.children != nullptr) return Fit::kNever;
    return element.value == pattern.value ? Fit::kYes : Fit::kNo;
  }
  return element.children->match(pattern.children) ? Fit::kYes : Fit::kNo;
}

bool equals_simple(const attrib& element, const attrib& pattern) {
  bool type_ok = pattern.type == attr_unknown || !types_conflict(element.type, pattern.type);
  return element.name == pattern.name && type_ok && element.value == pattern.value;
}

bool has_flag(const attrib* list, const char* name) {
  for (const attrib* a = list; a != nullptr; a = a->next) {
    if (a->name == name && a->value == "1") return true;
  }
  return false;
}

}  // namespace

const char* attrib_type_printable(unsigned type) {
  if (type < kTypeCount) return attrib_type_name[type];
  static char unknown[32];
  snprintf(unknown, sizeof unknown, "type#%u", type);
  return unknown;
}

bool attrib_is_text(attrib_type type) { return type == attr_ascii || type == attr_utf8; }

int attrib_parse(attrib** tail, const char* text, Xstring& remainder) {
  remainder = Xstring("");
  const char* begin = text != nullptr ? text : "";
  const char* end = begin + strlen(begin);
  trim(begin, end);
  auto fail = [&](const char* from, const char* format) {
    a_syslog(attr_pri, format, "attrib_parse");
    remainder = Xstring(from, end - from);
    return -1;
  };
  if (begin < end && *begin == '"') {
    if (end - begin < 2 || end[-1] != '"') {
      return fail(begin, fwi18n_text(186, 3, "%s: missing end double quote"));
    }
    ++begin;
    --end;
    trim(begin, end);
  }
  if (begin < end && *begin == '{') {
    const char* whole_end = end;
    if (end[-1] == ';') {
      --end;
      trim(begin, end);
    }
    if (end - begin < 2 || end[-1] != '}') {
      end = whole_end;
      return fail(begin, fwi18n_text(186, 4, "%s: missing end brace"));
    }
    ++begin;
    --end;
    trim(begin, end);
  }
  const char* p = begin;
  for (;;) {
    skip_blanks(p, end);
    if (p >= end) return 0;
    const char* item = p;
    if (!is_name_start(*p)) {
      a_syslog(attr_pri, fwi18n_text(186, 5, "%s: bad name 1st char '%c'"), "attrib_parse", *p);
      remainder = Xstring(item, end - item);
      return -1;
    }
    const char* name = p;
    while (p < end && is_name_char(*p)) ++p;
    size_t name_length = p - name;
    skip_blanks(p, end);
    if (p >= end || *p != ':') return fail(item, fwi18n_text(186, 6, "%s: missing colon"));
    ++p;
    skip_blanks(p, end);
    if (p >= end || !is_name_start(*p)) {
      a_syslog(attr_pri, fwi18n_text(186, 7, "%s: bad type 1st char '%c'"), "attrib_parse", p < end ? *p : '?');
      remainder = Xstring(item, end - item);
      return -1;
    }
    const char* type_text = p;
    while (p < end && is_name_char(*p)) ++p;
    size_t type_length = p - type_text;
    skip_blanks(p, end);
    if (p >= end || *p != '=') return fail(item, fwi18n_text(186, 8, "%s: missing equals"));
    int type = type_of(type_text, type_length);
    if (type < 0) return fail(item, fwi18n_text(186, 9, "%s: unknown type"));
    ++p;
    skip_blanks(p, end);
    const char* semicolon = p < end && *p == '{' ? struct_end(p, end)
                                                 : static_cast<const char*>(memchr(p, ';', end - p));
    if (semicolon == nullptr) return fail(item, fwi18n_text(186, 10, "%s: missing semicolon"));
    attrib* children = nullptr;
    Xstring value("");
    if (*p == '{') {
      if (attrib_parse(&children, Xstring(p, semicolon - p), remainder) != 0) {
        if (children != nullptr) children->reap();
        return -1;
      }
    } else {
      const char* value_end = semicolon;
      while (value_end > p && is_blank(value_end[-1])) --value_end;
      value = Xstring(p, value_end - p);
    }
    // An empty nested list leaves the element without children, so it prints
    // as the empty value it then is; the type must follow the value's rule,
    // or the printed text would read back with another type.
    if (type == attr_utf8 && children == nullptr && is_ascii(value)) type = attr_ascii;
    attrib* element = place(tail);
    element->type = static_cast<attrib_type>(type);
    element->name = Xstring(name, name_length);
    element->value = value;
    element->children = children;
    p = semicolon + 1;
  }
}

attrib::attrib(attrib_type type, const Xstring& name, const Xstring& value)
    : type(type), name(name), value(value) {}

attrib::attrib(attrib_type type, const Xstring& name, long value)
    : type(type), name(name), value(std::to_string(value).c_str()) {}

attrib::attrib(attrib_type type, const Xstring& name, unsigned long value)
    : type(type), name(name), value(std::to_string(value).c_str()) {}

attrib::attrib(const Xstring& name, long value) : attrib(attr_signed32, name, value) {}

attrib::attrib(const Xstring& name, unsigned long value) : attrib(attr_unsigned32, name, value) {}

attrib::attrib(attrib_type type, const Xstring& name, attrib* children)
    : type(type), name(name), value(""), children(children) {}

attrib::attrib(const char* text) {
  Xstring remainder;
  attrib* self = this;
  if (attrib_parse(&self, text, remainder) != 0) {
    a_syslog(attr_pri, fwi18n_text(186, 11, "%s: unparsable input '%s'"), "attrib",
             Xs_safe(remainder).c_str());
  }
}

attrib::attrib(const char* text, Xstring& remainder) {
  attrib* self = this;
  attrib_parse(&self, text, remainder);
}

attrib::attrib(const attrib& other)
    : type(other.type),
      name(other.name),
      value(other.value),
      children(other.children != nullptr ? other.children->clone() : nullptr) {}

attrib::~attrib() {
  if (children != nullptr) children->reap();
  // The rest of the list is freed in a loop, so a long list can't exhaust
  // the stack.
  attrib* rest = next;
  while (rest != nullptr) {
    attrib* after = rest->next;
    rest->next = nullptr;
    delete rest;
    rest = after;
  }
}

attrib* attrib::clone() const {
  attrib* head = new attrib(*this);
  attrib* last = head;
  for (const attrib* a = next; a != nullptr; a = a->next) {
    last->next = new attrib(*a);
    last = last->next;
  }
  return head;
}

void attrib::reap() { delete this; }

void attrib::append(attrib* tail) {
  attrib* last = this;
  while (last->next != nullptr) last = last->next;
  last->next = tail;
}

attrib* attrib::find(const char* wanted) const {
  for (const attrib* a = this; a != nullptr; a = a->next) {
    if (a->name == wanted) return const_cast<attrib*>(a);
  }
  return nullptr;
}

Xstring attrib::printable() const {
  std::string text;
  for (const attrib* a = this; a != nullptr; a = a->next) {
    // A nameless element (what the empty text parses to) has no text form
    // that reads back; printed as nothing, the empty list reads back as
    // the same empty list.
    if (a->name.isnull()) continue;
    text += a->name.c_str();
    text += ':';
    text += attrib_type_printable(a->type);
    text += '=';
    if (a->children != nullptr) {
      text += "{ ";
      text += a->children->printable().c_str();
      text += '}';
    } else if (!a->value.isnull()) {
      text += a->value.c_str();
    }
    text += "; ";
  }
  return Xstring(text.data(), text.size());
}

bool attrib::match(const attrib* pattern) const {
  for (const attrib* wanted = pattern; wanted != nullptr; wanted = wanted->next) {
    bool found = false;
    for (const attrib* a = this; a != nullptr && !found; a = a->next) {
      if (a->name != wanted->name) continue;
      Fit fit = fits(*a, *wanted);
      if (fit == Fit::kNever) return false;
      found = fit == Fit::kYes;
    }
    if (!found) return false;
  }
  return true;
}

int attrib::remove(const attrib* pattern) {
  if (pattern == nullptr) return 0;
  if (pattern->next != nullptr) {
    a_syslog(attr_pri, fwi18n_text(186, 12, "%s: non-simple pattern '%s'"), "remove",
             Xs_safe(pattern->printable()).c_str());
    return -1;
  }
  // The list hangs on its first element, which can't be taken out here.
  if (equals_simple(*this, *pattern)) {
    a_syslog(attr_pri, fwi18n_text(186, 13, "%s: first element match of pattern '%s'"), "remove",
             Xs_safe(pattern->printable()).c_str());
    return -1;
  }
  attrib* before = this;
  while (before->next != nullptr) {
    attrib* candidate = before->next;
    if (!equals_simple(*candidate, *pattern)) {
      before = candidate;
      continue;
    }
    before->next = candidate->next;
    candidate->next = nullptr;
    delete candidate;
  }
  return 0;
}

namespace {

// Stores the value of `a` as a 32-bit number of `type`; false, logged, when
// it is of another type or not wholly a number in range.
bool number_value(const attrib& a, attrib_type type, bool is_signed, const char* who, long long* number) {
  const char* problem = nullptr;
  const char* text = a.value.c_str();
  if (a.type != type) {
    problem = fwi18n_text(186, 14, "wrong type");
  } else {
    bool starts_well = text != nullptr && (isdigit(static_cast<unsigned char>(text[0])) ||
                                           (is_signed && (text[0] == '-' || text[0] == '+')));
    char* end = nullptr;
    errno = 0;
    long long parsed = starts_well ? strtoll(text, &end, 10) : 0;
    long long low = is_signed ? -0x80000000LL : 0;
    long long high = is_signed ? 0x7fffffffLL : 0xffffffffLL;
    if (!starts_well || *end != '\0' || errno != 0 || parsed < low || parsed > high) {
      problem = fwi18n_text(186, 15, "illegal value string");
    } else {
      *number = parsed;
    }
  }
  if (problem == nullptr) return true;
  a_syslog(attr_pri, fwi18n_text(186, 16, "%s: %s in '%s'"), who, problem, Xs_safe(a.printable()).c_str());
  return false;
}

}  // namespace

long attrib::val_s32(attrib_type want, const char* who) const {
  long long number = 0;
  if (!number_value(*this, want, true, who != nullptr ? who : "val_s32", &number)) return 0x7fffffffL;
  return static_cast<long>(number);
}

unsigned long attrib::val_u32(attrib_type want, const char* who) const {
  long long number = 0;
  if (!number_value(*this, want, false, who != nullptr ? who : "val_u32", &number)) return 0xffffffffUL;
  return static_cast<unsigned long>(number);
}

int isdeleted(const attrib* list) { return list == nullptr || has_flag(list, "deleted") ? 1 : 0; }

int isenabled(const attrib* list) { return has_flag(list, "enabled") ? 1 : 0; }
