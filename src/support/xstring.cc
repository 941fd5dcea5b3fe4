#include "support/xstring.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/attrib.h"
#include "support/fwi18n.h"
#include "support/fwlog.h"

Xstring::Xstring(const char* text) {
  if (text != nullptr) assign(text, strlen(text));
}

Xstring::Xstring(const char* bytes, size_t length) { assign(bytes, length); }

Xstring::Xstring(const Xstring& other) {
  if (!other.isnull()) assign(other.text_, other.length_);
}

Xstring::Xstring(const Xstring& front, const Xstring& back) {
  if (front.isnull() && back.isnull()) return;
  text_ = static_cast<char*>(malloc(front.length_ + back.length_ + 1));
  if (text_ == nullptr) return;
  if (front.length_ > 0) memcpy(text_, front.text_, front.length_);
  if (back.length_ > 0) memcpy(text_ + front.length_, back.text_, back.length_);
  length_ = front.length_ + back.length_;
  text_[length_] = '\0';
}

Xstring::~Xstring() { free(text_); }

void Xstring::assign(const char* bytes, size_t length) {
  char* copy = static_cast<char*>(malloc(length + 1));
  if (copy != nullptr) {
    if (length > 0) memcpy(copy, bytes, length);
    copy[length] = '\0';
  }
  free(text_);
  text_ = copy;
  length_ = copy != nullptr ? length : 0;
}

Xstring& Xstring::operator=(const Xstring& other) {
  if (this == &other) return *this;
  if (other.isnull()) {
    free(text_);
    text_ = nullptr;
    length_ = 0;
  } else {
    assign(other.text_, other.length_);
  }
  return *this;
}

Xstring& Xstring::operator+=(const Xstring& tail) { return *this = Xstring(*this, tail); }

bool Xstring::operator==(const Xstring& other) const {
  if (isnull() || other.isnull()) return isnull() == other.isnull();
  return length_ == other.length_ && memcmp(text_, other.text_, length_) == 0;
}

void Xstring::scrub() {
  if (text_ != nullptr) memset(text_, 0, length_);
}

Xstring operator+(const Xstring& front, const Xstring& back) { return Xstring(front, back); }

Xstring Xs_enquote(const char* text) {
  std::string quoted;
  for (const char* p = text; p != nullptr && *p != '\0'; ++p) {
    if (*p == '"') quoted += p > text && p[-1] == '\\' ? "\\\\" : "\\";
    quoted += *p;
  }
  return Xstring(quoted.data(), quoted.size());
}

Xstring Xs_dequote(const char* text) {
  size_t length = text != nullptr ? strlen(text) : 0;
  if (length < 2) {
    a_syslog(attr_pri, fwi18n_text(186, 1, "%s: runt"), "Xs_dequote");
    return Xstring("");
  }
  if (text[0] != '"' || text[length - 1] != '"') {
    a_syslog(attr_pri, fwi18n_text(186, 2, "%s: non-quoted"), "Xs_dequote");
    return Xstring("");
  }
  return Xstring(text + 1, length - 2);
}

Xstring Xs_safe(const char* text) {
  if (text == nullptr || strlen(text) <= 2048) return Xstring(text);
  return Xstring(text, 2045) + "...";
}
