// Whole compiles of small configurations, each compared with the files it
// must write, byte for byte.  A case is a folder of tests/e2e holding
// "input.conf", "host" (the host description), "screen" (the screen's name),
// "status" (the exit status), optionally "stderr", and the folder
// "expected" with every file the compile must write and nothing else.
#include <dirent.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "common/compiler_run.h"

namespace {

const std::string kCases = std::string(FW_SOURCE_DIR) + "/tests/e2e";

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The files below `directory`, as paths relative to it.
void ListFiles(const std::string& directory, const std::string& prefix, std::set<std::string>* files) {
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

std::vector<std::string> CaseNames() {
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

class EndToEndTest : public testing::TestWithParam<std::string> {};

TEST_P(EndToEndTest, WritesExactlyTheExpectedFiles) {
  std::string folder = kCases + "/" + GetParam();
  CompilerRun run;
  run.Write("input.conf", ReadFile(folder + "/input.conf"));
  run.Write("host", ReadFile(folder + "/host"));
  std::string screen = ReadFile(folder + "/screen");
  screen.erase(screen.find_last_not_of("\n") + 1);
  int status = run.Run("-s '" + screen + "' -f " + run.Path("input.conf") + " -o out", "/dev/null",
                       "FERROWALL_HOST=" + run.Path("host"));
  EXPECT_EQ(status, std::stoi(ReadFile(folder + "/status"))) << run.Err();
  std::ifstream expected_err(folder + "/stderr");
  if (expected_err) {
    EXPECT_EQ(run.Err(), ReadFile(folder + "/stderr"));
  }

  std::set<std::string> expected, written;
  ListFiles(folder + "/expected", "", &expected);
  ListFiles(run.Path("out"), "", &written);
  EXPECT_EQ(written, expected);
  for (const std::string& file : expected)
    EXPECT_EQ(run.Read("out/" + file), ReadFile(folder + "/expected/" + file)) << "in " << file;
}

INSTANTIATE_TEST_SUITE_P(Cases, EndToEndTest, testing::ValuesIn(CaseNames()),
                         [](const testing::TestParamInfo<std::string>& info) {
                           std::string name = info.param;
                           std::replace_if(name.begin(), name.end(), [](char c) { return !isalnum(c); }, '_');
                           return name;
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EndToEndTest);

}  // namespace
