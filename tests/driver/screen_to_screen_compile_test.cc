// Screens that administer screens, through whole compiles: the rules each
// end makes, and the messages of pairs that can't be linked.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

const char kRegistry[] =
    "\"remote administration\" SERVICE tcp 3852 ;\n"
    "skip SERVICE tcp 1640 ;\n"
    "lan ADDRESS 10.1.0.0/24 ;\n"
    "wan ADDRESS 10.2.0.0/24 ;\n"
    "\"gw skip\" CERTIFICATE NSID 1 MKID \"10.2.0.1\" ;\n"
    "\"branch skip\" CERTIFICATE NSID 1 MKID \"192.0.2.1\" ;\n"
    "\"gw ike\" CERTIFICATE IKE \"CN=gw\" ;\n"
    "\"branch ike\" CERTIFICATE IKE \"CN=branch\" ;\n"
    "\"leaf ike\" CERTIFICATE IKE \"CN=leaf\" ;\n";

const char kSkipAlgorithms[] = "KEYS \"DES-CBC\" DATAS \"DES-CBC\" MACS \"MD5\" COMPRESSIONS \"NONE\"";

// The screen `name` with the interfaces of this host.
std::string Interfaces(const std::string& name) {
  return "qe0 INTERFACE GWY lan COMPLETE SCREEN " + name + " ;\nqe1 INTERFACE GWY wan SCREEN " + name + " ;\n";
}

struct Case {
  const char* name;
  std::string screens;   // the screen statements and the interfaces
  std::string compiled;  // the screen compiled
  std::string host;      // the local key or identity line
  int status;
  std::string err;
  // The listing lines of the rules in the interface programs, each once.
  std::vector<std::string> rules;
};

class ScreenToScreenTest : public testing::TestWithParam<Case> {
 protected:
  int Compile(const Case& c) {
    run.Write("estate.conf", std::string(kStarServiceEngines) + kRegistry + c.screens);
    run.Write("gw.host", "interface qe0 10.1.0.1/24\ninterface qe1 10.2.0.1/24\n" + c.host);
    return run.Run("-s " + c.compiled + " -f " + run.Path("estate.conf") + " -o out", "/dev/null",
                   "FERROWALL_HOST=" + run.Path("gw.host"));
  }
  std::vector<std::string> RemoteAdministrationRules() {
    std::vector<std::string> rules;
    for (const char* file : {"out/qe0.pfl", "out/qe0.rev.pfl", "out/qe1.pfl"}) {
      std::istringstream program(run.Read(file));
      for (std::string line; std::getline(program, line);)
        if (line.rfind("/*RULE\t\"remote administration\"", 0) == 0 &&
            std::find(rules.begin(), rules.end(), line) == rules.end())
          rules.push_back(line);
    }
    return rules;
  }
  CompilerRun run;
};

TEST_P(ScreenToScreenTest, MakesTheRulesOrReports) {
  const Case& c = GetParam();
  EXPECT_EQ(Compile(c), c.status);
  EXPECT_EQ(run.Err(), c.err);
  EXPECT_EQ(RemoteAdministrationRules(), c.rules);
}

const char kIkeProposal[] = "IKE \"DES\" \"MD5\" 1 \"RSA-SIGNATURES\"";

