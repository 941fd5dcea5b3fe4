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
#include "support/settings.h"
#include "support/vars.h"

namespace {

const int kDriverSet = 41;
// No screen was named and the name file gives none.  The table of errors
// has no code for this, and the status must differ from every code and
// from the errno values that entering the output directory can leave.
const int kNoScreenStatus = 3;

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

// The first word of the etc directory's "name" file, or "" without one.
std::string DefaultScreen() {
  std::string path = std::string(etc_path) + "/name";
  FILE* file = fopen(path.c_str(), "r");
  if (file == nullptr) return "";
  char word[257] = "";
  if (fscanf(file, "%256s", word) != 1) word[0] = '\0';
  fclose(file);
  word[strcspn(word, "\n")] = '\0';
  return word;
}

[[noreturn]] void NoScreen() {
  std::cerr << "fw_compiler: " << fwi18n_text(kDriverSet, 6, "no screen named: give -s SCREEN or write its name into ")
            << etc_path << "/name" << std::endl;
  exit(kNoScreenStatus);
}

}  // namespace

int main(int argc, char** argv) {
  program_start("fw_compiler");
  Options options = ReadOptions(argc, argv);
  user_setroot(nullptr, 1, nullptr);
  program_select_host();
  std::string screen;
  if (options.screen != nullptr) {
    screen = options.screen;
  } else {
    screen = DefaultScreen();
    if (screen.empty()) NoScreen();
  }
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
