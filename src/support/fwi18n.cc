#include "support/fwi18n.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <nl_types.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/settings.h"

int s18n_catd = -1;
char* s18n_locale = nullptr;
char* messages_encoding = nullptr;
char* time_encoding = nullptr;

namespace {

// Catalogue handles are small numbers that stand for the library's
// descriptors, so that -1 means "none" on every platform.
std::vector<nl_catd> catalogues;

const iconv_t kNoConversion = reinterpret_cast<iconv_t>(-1);

struct Conversion {
  iconv_t handle = kNoConversion;
  bool tried = false;
};
Conversion messages_conversion;
Conversion time_conversion;

// Converted catalogue texts live as long as the process, one per message.
std::map<std::pair<int, int>, std::string> converted_texts;

const char kUtf8[] = "UTF-8";
const char kUtf8Suffix[] = ".UTF-8";

const char* env(const char* name) {
  const char* value = getenv(name);
  return value != nullptr && *value != '\0' ? value : nullptr;
}

bool has_utf8_suffix(const std::string& name) { return name.find(kUtf8Suffix) != std::string::npos; }

std::string without_codeset(const std::string& name) { return name.substr(0, name.find('.')); }

std::string utf8_form(const std::string& name) { return without_codeset(name) + kUtf8Suffix; }

void replace(char*& slot, char* value) {
  free(slot);
  slot = value;
}

// The codeset of locale `name`, found by switching LC_CTYPE to it for a
// moment; null when the locale isn't installed.
char* encoding_under(const std::string& name) {
  std::string current = setlocale(LC_CTYPE, nullptr);
  if (setlocale(LC_CTYPE, name.c_str()) == nullptr) return nullptr;
  char* encoding = figure_encoding();
  setlocale(LC_CTYPE, current.c_str());
  return encoding;
}

// Dates and sorting should be UTF-8 like the messages; where the UTF-8 form
// of the locale isn't installed the plain one is used, and its encoding is
// what printed dates must be converted from.
void prefer_utf8(int category, const std::string& name) {
  std::string wanted = has_utf8_suffix(name) ? name : utf8_form(name);
  if (setlocale(category, wanted.c_str()) != nullptr) return;
  std::string plain = without_codeset(wanted);
  if (setlocale(category, plain.c_str()) == nullptr) return;
  replace(time_encoding, encoding_under(plain));
}

nl_catd open_catalogue(const char* domain, const std::string& locale_name) {
  std::string path = std::string(lib_path) + "/locale/" + locale_name + "/LC_MESSAGES/" + domain + ".cat";
  return catopen(path.c_str(), NL_CAT_LOCALE);
}

int register_catalogue(nl_catd catalogue) {
  catalogues.push_back(catalogue);
  return static_cast<int>(catalogues.size()) - 1;
}

iconv_t open_with_second_name(const char* to, const char* from, const char* legacy, bool legacy_is_target) {
  iconv_t handle = iconv_open(to, from);
  if (handle != kNoConversion) return handle;
  const char* second = nl_langinfo_codeset_name_to_iconv_encoding_name(legacy);
  if (second == nullptr) return kNoConversion;
  return legacy_is_target ? iconv_open(second, from) : iconv_open(to, second);
}

// `text` converted; the unconverted text when the conversion fails, which
// is more use to a reader than a cut-off one.
std::string convert(iconv_t handle, const char* text) {
  size_t length = strlen(text);
  std::string out(4 * length + 1, '\0');
  char* in = const_cast<char*>(text);
  char* to = &out[0];
  size_t in_left = length;
  size_t out_left = out.size() - 1;
  iconv(handle, nullptr, nullptr, nullptr, nullptr);
  if (iconv(handle, &in, &in_left, &to, &out_left) == static_cast<size_t>(-1)) return text;
  out.resize(to - &out[0]);
  return out;
}

}  // namespace

int fwi18n_set(const char* domain) {
  if (s18n_locale != nullptr) return s18n_catd;
  int earlier = s18n_catd;
  s18n_catd = fwi18n_init(domain, &s18n_locale, 0);
  return earlier;
}

