// Fuzz target: the attribute text parser.  What a parsed list prints must
// read back to a list that prints the same, so the printed text is checked
// to be a fixed point; a deep copy must print the same too.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/attrib.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The parser takes NUL-terminated text; a NUL ends it early.
  std::string text(reinterpret_cast<const char*>(data), size);
  Xstring remainder;
  attrib list(text.c_str(), remainder);
  if (remainder != "") return 0;
  Xstring printed = list.printable();
  attrib again(printed.c_str(), remainder);
  Xstring reprinted = again.printable();
  attrib* copy = list.clone();
  bool copied = copy->printable() == printed;
  copy->reap();
  if (remainder != "" || reprinted != printed || !copied) {
    fprintf(stderr, "printed: %s\nread back: %s\nleft: %s\n", Xs_safe(printed).c_str(),
            Xs_safe(reprinted).c_str(), Xs_safe(remainder).c_str());
    abort();
  }
  return 0;
}
