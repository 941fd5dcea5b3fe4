// fw_compiler: compiles the configuration text of a firewall estate into the
// files that one screen loads.  Diagnostics go to stderr; the outcome is the
// exit status.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "driver/print_error.h"
#include "driver/program.h"
#include "support/fwi18n.h"
#include "support/vars.h"

namespace {

const int kDriverSet = 41;

struct Options {
  const char* screen = nullptr;
  const char* input = nullptr;
  const char* output_directory = nullptr;
};

[[noreturn]] void Usage() {
  std::cerr << fwi18n_text(kDriverSet, 1, "Usage") << ": fw_compiler [-SScreen] [-f"
            << fwi18n_text(kDriverSet, 2, "file") << " -o" << fwi18n_text(kDriverSet, 3, "directory")
            << "]" << std::endl;
  exit(1);
}

Options ReadOptions(int argc, char** argv) {
  Options options;
  int letter;
  // "+" stops at the first argument that isn't an option: later arguments
  // are ignored, as they always were.
  while ((letter = getopt(argc, argv, "+f:F:o:O:s:S:")) != -1) {
    switch (letter) {
      case 'f': case 'F': options.input = optarg; break;
      case 'o': case 'O': options.output_directory = optarg; break;
      case 's': case 'S': options.screen = optarg; break;
      default: Usage();
    }
  }
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  program_start("fw_compiler");
  Options options = ReadOptions(argc, argv);
  user_setroot(nullptr, 1, nullptr);
  program_select_host();
  std::string screen = program_screen(options.screen);
  if (options.output_directory != nullptr) program_enter_directory(options.output_directory);

  Config = new Configuration(new FWFile(nullptr, options.input));
  int code = Config->Parse();
  if (code != 0) {
    PrintError(code, nullptr);
    exit(code);
  }
  code = Config->Compile(screen.c_str(), std::cerr);
  PrintError(code, screen.c_str());
  exit(code);
}
