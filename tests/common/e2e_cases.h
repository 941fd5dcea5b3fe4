// The end-to-end cases of tests/e2e and the bundled example, as the tests
// that compile them see them: a configuration, a host description, a
// screen, and what the compile must give.
#ifndef FW_TESTS_COMMON_E2E_CASES_H
#define FW_TESTS_COMMON_E2E_CASES_H

#include <dirent.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

const std::string kCases = std::string(FW_SOURCE_DIR) + "/tests/e2e";

inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The files below `directory`, as paths relative to it.
inline void ListFiles(const std::string& directory, const std::string& prefix, std::set<std::string>* files) {
  DIR* dir = opendir(directory.c_str());
  if (dir == nullptr) return;
  while (dirent* entry = readdir(dir)) {
    std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    std::string path = directory + "/" + name;
    DIR* inner = opendir(path.c_str());
    if (inner != nullptr) {
      closedir(inner);
      ListFiles(path, prefix + name + "/", files);
    } else {
      files->insert(prefix + name);
    }
  }
  closedir(dir);
}

inline std::vector<std::string> CaseNames() {
  std::set<std::string> names;
  DIR* dir = opendir(kCases.c_str());
  while (dir != nullptr) {
    dirent* entry = readdir(dir);
    if (entry == nullptr) break;
    std::string name = entry->d_name;
    if (name[0] != '.') names.insert(name);
  }
  if (dir != nullptr) closedir(dir);
  return {names.begin(), names.end()};
}

// The screen a case compiles for, without its line end.
inline std::string CaseScreen(const std::string& folder) {
  std::string screen = ReadFile(folder + "/screen");
  screen.erase(screen.find_last_not_of("\n") + 1);
  return screen;
}

// A test name from a case name: gtest allows letters, digits and "_".
inline std::string CaseTestName(std::string name) {
  std::replace_if(name.begin(), name.end(), [](char c) { return !isalnum(static_cast<unsigned char>(c)); }, '_');
  return name;
}

#endif
