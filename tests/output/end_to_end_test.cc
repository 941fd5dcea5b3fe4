// Whole compiles of small configurations, each compared with the files it
// must write, byte for byte.  A case is a folder of tests/e2e holding
// "input.conf", "host" (the host description), "screen" (the screen's name),
// "status" (the exit status), optionally "stderr", and the folder
// "expected" with every file the compile must write and nothing else.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "common/compiler_run.h"
#include "common/e2e_cases.h"

namespace {

class EndToEndTest : public testing::TestWithParam<std::string> {};

TEST_P(EndToEndTest, WritesExactlyTheExpectedFiles) {
  std::string folder = kCases + "/" + GetParam();
  CompilerRun run;
  run.Write("input.conf", ReadFile(folder + "/input.conf"));
  run.Write("host", ReadFile(folder + "/host"));
  int status = run.Run("-s '" + CaseScreen(folder) + "' -f " + run.Path("input.conf") + " -o out", "/dev/null",
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
                         [](const testing::TestParamInfo<std::string>& info) { return CaseTestName(info.param); });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EndToEndTest);

}  // namespace
