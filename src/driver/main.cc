// fw_compiler: compiles the configuration text of a firewall estate into the
// files that one screen loads.  Diagnostics go to stderr; the outcome is the
// exit status.
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "driver/print_error.h"
#include "support/fwi18n.h"
#include "support/fwlog.h"
#include "support/host.h"
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

// Only async-signal-safe calls: the handler may interrupt anything.
void hangup(int signal_number) {
  char line[64] = "fw_compiler: Signal ";
  char digits[12];
  int length = 0;
  unsigned value = static_cast<unsigned>(signal_number);
  do {
    digits[length++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  size_t at = strlen(line);
  while (length > 0) line[at++] = digits[--length];
  line[at] = '\0';
  strcat(line, " received.  Exiting.\n");
  ssize_t ignored = write(STDERR_FILENO, line, strlen(line));
  (void)ignored;
  _exit(1);
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

// The host questions are answered from a description file when one is
// named; a bad one must stop the run before anything is compiled for it.
void SelectHost() {
  std::string error;
  if (Host::Select(&error)) return;
  std::cerr << "fw_compiler: " << fwi18n_text(kDriverSet, 7, "host description ") << error << std::endl;
  exit(1);
}

void EnterOutputDirectory(const char* directory) {
  if (chdir(directory) == 0) return;
  int status = errno;
  std::cerr << fwi18n_text(kDriverSet, 4, "Error") << ": "
            << fwi18n_text(kDriverSet, 5, "output directory does not exist") << " (" << directory << ")"
            << std::endl;
  exit(status);
}

}  // namespace

int main(int argc, char** argv) {
  a_syslogset("?", "compiler", "compiler");
  fwi18n_set("FWPKicg_Ferrowall");
  signal(SIGHUP, hangup);
  signal(SIGTERM, hangup);
#ifndef FW_SANITIZED_BUILD
  // A sanitizer reports a crash with its cause; this handler would hide it.
  signal(SIGSEGV, hangup);
#endif
  Options options = ReadOptions(argc, argv);
  user_setroot(nullptr, 1, nullptr);
  SelectHost();
  std::string screen;
  if (options.screen != nullptr) {
    screen = options.screen;
  } else {
    screen = DefaultScreen();
    if (screen.empty()) NoScreen();
  }
  if (options.output_directory != nullptr) EnterOutputDirectory(options.output_directory);

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
