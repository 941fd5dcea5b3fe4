// The registry stage of a real compile: its messages on stderr, in the order
// the stage finds the problems, then the driver's "compiler error" and 245.
#include <gtest/gtest.h>

#include <string>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

const char kHost[] = "interface le0 192.168.1.1/24\ninterface le1 10.0.0.1/8\ninterface qfe0\n";

const char kSite[] =
    "\"remote administration\" SERVICE tcp 3852 ;\n"
    "skip SERVICE tcp 1640 ;\n"
    "inside ADDRESS 192.168.1.0/24 ;\n"
    "outside ADDRESS ! inside ;\n"
    "gate SCREEN ADMIN_IP 192.168.1.1 ;\n"
    "le0 INTERFACE ADMIN inside ;\n"
    "le1 INTERFACE GWY outside COMPLETE ;\n";

// Compiles the engines of "*", the site and `extra` for the screen "gate".
int Compile(CompilerRun& run, const std::string& extra) {
  run.Write("site.conf", std::string(kStarServiceEngines) + kSite + extra);
  run.Write("gate.host", kHost);
  return run.Run("-s gate -f site.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("gate.host"));
}

TEST(RegistryVerificationCompileTest, FailingStageReportsEverythingThenEndsWith245) {
  CompilerRun run;
  EXPECT_EQ(Compile(run,
                    "le9 INTERFACE GWY inside ;\n"
                    "group ADDRESS inside nowhere ;\n"
                    "x ADDRESS y ;\n"
                    "y ADDRESS x ;\n"
                    "web SERVICE nosuch 80 ;\n"),
            245);
  EXPECT_EQ(run.Err(),
            "Error: Interface does not exist. (le9)\n"
            "Error: \"group\" refers to undefined ADDRESS: \"nowhere\".\n"
            "Error: \"nosuch\" refers to undefined STATEENGINE:\"Service\".\n"
            "Error: Cycle detected Address \"x\"\n"
            "Error: Cycle detected Address \"y\"\n"
            "compiler error\n");
}

TEST(RegistryVerificationCompileTest, InconsistentServiceRunsIntoTheNextLine) {
  CompilerRun run;
  EXPECT_EQ(Compile(run, "odd SERVICE tcp 80 PARAMS ( 1 ) ;\n"), 245);
  EXPECT_EQ(run.Err(), "Error: Service incorrectly defined(odd)compiler error\n");
}

TEST(RegistryVerificationCompileTest, WarningsAloneLetTheCompileSucceed) {
  CompilerRun run;
  EXPECT_EQ(Compile(run, "dark ADDRESS ;\nqfe0 INTERFACE CLK dark ;\n"), 0);
  EXPECT_EQ(run.Err(),
            "Warning: Stealth Interface should use non-empty Address: (qfe0: dark)\n"
            "Warning: Stealth Interfaces detected but STEALTH_NET not specified.\n"
            "Warning: These IP addresses are not associated with any STEALTH Interface.  NAT, CDP and packet "
            "routing may not work correctly: 0.0.0.0 - 255.255.255.255 \n");
}

}  // namespace
