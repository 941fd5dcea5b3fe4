// fw_config check, query and shadowed against a hand-written policy; every
// expected rule is worked out from the policy's meaning.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

// Three strict-enough networks: the LAN with its administrators, the DMZ
// with a web server, and the outside; the screen resolves names (DNS), so
// it gets administrative rules of its own.
const char kPolicy[] =
    "ip_engine STATE_ENGINE ;\n"
    "ip STATE_ENGINE ip_engine protocol FORWARD 4 1 0xff 0 ;\n"
    "\"remote administration\" SERVICE tcp 3852 ;\n"
    "\"skip\" SERVICE ip 57 ;\n"
    "\"dns\" SERVICE dns 53 ;\n"
    "\"www\" SERVICE tcp 80 tcp 443 ;\n"
    "\"ssh\" SERVICE tcp 22 ;\n"
    "\"web and ssh\" SERVICE_GROUP \"www\" \"ssh\" ;\n"
    "\"bootp\" SERVICE udp_datagram 67 BROADCAST ;\n"
    "\"lan\" ADDRESS 10.1.0.0/24 ;\n"
    "\"admins\" ADDRESS 10.1.0.0/28 ;\n"
    "\"lan but admins\" ADDRESS \"lan\" ! \"admins\" ;\n"
    "\"dmz\" ADDRESS 10.2.0.0/24 ;\n"
    "\"web\" ADDRESS 10.2.0.10 ;\n"
    "\"public web\" ADDRESS 192.0.2.10 ;\n"
    "\"gw outside\" ADDRESS 192.0.2.1 ;\n"
    "\"outside\" ADDRESS ! \"lan\" ! \"dmz\" ;\n"
    "\"work\" TIME MONDAY 8 0 18 0 ;\n"
    "\"gw\" SCREEN DNS ;\n"
    "\"qe0\" INTERFACE GWY \"lan\" COMPLETE SCREEN \"gw\" ;\n"
    "\"qe1\" INTERFACE GWY \"dmz\" COMPLETE SCREEN \"gw\" ;\n"
    "\"qe2\" INTERFACE GWY \"outside\" SCREEN \"gw\" ;\n"
    "RULE \"ssh\" \"admins\" \"dmz\" ALLOW ;\n"
    "RULE \"ssh\" \"lan but admins\" \"dmz\" DENY ;\n"
    "RULE \"www\" \"*\" \"web\" ALLOW LOG_SUMMARY ;\n"
    "RULE \"web and ssh\" \"lan but admins\" \"outside\" ALLOW TIME \"work\" ;\n"
    "RULE \"bootp\" \"lan\" \"*\" ALLOW ;\n"
    // 1 and 2 together take all of it.
    "RULE \"ssh\" \"lan\" \"dmz\" ALLOW ;\n"
    // 3 alone takes all of it.
    "RULE \"www\" \"lan\" \"web\" DENY ;\n"
    // 3 takes the web server's part only.
    "RULE \"www\" \"lan\" \"dmz\" DENY ;\n"
    // 4 takes the working hours of the LAN but its administrators only.
    "RULE \"web and ssh\" \"lan\" \"outside\" DENY ;\n"
    "NAT STATIC \"web\" \"*\" \"public web\" \"*\" ;\n"
    "NAT DYNAMIC \"lan\" \"*\" \"gw outside\" \"*\" ;\n";

const char kHost[] =
    "interface qe0 10.1.0.1/24\n"
    "interface qe1 10.2.0.1/24\n"
    "interface qe2 192.0.2.1/24\n"
    "release 8\n";

class CompiledPolicyTest : public testing::Test {
 protected:
  CompiledPolicyTest() {
    text_ = std::string(kStarServiceEngines) + kPolicy;
    run_.Write("policy", text_);
    run_.Write("host", kHost);
  }
  int Config(const std::string& arguments, const std::string& input = "/dev/null") {
    return run_.RunConfig(arguments, input, "FERROWALL_HOST=" + run_.Path("host"));
  }
  // "rule <n> (policy:<line>)" for the statement that starts with `statement`.
  std::string Rule(int number, const std::string& statement) const {
    return "rule " + std::to_string(number) + " (policy:" + std::to_string(LineOf(statement)) + ")";
  }
  int LineOf(const std::string& statement) const {
    size_t at = text_.find(statement + " ;\n");
    EXPECT_NE(at, std::string::npos) << statement;
    int line = 1;
    for (size_t i = 0; i < at; ++i) line += text_[i] == '\n';
    return line;
  }

  std::string text_;
  CompilerRun run_;
};

struct PacketCase {
  const char* packet;
  int rule;                // 0: the default or an administrative rule
  const char* statement;   // of the deciding rule
  const char* decision;    // what follows the arrow, up to the rule
  const char* translation; // the applying NAT's number, "" for none
};