INSTANTIATE_TEST_SUITE_P(
    Pairs, ScreenToScreenTest,
    testing::Values(
        // "mid" is administered by "gw" and administers "leaf": a rule each
        // way, each with the administered screen's proposal.  The rule to
        // "leaf" comes in on qe0, the one from "gw" on qe1.
        Case{"MasterInTheMiddleOfAChain",
             std::string("gw SCREEN ADMIN_IP 172.16.0.1 ") + kIkeProposal + " \"gw ike\" ESP \"DES\" \"MD5\" ;\n" +
                 "mid SCREEN ADMIN_IP 10.1.0.9 " + kIkeProposal + " \"branch ike\" ESP \"DES\" \"MD5\" MASTER gw ;\n" +
                 "leaf SCREEN ADMIN_IP 10.2.0.9 " + kIkeProposal + " \"leaf ike\" AH \"MD5\" MASTER mid ;\n" +
                 Interfaces("mid"),
             "mid", "ike-local-id CN=branch\n", 0, "",
             {"/*RULE\t\"remote administration\"  \"10.1.0.9\"  \"10.2.0.9\"  IKE \"DES\" \"MD5\" 1 "
              "\"RSA-SIGNATURES\" \"branch ike\" \"leaf ike\" AH \"MD5\"  SOURCE_SCREEN \"mid\" DESTINATION_SCREEN "
              "\"leaf\"  ALLOW*/",
              "/*RULE\t\"remote administration\"  \"172.16.0.1\"  \"10.1.0.9\"  IKE \"DES\" \"MD5\" 1 "
              "\"RSA-SIGNATURES\" \"gw ike\" \"branch ike\" ESP \"DES\" \"MD5\"  SOURCE_SCREEN \"gw\" "
              "DESTINATION_SCREEN \"mid\"  ALLOW*/"}},
        // Without its own ADMIN_IP the master is "*" seen from the slave
        // (cut by the arrival sets of qe0 and R); the slave decrypts with
        // its local SKIP key.
        Case{"SkipSlaveOfAMasterWithoutAdminIp",
             std::string("gw SCREEN CERTIFICATE \"gw skip\" ;\n") +
                 "branch SCREEN ADMIN_IP 10.2.0.1 CERTIFICATE \"branch skip\" " + kSkipAlgorithms +
                 " MASTER gw ;\n" + Interfaces("branch"),
             "branch", "skip-local-key 1 c0000201\n", 0, "",
             {"/*RULE\t\"remote administration\"  \"lan\"  \"10.2.0.1\"  SKIP_VERSION_2  \"gw skip\"  "
              "\"branch skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\" DESTINATION_SCREEN \"branch\"  ALLOW*/",
              "/*RULE\t\"remote administration\"  \"* - Other\"  \"10.2.0.1\"  SKIP_VERSION_2  \"gw skip\"  "
              "\"branch skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\" DESTINATION_SCREEN \"branch\"  ALLOW*/"}},
        // Neither SKIP key is here: the direction can't be found.
        Case{"SkipKeyOfNeitherScreen",
             std::string("gw SCREEN CERTIFICATE \"gw skip\" ;\n") +
                 "branch SCREEN ADMIN_IP 10.2.0.1 CERTIFICATE \"branch skip\" " + kSkipAlgorithms +
                 " MASTER gw ;\n" + Interfaces("branch"),
             "branch", "", 245,
             "\"branch skip\" is expected to be a local certificate.\n"
             "Error:  could not generate Rule from Screen: \"gw\"\ncompiler error\n",
             {}},
        Case{"DifferentKindsOfCertificate",
             std::string("gw SCREEN CERTIFICATE \"gw skip\" ;\n") + "branch SCREEN ADMIN_IP 10.2.0.1 " +
                 kIkeProposal + " \"branch ike\" MASTER gw ;\n" + Interfaces("branch"),
             "branch", "", 245,
             "Primary and Secondary screens must have same certificate types.\n"
             "Error:  could not generate Rule from Screen: \"gw\"\ncompiler error\n",
             {}},
        Case{"SlaveWithoutAdminIp",
             std::string("gw SCREEN ") + kIkeProposal + " \"gw ike\" ;\nbranch SCREEN " + kIkeProposal +
                 " \"branch ike\" MASTER gw ;\n" + Interfaces("gw"),
             "gw", "", 245,
             "\"branch\" requires an Admin IP Address to be administered by screen \"gw\"\n"
             "Error:  could not generate Rule to Screen: \"branch\"\ncompiler error\n",
             {}},
        Case{"SlaveWithoutPhaseTwo",
             std::string("gw SCREEN ") + kIkeProposal + " \"gw ike\" ;\nbranch SCREEN ADMIN_IP 10.2.0.1 " +
                 kIkeProposal + " \"branch ike\" MASTER gw ;\n" + Interfaces("gw"),
             "gw", "", 245,
             "\"branch\" is missing ESP and AH parameters\n"
             "Error:  could not generate Rule to Screen: \"branch\"\ncompiler error\n",
             {}}),
    [](const testing::TestParamInfo<Case>& info) { return info.param.name; });

}  // namespace
