#include "support/settings.h"

#include <pwd.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

int debug = 0;
int spewit = 0;
const char* etc_path = "/etc/ferrowall";
const char* var_path = "/var/ferrowall";
const char* base_path = "/usr/lib/ferrowall";
const char* adm_path = "/usr/lib/ferrowall/fwadm";
const char* lib_path = "/usr/lib/ferrowall/lib";

namespace {

// A path is either one of the built-in literals or a heap copy; only the
// copies may be freed when a later set-up replaces them.
struct PathSlot {
  const char** value;
  bool allocated;
};
PathSlot etc_slot{&etc_path, false};
PathSlot var_slot{&var_path, false};
PathSlot base_slot{&base_path, false};
PathSlot adm_slot{&adm_path, false};
PathSlot lib_slot{&lib_path, false};

void replace_path(PathSlot& slot, const std::string& text) {
  char* copy = strdup(text.c_str());
  if (copy == nullptr) return;
  if (slot.allocated) free(const_cast<char*>(*slot.value));
  *slot.value = copy;
  slot.allocated = true;
}

// Replaces the path by the variable's value; reports whether it changed.
bool path_from_env(PathSlot& slot, const char* variable) {
  const char* value = getenv(variable);
  if (value == nullptr || *value == '\0' || strcmp(value, *slot.value) == 0) return false;
  replace_path(slot, value);
  return true;
}

// The etc directory's "location" file names the base directory of an
// installation that was moved; it is only consulted without FERROWALL_BASE.
bool base_from_location_file() {
  std::string path = std::string(etc_path) + "/location";
  FILE* file = fopen(path.c_str(), "r");
  if (file == nullptr) return false;
  char text[256];
  size_t length = fread(text, 1, sizeof text, file);
  fclose(file);
  if (length >= 255) return false;
  while (length > 0 && isspace(static_cast<unsigned char>(text[length - 1]))) --length;
  text[length] = '\0';
  if (strcmp(text, base_path) == 0) return false;
  replace_path(base_slot, text);
  return true;
}

void debug_from_env() {
  const char* value = getenv("FERROWALL_DEBUG");
  if (value == nullptr) return;
  char* end = nullptr;
  long level = strtol(value, &end, 0);
  debug = end == value ? 1 : static_cast<int>(level);
  if (debug != 0) {
    spewit = 1;
    if (debug < 0) debug = 0;
  }
}

}  // namespace

void set_from_env() {
  debug_from_env();
  path_from_env(etc_slot, "FERROWALL_ETC");
  path_from_env(var_slot, "FERROWALL_VAR");
  bool base_changed = path_from_env(base_slot, "FERROWALL_BASE");
  if (!base_changed) base_changed = base_from_location_file();
  if (!base_changed) return;
  replace_path(adm_slot, std::string(base_path) + "/fwadm");
  replace_path(lib_slot, std::string(base_path) + "/lib");
}

const char* screen_getname() {
  static std::string name;
  static bool read = false;
  if (read) return name.c_str();
  read = true;
  std::string path = std::string(etc_path) + "/name";
  FILE* file = fopen(path.c_str(), "r");
  if (file == nullptr) {
    if (spewit) fprintf(stderr, "%s: file '%s' error: %s\n", program_invocation_short_name, path.c_str(), strerror(errno));
    return name.c_str();
  }
  char line[4096];
  if (fgets(line, sizeof line, file) != nullptr) {
    line[strcspn(line, "\n")] = '\0';
    name = line;
  }
  fclose(file);
  return name.c_str();
}

char* ferrowall_username() {
  if (const char* user = getenv("FWADM_USER")) return strdup(user);
  if (const char* login = getlogin()) return strdup(login);
  if (struct passwd* entry = getpwuid(getuid())) return strdup(entry->pw_name);
  return strdup(std::to_string(getuid()).c_str());
}