int fwi18n_init(const char* domain, char** locale, int force) {
  set_from_env();
  const char* all = nullptr;
  if (locale != nullptr && *locale != nullptr) {
    all = *locale;
  } else {
    setlocale(LC_ALL, "");
    all = env("LC_ALL");
  }
  std::string default_name;
  const char* ctype = all;
  const char* messages = all;
  const char* collate = all;
  const char* time = all;
  if (all != nullptr) {
    default_name = all;
  } else {
    const char* lang = env("LANG");
    bool plain = lang == nullptr || strcmp(lang, "C") == 0 || strcmp(lang, "POSIX") == 0;
    default_name = plain ? "en_US" : lang;
    ctype = env("LC_CTYPE");
    messages = env("LC_MESSAGES");
    collate = env("LC_COLLATE");
    time = env("LC_TIME");
  }
  std::string messages_name = messages != nullptr ? messages : default_name;
  if (force || (all == nullptr && ctype != nullptr && strstr(ctype, kUtf8Suffix) != nullptr)) {
    if (!has_utf8_suffix(messages_name)) {
      messages_name = utf8_form(messages_name);
      setlocale(LC_MESSAGES, messages_name.c_str());
    }
    prefer_utf8(LC_TIME, time != nullptr ? time : default_name);
    prefer_utf8(LC_COLLATE, collate != nullptr ? collate : default_name);
  }
  if (locale != nullptr && *locale == nullptr) *locale = strdup(messages_name.c_str());
  nl_catd catalogue = open_catalogue(domain, messages_name);
  if (catalogue != reinterpret_cast<nl_catd>(-1)) return register_catalogue(catalogue);
  if (has_utf8_suffix(messages_name)) return -1;
  // Only a UTF-8 catalogue may be installed; its texts are then converted
  // to the encoding of the user's locale.
  catalogue = open_catalogue(domain, utf8_form(messages_name));
  if (catalogue == reinterpret_cast<nl_catd>(-1)) return -1;
  replace(messages_encoding, encoding_under(messages_name));
  return register_catalogue(catalogue);
}

void fwi18n_revert(int handle) {
  if (s18n_catd >= 0 && s18n_catd < static_cast<int>(catalogues.size())) {
    catclose(catalogues[s18n_catd]);
    catalogues[s18n_catd] = reinterpret_cast<nl_catd>(-1);
  }
  s18n_catd = handle;
}

const char* fwi18n_catgets(int set, int number, const char* text) {
  if (s18n_catd < 0 || s18n_catd >= static_cast<int>(catalogues.size())) return text;
  nl_catd catalogue = catalogues[s18n_catd];
  if (catalogue == reinterpret_cast<nl_catd>(-1)) return text;
  const char* raw = catgets(catalogue, set, number, text);
  if (messages_encoding == nullptr) return raw;
  if (!messages_conversion.tried) {
    messages_conversion.tried = true;
    messages_conversion.handle = open_with_second_name(messages_encoding, kUtf8, messages_encoding, true);
  }
  if (messages_conversion.handle == kNoConversion) return raw;
  std::string& slot = converted_texts[{set, number}];
  slot = convert(messages_conversion.handle, raw);
  return slot.c_str();
}

char* utf8time(time_t when) {
  if (time_encoding != nullptr && !time_conversion.tried) {
    time_conversion.tried = true;
    time_conversion.handle = open_with_second_name(kUtf8, time_encoding, time_encoding, false);
  }
  // strftime here has no null format for the locale's own form; "%c" is it.
  char text[256];
  struct tm local;
  localtime_r(&when, &local);
  size_t length = strftime(text, sizeof text, "%c", &local);
  text[length] = '\0';
  std::string result = time_conversion.handle != kNoConversion ? convert(time_conversion.handle, text) : text;
  for (char& c : result) {
    if (c == '\t') c = ' ';
  }
  return strdup(result.c_str());
}

char* figure_encoding() {
  const char* codeset = nl_langinfo(CODESET);
  return codeset != nullptr && *codeset != '\0' ? strdup(codeset) : nullptr;
}

const char* nl_langinfo_codeset_name_to_iconv_encoding_name(const char* name) {
  static const struct {
    const char* codeset;
    const char* second;
  } kSecondNames[] = {
      {"5601", "ko_KR-euc"}, {"BIG5", "zh_TW-big5"}, {"GBK", "zh_CN.gbk"},
      {"cns11643", "zh_TW-euc"}, {"koi8-r", "KOI8-R"},
  };
  if (name == nullptr) return nullptr;
  if (strncmp(name, "ISO8859", 7) == 0) return name + 3;
  for (const auto& entry : kSecondNames) {
    if (strcmp(name, entry.codeset) == 0) return entry.second;
  }
  return nullptr;
}
