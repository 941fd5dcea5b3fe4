// A policy file pulls its registry in through LOAD; errors on either side
// end the compile as parse errors.
#include <gtest/gtest.h>

#include <string>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

class LoadFileTest : public testing::Test {
 protected:
  void SetUp() override {
    run.Write("out/registry.2",
              std::string(kStarServiceEngines) + "\"remote administration\" SERVICE ;\nskip SERVICE ;\ngate SCREEN ;\n");
    run.Write("gate.host", "");
  }
  int Compile(const std::string& policy) {
    run.Write("out/policy.1", policy);
    return run.Run("-s gate -o out -f policy.1", "/dev/null", "FERROWALL_HOST=" + run.Path("gate.host"));
  }
  CompilerRun run;
};

TEST_F(LoadFileTest, TheLoadedFileIsReadAfterTheMainFile) {
  EXPECT_EQ(Compile("POLICY_VERSION 1\nLOAD \"registry.2\"\n"), 0);
  EXPECT_EQ(run.Err(), "Warning: No enabled (Routing or Admin) Interfaces detected.\n");
}

TEST_F(LoadFileTest, MissingLoadFileAndErrorsOnEitherSide) {
  const struct {
    const char* policy;
    int status;
    const char* err;
  } cases[] = {
      {"LOAD \"registry.3\"\n", 240, "file not found.\n"},
      // An error in the main file comes before the missing load file is looked for.
      {"LOAD \"registry.3\"\nbroken ;\n", 241, "parse error near token ;.\nparse error.\n"},
      {"LOAD \"registry.4\"\n", 241, "parse error near token ;.\nparse error.\n"},
  };
  run.Write("out/registry.4", "gate SCREEN ;\nbroken ;\n");
  for (const auto& c : cases) {
    EXPECT_EQ(Compile(c.policy), c.status) << c.policy;
    EXPECT_EQ(run.Err(), c.err) << c.policy;
  }
}

}  // namespace
