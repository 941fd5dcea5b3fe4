// Writes the fuzzing dictionary of the configuration language to standard
// output: every reserved word, straight from the scanner's keyword table,
// so that new grammar reaches the fuzzers without an edit here, then the
// marks and literal forms the grammar knows and the words of the host
// description that a compile input may carry.
#include <cstdio>
#include <string>

#include "lang/token.h"

namespace {

// One dictionary line; quotes, backslashes and control bytes are escaped
// in the dictionary's own notation.
void Entry(const std::string& text) {
  std::string line = "\"";
  for (unsigned char byte : text) {
    char escaped[8];
    if (byte == '"' || byte == '\\') snprintf(escaped, sizeof escaped, "\\%c", byte);
    else if (byte < 0x20 || byte >= 0x7f) snprintf(escaped, sizeof escaped, "\\x%02X", byte);
    else snprintf(escaped, sizeof escaped, "%c", byte);
    line += escaped;
  }
  printf("%s\"\n", line.c_str());
}

}  // namespace

int main() {
#define FW_DICTIONARY_ENTRY(name, spelling) Entry(spelling);
  FW_KEYWORDS(FW_DICTIONARY_ENTRY)
#undef FW_DICTIONARY_ENTRY
  for (const char* literal : {"all", ";", "(", ")", "*", "!", "\"", "\\", "@", "#", "//", "\nbegin_code", "0x",
                              "10.0.0.1", "10.0.0.0/8", "10.0.0.0/255.0.0.0", "10.0.0.0/0xff000000",
                              "10.0.0.1 - 10.0.0.9", "\n#%host gate\n", "interface ", "release ", "wide",
                              "skip-local-key ", "ike-local-id ", "ipsec-unavailable ", "skip-unavailable "})
    Entry(literal);
  return 0;
}
