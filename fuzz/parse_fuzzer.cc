// Fuzz target: the whole parse of a configuration text into a fresh
// configuration, with the parser's messages on stderr.
#include <string>

#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "fuzz/fuzz_input.h"
#include "lang/parser.h"
#include "lang/scanner.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  Configuration config(new FWFile(nullptr, nullptr));
  Config = &config;
  FILE* stream = OpenBytes(bytes);
  yyrestart(stream);
  yyparse();
  fclose(stream);
  Config = nullptr;
  return 0;
}
