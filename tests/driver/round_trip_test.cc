// The saved form is a contract: for every configuration of the end-to-end
// cases and the bundled example, the text that fw_config prints reads back
// to the same text, and compiles to the same files, messages and status as
// the original.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "common/compiler_run.h"
#include "common/e2e_cases.h"

namespace {

struct Configuration {
  std::string name;
  std::string text_path;
  std::string host_path;
  std::string screen;
};

void PrintTo(const Configuration& configuration, std::ostream* out) { *out << configuration.name; }

std::vector<Configuration> AllConfigurations() {
  std::vector<Configuration> all;
  std::string examples = std::string(FW_SOURCE_DIR) + "/examples";
  all.push_back({"example", examples + "/site.conf", examples + "/site.host", "gate"});
  for (const std::string& name : CaseNames()) {
    std::string folder = kCases + "/" + name;
    all.push_back({name, folder + "/input.conf", folder + "/host", CaseScreen(folder)});
  }
  return all;
}

class RoundTripTest : public testing::TestWithParam<Configuration> {
 protected:
  // Compiles `text` (a file of the run) into the new folder `out`.
  int Compile(const std::string& text, const std::string& out) {
    mkdir(run_.Path(out).c_str(), 0755);
    return run_.Run("-s '" + GetParam().screen + "' -f " + run_.Path(text) + " -o " + out, "/dev/null",
                    "FERROWALL_HOST=" + run_.Path("host"));
  }

  CompilerRun run_;
};

TEST_P(RoundTripTest, PrintedTextReadsBackAndCompilesTheSame) {
  run_.Write("input.conf", ReadFile(GetParam().text_path));
  run_.Write("host", ReadFile(GetParam().host_path));
  ASSERT_EQ(run_.RunConfig("print -f input.conf"), 0) << run_.Err();
  std::string printed = run_.Out();
  run_.Write("printed.conf", printed);
  ASSERT_EQ(run_.RunConfig("print -f printed.conf"), 0) << run_.Err();
  EXPECT_EQ(run_.Out(), printed);

  int original_status = Compile("input.conf", "original");
  std::string original_err = run_.Err();
  EXPECT_EQ(Compile("printed.conf", "reread"), original_status);
  EXPECT_EQ(run_.Err(), original_err);
  std::set<std::string> original, reread;
  ListFiles(run_.Path("original"), "", &original);
  ListFiles(run_.Path("reread"), "", &reread);
  EXPECT_EQ(reread, original);
  for (const std::string& file : original)
    EXPECT_EQ(run_.Read("reread/" + file), run_.Read("original/" + file)) << "in " << file;
}

INSTANTIATE_TEST_SUITE_P(Configurations, RoundTripTest, testing::ValuesIn(AllConfigurations()),
                         [](const testing::TestParamInfo<Configuration>& info) {
                           return CaseTestName(info.param.name);
                         });

}  // namespace
