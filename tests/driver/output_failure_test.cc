// A generated file that can't be created or written is named with the
// system's reason, the rest of the set is still written, and the compile
// ends with 237.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>

#include "common/compiler_run.h"

namespace {

std::string Example(const std::string& name) {
  std::ifstream file(std::string(FW_SOURCE_DIR) + "/examples/" + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class OutputFailureTest : public testing::Test {
 protected:
  void SetUp() override {
    run.Write("site.conf", Example("site.conf"));
    run.Write("site.host", Example("site.host"));
  }
  int Compile() {
    return run.Run("-s gate -o out -f ../site.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("site.host"));
  }
  CompilerRun run;
};

TEST_F(OutputFailureTest, SucceedingCompileSaysNothing) {
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(run.Err(), "");
}

TEST_F(OutputFailureTest, EachLostFileIsNamedWithItsReason) {
  mkdir(run.Path("out/Time").c_str(), 0755);
  ASSERT_EQ(symlink("/dev/full", run.Path("out/Services").c_str()), 0);
  EXPECT_EQ(Compile(), 237);
  EXPECT_EQ(run.Err(),
            "Unable to create file 'Time', error: Is a directory\n"
            "Unable to write file 'Services', error: No space left on device\n"
            "Could not write file \"gate\"\n");
  EXPECT_TRUE(run.Exists("out/Remote.Access")) << "the files behind a lost one are still written";
}

}  // namespace