TEST_F(CompiledPolicyTest, QueryNamesTheRuleThatDecidesEachPacket) {
  const std::vector<PacketCase> cases = {
      // Administrators may reach the DMZ by ssh; their LAN address is hidden.
      {"qe0 tcp 10.1.0.5:1000 10.2.0.7:22", 1, "RULE \"ssh\" \"admins\" \"dmz\" ALLOW", "ALLOW", "2"},
      // The rest of the LAN may not; a refused packet is translated by nothing.
      {"qe0 tcp 10.1.0.50:1000 10.2.0.7:22", 2, "RULE \"ssh\" \"lan but admins\" \"dmz\" DENY", "DENY", ""},
      // The web server from outside, on either port; the packet's source
      // isn't the one of any translation.
      {"qe2 tcp 198.51.100.7:40000 10.2.0.10:443", 3, "RULE \"www\" \"*\" \"web\" ALLOW LOG_SUMMARY", "ALLOW", ""},
      {"qe2 tcp 198.51.100.7:40000 10.2.0.11:443", 0, "", "DENY by default", ""},
      // Working hours hold from Monday 8:00 to 18:00; the time rule takes
      // the LAN but not its administrators.
      {"qe0 tcp 10.1.0.50:1000 198.51.100.7:443 monday 09:30", 4,
       "RULE \"web and ssh\" \"lan but admins\" \"outside\" ALLOW TIME \"work\"", "ALLOW", "2"},
      {"qe0 tcp 10.1.0.50:1000 198.51.100.7:22 MONDAY 18:00", 4,
       "RULE \"web and ssh\" \"lan but admins\" \"outside\" ALLOW TIME \"work\"", "ALLOW", "2"},
      {"qe0 tcp 10.1.0.50:1000 198.51.100.7:443 monday 18:30", 9, "RULE \"web and ssh\" \"lan\" \"outside\" DENY",
       "DENY", ""},
      {"qe0 tcp 10.1.0.50:1000 198.51.100.7:443 tuesday 09:30", 9, "RULE \"web and ssh\" \"lan\" \"outside\" DENY",
       "DENY", ""},
      {"qe0 tcp 10.1.0.50:1000 198.51.100.7:443", 9, "RULE \"web and ssh\" \"lan\" \"outside\" DENY", "DENY", ""},
      {"qe0 tcp 10.1.0.5:1000 198.51.100.7:443 monday 09:30", 9, "RULE \"web and ssh\" \"lan\" \"outside\" DENY",
       "DENY", ""},
      // bootp has a broadcast part only: the LAN's broadcast address is
      // allowed, a plain address meets no rule.
      {"qe0 udp 10.1.0.5:68 10.1.0.255:67", 5, "RULE \"bootp\" \"lan\" \"*\" ALLOW", "ALLOW", "2"},
      {"qe0 udp 10.1.0.5:68 10.2.0.9:67", 0, "", "DENY by default", ""},
      // A packet that comes from a strict interface's foreign address
      // doesn't arrive there.
      {"qe0 tcp 10.2.0.5:1000 10.2.0.10:80", 0, "", "DENY by default", ""},
  };
  std::string arguments;
  for (const PacketCase& c : cases) arguments += std::string(" '") + c.packet + "'";
  ASSERT_EQ(Config("query -s gw -f policy" + arguments), 0) << run_.Err();
  // Each answer is a line with the rule's saved form at its end, and a
  // line for the translation when one applies.
  std::vector<std::string> answers;
  std::string answer;
  for (size_t at = 0; at < run_.Out().size(); ++at) {
    size_t end = run_.Out().find('\n', at);
    std::string line = run_.Out().substr(at, end - at);
    if (line.rfind("  ", 0) == 0) answers.back() += "\n" + line;
    else answers.push_back(line);
    at = end;
  }
  ASSERT_EQ(answers.size(), cases.size()) << run_.Out();
  for (size_t i = 0; i < cases.size(); ++i) {
    const PacketCase& c = cases[i];
    std::string head = std::string(c.packet) + " -> " + c.decision + (c.rule != 0 ? " by " + Rule(c.rule, c.statement) : "");
    EXPECT_EQ(answers[i].substr(0, head.size()), head) << answers[i];
    std::string nat = *c.translation != '\0' ? std::string("\n  translated by NAT ") + c.translation + " (policy:" : "";
    EXPECT_EQ(answers[i].find("translated by") != std::string::npos, !nat.empty()) << answers[i];
    if (!nat.empty()) {
      EXPECT_NE(answers[i].find(nat), std::string::npos) << answers[i];
    }
  }
}

TEST_F(CompiledPolicyTest, QueryShowsTheSavedFormAndTheAdministrativeRules) {
  run_.Write("packets",
             "qe2 tcp 198.51.100.7:40000 10.2.0.10:80\n"
             "\n"
             // The screen itself resolves names and keys its tunnels.
             "Ferrowall dns 10.2.0.1:1024 10.2.0.53:53\n"
             "Ferrowall 57 10.1.0.1 10.2.0.1\n");
  ASSERT_EQ(Config("query -s gw -f policy -", run_.Path("packets")), 0) << run_.Err();
  EXPECT_NE(run_.Out().find(Rule(3, "RULE \"www\" \"*\" \"web\" ALLOW LOG_SUMMARY") + ": RULE\t\"www\""),
            std::string::npos)
      << run_.Out();
  EXPECT_NE(run_.Out().find("10.2.0.53:53 -> ALLOW by administrative rule: RULE\t\"dns\""), std::string::npos)
      << run_.Out();
  EXPECT_NE(run_.Out().find("10.2.0.1 -> ALLOW by administrative rule: RULE\t\"skip\""), std::string::npos)
      << run_.Out();
}

