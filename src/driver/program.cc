#include "driver/program.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "support/fwi18n.h"
#include "support/fwlog.h"
#include "support/host.h"
#include "support/settings.h"

namespace {

const int kDriverSet = 41;
// No screen was named and the name file gives none.  The table of errors
// has no code for this, and the status must differ from every code and
// from the errno values that entering the output directory can leave.
const int kNoScreenStatus = 3;
const char* program_name = "";

// Only async-signal-safe calls: the handler may interrupt anything.
void hangup(int signal_number) {
  char line[96];
  size_t at = 0;
  for (const char* piece : {program_name, ": Signal "}) {
    size_t length = strnlen(piece, 40);
    memcpy(line + at, piece, length);
    at += length;
  }
  char digits[12];
  int length = 0;
  unsigned value = static_cast<unsigned>(signal_number);
  do {
    digits[length++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  while (length > 0) line[at++] = digits[--length];
  const char tail[] = " received.  Exiting.\n";
  memcpy(line + at, tail, sizeof tail - 1);
  at += sizeof tail - 1;
  ssize_t ignored = write(STDERR_FILENO, line, at);
  (void)ignored;
  _exit(1);
}

}  // namespace

void program_start(const char* program) {
  program_name = program;
  a_syslogset("?", "compiler", "compiler");
  fwi18n_set("FWPKicg_Ferrowall");
  signal(SIGHUP, hangup);
  signal(SIGTERM, hangup);
#ifndef FW_SANITIZED_BUILD
  // A sanitizer reports a crash with its cause; this handler would hide it.
  signal(SIGSEGV, hangup);
#endif
}

void program_select_host() {
  std::string error;
  if (Host::Select(&error)) return;
  std::cerr << program_name << ": " << fwi18n_text(kDriverSet, 7, "host description ") << error << std::endl;
  exit(1);
}

namespace {

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

}  // namespace

std::string program_screen(const char* given) {
  if (given != nullptr) return given;
  std::string screen = DefaultScreen();
  if (!screen.empty()) return screen;
  std::cerr << program_name << ": "
            << fwi18n_text(kDriverSet, 6, "no screen named: give -s SCREEN or write its name into ") << etc_path
            << "/name" << std::endl;
  exit(kNoScreenStatus);
}

void program_enter_directory(const char* directory) {
  if (chdir(directory) == 0) return;
  int status = errno;
  std::cerr << fwi18n_text(kDriverSet, 4, "Error") << ": "
            << fwi18n_text(kDriverSet, 5, "output directory does not exist") << " (" << directory << ")"
            << std::endl;
  exit(status);
}
