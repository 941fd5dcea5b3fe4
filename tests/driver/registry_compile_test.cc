// A registry text of several screens runs through the whole front of the
// compile: it parses, finds its screen and passes the stages that exist.
#include <gtest/gtest.h>

#include <string>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

const char kEstate[] =
    "www SERVICE tcp 80 tcp 443 ;\n"
    "\"remote administration\" SERVICE tcp 22 ;\n"
    "skip SERVICE tcp 1640 ;\n"
    "dns SERVICE tcp 53 ;\n"
    "mail SERVICE tcp 25 ;\n"
    "mail SERVICE tcp 2525 SCREEN branch ;\n"
    "both SERVICE_GROUP www mail ;\n"
    "inside ADDRESS 192.168.1.0/24 ;\n"
    "outside ADDRESS ! inside ;\n"
    "office TIME MONDAY 8 0 17 0 ;\n"
    "gate SCREEN ADMIN_IP 192.168.1.1 DNS LOGSIZE 100 ;\n"
    "branch SCREEN ADMIN_IP 192.168.1.2 ;\n"
    "le0 INTERFACE ADMIN inside SCREEN gate ;\n"
    "le1 INTERFACE GWY outside COMPLETE SCREEN gate ;\n"
    "qfe0 INTERFACE ADMIN inside SCREEN branch ;\n"
    "@kept for the tools\n";

TEST(RegistryCompileTest, SeveralScreensParseAndCompileAsFarAsTheStagesGo) {
  CompilerRun run;
  run.Write("estate.conf", std::string(kStarServiceEngines) + kEstate);
  run.Write("gate.host", "interface le0 192.168.1.1/24\ninterface le1 10.0.0.1/8\n");
  EXPECT_EQ(run.Run("-s gate -f estate.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("gate.host")), 0);
  EXPECT_EQ(run.Err(), "");
  EXPECT_EQ(run.Run("-s nowhere -f estate.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("gate.host")), 239);
  EXPECT_EQ(run.Err(), "Screen object not defined for Screen \"nowhere\"\n");
}

}  // namespace

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

TEST_F(LoadFileTest, AMissingLoadFileIsNotFound) {
  EXPECT_EQ(Compile("LOAD \"registry.3\"\n"), 240);
  EXPECT_EQ(run.Err(), "file not found.\n");
}

TEST_F(LoadFileTest, AnErrorInTheMainFileLeavesTheLoadFileAlone) {
  EXPECT_EQ(Compile("LOAD \"registry.3\"\nbroken ;\n"), 241);
  EXPECT_EQ(run.Err(), "parse error near token ;.\nparse error.\n");
}

TEST_F(LoadFileTest, ErrorsInTheLoadFileAreParseErrors) {
  run.Write("out/registry.2", "gate SCREEN ;\nbroken ;\n");
  EXPECT_EQ(Compile("LOAD \"registry.2\"\n"), 241);
  EXPECT_EQ(run.Err(), "parse error near token ;.\nparse error.\n");
}

}  // namespace
