// Xstring: the owned byte string of the support libraries.  It is either
// null or a NUL-terminated copy of some bytes; a null string has length 0
// but is not equal to an empty one, so "absent" and "empty" stay apart.
//
// The Xs_ functions quote and shorten texts for the attribute format.
#ifndef FW_SUPPORT_XSTRING_H
#define FW_SUPPORT_XSTRING_H

#include <cstddef>

class Xstring {
 public:
  Xstring() = default;                         // null
  Xstring(const char* text);                   // null stays null
  Xstring(const char* bytes, size_t length);
  Xstring(const Xstring& other);
  Xstring(const Xstring& front, const Xstring& back);  // concatenation
  ~Xstring();

  Xstring& operator=(const Xstring& other);
  Xstring& operator+=(const Xstring& tail);
  bool operator==(const Xstring& other) const;
  bool operator!=(const Xstring& other) const { return !(*this == other); }
  bool operator==(const char* other) const { return *this == Xstring(other); }
  bool operator!=(const char* other) const { return !(*this == other); }

  // The text, or null for a null string.
  operator const char*() const { return text_; }
  const char* c_str() const { return text_; }
  bool isnull() const { return text_ == nullptr; }
  size_t length() const { return length_; }

  // Overwrites the bytes with zeros, for strings that held a secret.
  void scrub();

 private:
  void assign(const char* bytes, size_t length);

  char* text_ = nullptr;
  size_t length_ = 0;
};

Xstring operator+(const Xstring& front, const Xstring& back);

// `text` with each double quote escaped by a backslash; a quote that already
// stands behind a backslash gets two more, so that backslash survives too.
Xstring Xs_enquote(const char* text);

// `text` without its surrounding double quotes; "" (and a log message) when
// it is shorter than two bytes or not quoted.
Xstring Xs_dequote(const char* text);

// `text` cut to 2045 bytes and "..." when it is longer than 2048 bytes, so a
// log message never grows beyond one packet.
Xstring Xs_safe(const char* text);

#endif
