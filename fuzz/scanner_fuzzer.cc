// Fuzz target: the scanner alone, every token of the input to its end.
#include <cstdlib>
#include <string>

#include "fuzz/fuzz_input.h"
#include "lang/scanner.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  FILE* stream = OpenBytes(bytes);
  yyrestart(stream);
  for (int token; (token = yylex()) != 0;)
    if (token == TOK_STRING || token == TOK_ALIENLINE) free(yylval.string);
  fclose(stream);
  return 0;
}