TEST_F(CompiledPolicyTest, QueryRefusesPacketsItCantAsk) {
  for (const char* packet : {"qe9 tcp 10.1.0.5 10.2.0.7:22", "qe0 gre 10.1.0.5 10.2.0.7", "qe0 tcp 10.1.0 10.2.0.7",
                             "qe0 tcp 10.1.0.5 10.2.0.7:70000", "qe0 tcp 10.1.0.5 10.2.0.7 someday 10:00",
                             "qe0 tcp 10.1.0.5"}) {
    EXPECT_EQ(Config(std::string("query -s gw -f policy '") + packet + "'"), 1) << packet;
    EXPECT_EQ(run_.Err().find(std::string("fw_config: ") + packet + ": "), 0u) << run_.Err();
  }
}

TEST_F(CompiledPolicyTest, ShadowedNamesRulesThatEarlierRulesCoverTogether) {
  ASSERT_EQ(Config("shadowed -s gw -f policy"), 0) << run_.Err();
  std::string expected = Rule(6, "RULE \"ssh\" \"lan\" \"dmz\" ALLOW") + ": RULE\t\"ssh\"  \"lan\"  \"dmz\"  ALLOW;\n" +
                         "  shadowed by " + Rule(1, "RULE \"ssh\" \"admins\" \"dmz\" ALLOW") + ", " +
                         Rule(2, "RULE \"ssh\" \"lan but admins\" \"dmz\" DENY") + "\n" +
                         Rule(7, "RULE \"www\" \"lan\" \"web\" DENY") + ": RULE\t\"www\"  \"lan\"  \"web\"  DENY;\n" +
                         "  shadowed by " + Rule(3, "RULE \"www\" \"*\" \"web\" ALLOW LOG_SUMMARY") + "\n";
  EXPECT_EQ(run_.Out(), expected);
}

TEST_F(CompiledPolicyTest, CheckPointsAtTheTokenOfASyntaxError) {
  // The stray ")" is the 27th character of its line, behind a tab.
  run_.Write("broken", "\"lan\" ADDRESS 10.1.0.0/24 ;\n\"dmz\"\tADDRESS 10.2.0.0/24 ) ;\n");
  EXPECT_EQ(Config("check -s gw -f broken"), 241);
  EXPECT_EQ(run_.Err(),
            "broken:2:27: parse error near token ).\n"
            "\"dmz\"\tADDRESS 10.2.0.0/24 ) ;\n"
            "     \t                    ^\n"
            "parse error.\n");
  EXPECT_EQ(run_.Out(), "");
}

TEST_F(CompiledPolicyTest, CheckPointsAtTheStatementThatNamesWhatIsUndefined) {
  struct {
    const char* statement;
    const char* message;
  } cases[] = {
      {"RULE \"www\" \"lan\" \"nowhere\" ALLOW ;", "Error: \"RULE\" refers to undefined ADDRESS: \"nowhere\"."},
      {"\"late\" ADDRESS \"lan\" \"nowhere\" ;", "Error: \"late\" refers to undefined ADDRESS: \"nowhere\"."},
  };
  int line = 1;
  for (char c : text_) line += c == '\n';
  for (const auto& c : cases) {
    // Indented, so that the column counts too.
    run_.Write("policy", text_ + "  " + c.statement + "\n");
    EXPECT_EQ(Config("check -s gw -f policy"), 245) << c.statement;
    EXPECT_EQ(run_.Err(), "policy:" + std::to_string(line) + ":3: " + c.message + "\ncompiler error\n");
  }
}

TEST_F(CompiledPolicyTest, CheckIsSilentOnASoundConfigurationAndWritesNothing) {
  // The input is found from the directory that -o enters.
  EXPECT_EQ(Config("check -s gw -f ../policy -o out"), 0) << run_.Err();
  EXPECT_EQ(run_.Err() + run_.Out(), "");
  EXPECT_FALSE(run_.Exists("out/ftpp.conf"));
  EXPECT_FALSE(run_.Exists("ftpp.conf"));
}

TEST(CheckExampleTest, TheBundledExampleChecksClean) {
  CompilerRun run;
  EXPECT_EQ(run.RunConfig(std::string("check -s gate -f ") + FW_SOURCE_DIR + "/examples/site.conf", "/dev/null",
                          std::string("FERROWALL_HOST=") + FW_SOURCE_DIR + "/examples/site.host"),
            0);
  EXPECT_EQ(run.Err() + run.Out(), "");
}

}  // namespace
