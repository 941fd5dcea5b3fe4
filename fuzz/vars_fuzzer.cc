// Fuzz target: the variable store reader.  The input is the content of
// one stored variable file, which is looked up as a single value and as a
// list of values, in a store of its own below the scratch directory.
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "fuzz/fuzz_input.h"
#include "support/settings.h"
#include "support/vars.h"

namespace {

const char kVariableDirectory[] = "/etc/.active/.ezdb/vars.d/.prg/iked";

// Points the store at the scratch directory, once.
bool MakeStore() {
  const std::string& root = ScratchDirectory();
  std::string path;
  for (const char* part : {"/etc", "/etc/.active", "/etc/.active/.ezdb", "/etc/.active/.ezdb/vars.d",
                           "/etc/.active/.ezdb/vars.d/.prg", kVariableDirectory})
    mkdir((root + part).c_str(), 0755);
  setenv("FERROWALL_ETC", (root + "/etc").c_str(), 1);
  setenv("FERROWALL_BASE", (root + "/base").c_str(), 1);
  set_from_env();
  vars_setdir("vars.d");
  vars_setroot(nullptr, 1, nullptr);
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool made = MakeStore();
  (void)made;
  std::ofstream(ScratchDirectory() + kVariableDirectory + "/Fuzzed", std::ios::binary)
      .write(reinterpret_cast<const char*>(data), size);
  Xstring value, found_name;
  vars_get_value(nullptr, "iked", nullptr, "Fuzzed", value, &found_name);
  vallist values;
  vars_get_values(nullptr, "iked", nullptr, "Fuzzed", values, &found_name);
  return 0;
}
