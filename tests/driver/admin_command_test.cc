// fw_config as administrators run it: renaming with every reference,
// saving new versions under locks, listings and reference reports, and the
// answers to bad requests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/compiler_run.h"

namespace {

// One object of every kind, each named by every sort of reference the
// language has.
const char kEstate[] =
    "\"tcp_engine\" STATE_ENGINE ;\n"
    "\"tcpx\" STATE_ENGINE \"tcp_engine\" port FORWARD 1 1 0xffff 0 ;\n"
    "\"www\" SERVICE tcpx 80 ;\n"
    "\"web and mail\" SERVICE_GROUP \"www\" ;\n"
    "\"lan\" ADDRESS 10.1.0.0/24 SCREEN \"gw\" ;\n"
    "\"far\" ADDRESS 192.0.2.1 ;\n"
    "\"not lan\" ADDRESS \"*\" ! \"lan\" ;\n"
    "\"gw id\" CERTIFICATE IKE \"CN=gw\" ;\n"
    "\"far id\" CERTIFICATE IKE \"CN=far\" ;\n"
    "\"ids\" CERTIFICATE \"gw id\" \"far id\" ;\n"
    // A registry that uses IKE certificates has these two groups; one that
    // lacks them gets them at its first save.
    "\"IKE root CA certificates\" CERTIFICATE COMMENT \"RESERVED: list of root CA certificates\" ;\n"
    "\"IKE manually verified certificates\" CERTIFICATE COMMENT \"RESERVED: list of verified/trusted certificates\" ;\n"
    "\"hq\" SCREEN ;\n"
    "\"gw\" SCREEN IKE \"3DES\" \"SHA1\" 2 \"RSA-SIGNATURES\" \"gw id\" ESP \"3DES\" \"SHA1\" TUNNEL \"far\" "
    "MASTER \"hq\" ;\n"
    "\"qe0\" INTERFACE GWY \"lan\" SCREEN \"gw\" ;\n"
    "\"nights\" TIME EVERYDAY 0 0 6 0 ;\n"
    "RULE \"www\" \"lan\" \"far\" ALLOW TIME \"nights\" SCREEN \"gw\" ;\n"
    "RULE \"web and mail\" \"not lan\" \"lan\" IKE \"3DES\" \"SHA1\" 2 \"RSA-SIGNATURES\" \"gw id\" \"far id\" "
    "ESP \"3DES\" \"SHA1\" ALLOW ;\n"
    "NAT STATIC \"lan\" \"far\" \"lan\" \"far\" SCREEN \"gw\" ;\n"
    "ACCESS \"alice\" STATUS SCREEN \"gw\" ;\n"
    "ACCESS IKE \"carol\" ALL \"far\" \"3DES\" \"SHA1\" 2 \"RSA-SIGNATURES\" \"far id\" ESP \"3DES\" \"SHA1\" "
    "TUNNEL \"lan\" ;\n"
    "VPNGATEWAY IKE \"corp\" \"lan\" \"3DES\" \"SHA1\" 2 \"RSA-SIGNATURES\" \"gw id\" ESP \"3DES\" \"SHA1\" "
    "SCREEN \"gw\" ;\n"
    "RULE \"www\" \"lan\" \"far\" VPN \"corp\" ALLOW ;\n";

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

// The saved text without the lines that carry the version numbers, which
// every save raises, and the empty line behind the registry's.
std::string WithoutVersions(std::string text) {
  for (const char* label : {"REGISTRY_VERSION ", "POLICY_VERSION "}) {
    size_t start = text.find(std::string("\n") + label);
    if (start == std::string::npos) continue;
    size_t end = text.find('\n', start + 1);
    if (label[0] == 'R') ++end;
    text.erase(start + 1, end - start);
  }
  return text;
}

struct RenameCase {
  const char* kind;
  const char* old_name;
  const char* new_name;
  // The screen the object is bound to, or "".
  const char* screen;
};

void PrintTo(const RenameCase& rename, std::ostream* out) { *out << rename.kind << ' ' << rename.old_name; }

class RenameTest : public testing::TestWithParam<RenameCase> {};

// A rename is right when the saved text is the old one with the name
// changed wherever it stood, and nothing else changed.
TEST_P(RenameTest, ChangesTheObjectAndEveryReference) {
  const RenameCase& rename = GetParam();
  CompilerRun run;
  run.Write("policy", kEstate);
  ASSERT_EQ(run.RunConfig("print -f policy"), 0) << run.Err();
  std::string expected = ReplaceAll(run.Out(), std::string("\"") + rename.old_name + "\"",
                                    std::string("\"") + rename.new_name + "\"");
  std::string screen = *rename.screen != '\0' ? std::string(" -s ") + rename.screen : "";
  ASSERT_EQ(run.RunConfig(std::string("rename ") + rename.kind + " '" + rename.old_name + "' '" + rename.new_name +
                          "' -f policy" + screen),
            0)
      << run.Err();
  EXPECT_EQ(run.Read("policy"), run.Read("policy.1"));
  ASSERT_EQ(run.RunConfig("print -f policy"), 0) << run.Err();
  EXPECT_EQ(WithoutVersions(run.Out()), WithoutVersions(expected));
}

INSTANTIATE_TEST_SUITE_P(Kinds, RenameTest,
                         testing::Values(RenameCase{"addresses", "lan", "office", "gw"},
                                         RenameCase{"addresses", "far", "remote", ""},
                                         RenameCase{"services", "www", "web", ""},
                                         RenameCase{"screens", "gw", "gate", ""},
                                         RenameCase{"screens", "hq", "head office", ""},
                                         RenameCase{"certificates", "gw id", "gate id", ""},
                                         RenameCase{"certificates", "far id", "remote id", ""},
                                         RenameCase{"times", "nights", "night hours", ""},
                                         RenameCase{"vpn", "corp", "corporate", ""}),
                         [](const testing::TestParamInfo<RenameCase>& info) {
                           std::string name = std::string(info.param.kind) + "_" + info.param.old_name;
                           for (char& c : name)
                             if (!isalnum(static_cast<unsigned char>(c))) c = '_';
                           return name;
                         });

TEST(SaveTest, EachSaveLeavesANumberedCopyAndTheNewestUnderTheBaseName) {
  CompilerRun run;
  run.Write("policy", kEstate);
  ASSERT_EQ(run.RunConfig("save -f policy"), 0) << run.Err();
  ASSERT_EQ(run.RunConfig("save -f policy"), 0) << run.Err();
  EXPECT_EQ(run.Read("policy"), run.Read("policy.2"));
  EXPECT_NE(run.Read("policy.2").find("POLICY_VERSION 2\n"), std::string::npos);
  EXPECT_NE(run.Read("policy.1").find("POLICY_VERSION 1\n"), std::string::npos);
  // The saved text reads back: a third save of it changes nothing but the
  // version.
  ASSERT_EQ(run.RunConfig("save -f policy"), 0) << run.Err();
  EXPECT_EQ(WithoutVersions(run.Read("policy.3")), WithoutVersions(run.Read("policy.2")));
}

TEST(SaveTest, ALoadedRegistryIsSavedBesideThePolicyThatNamesItsVersion) {
  CompilerRun run;
  run.Write("registry", "\"far\" ADDRESS 192.0.2.1 ;\n");
  run.Write("policy", "LOAD \"registry\"\nRULE \"*\" \"far\" \"*\" ALLOW ;\n");
  ASSERT_EQ(run.RunConfig("save -f policy"), 0) << run.Err();
  EXPECT_EQ(run.Read("registry"), run.Read("registry.1"));
  EXPECT_NE(run.Read("registry").find("REGISTRY_VERSION 1\n\n//Internal"), std::string::npos);
  EXPECT_NE(run.Read("policy").find("POLICY_VERSION 1\nREGISTRY_USED_VERSION 1\nLOAD \"registry\"\n"),
            std::string::npos);
  EXPECT_NE(run.Read("registry").find("\"far\"\tADDRESS"), std::string::npos);
  EXPECT_EQ(run.Read("policy").find("ADDRESS"), std::string::npos);
}

TEST(SaveTest, RefusesAStoredCopyAndALockHeldByAnother) {
  CompilerRun run;
  run.Write("policy.4", kEstate);
  EXPECT_EQ(run.RunConfig("save -f policy.4"), 235);
  EXPECT_EQ(run.Err(), "Cannot save a versioned file.  Use \"saveas Policy name Registry Registry\".\n");
  run.Write("policy", kEstate);
  run.Write("policy.lock", "1 WRITE elsewhere admin\n");
  EXPECT_EQ(run.RunConfig("save -f policy"), 243);
  EXPECT_EQ(run.Err(), "could not acquire write lock.\n");
  EXPECT_FALSE(run.Exists("policy.5"));
}

TEST(ListTest, ListsObjectsEntriesAndReferences) {
  CompilerRun run;
  run.Write("estate.conf", kEstate);
  EXPECT_EQ(run.RunConfig("list addresses -f estate.conf"), 0);
  EXPECT_EQ(run.Out(),
            "\"far\" HOST 192.0.2.1\n"
            "SCREEN \"gw\" \"lan\" RANGE 10.1.0.0/24\n"
            "\"not lan\" GROUP { \"*\" } { \"lan\" }\n");
  EXPECT_EQ(run.RunConfig("list rules 3 -f estate.conf"), 0);
  EXPECT_EQ(run.Out(), "3 \"www\" \"lan\" \"far\" VPN \"corp\" ALLOW\n");
  EXPECT_EQ(run.RunConfig("list vpn --names -f estate.conf"), 0);
  EXPECT_EQ(run.Out(), "\"corp\"\n");
  EXPECT_EQ(run.RunConfig("refs services www -f estate.conf"), 0);
  EXPECT_EQ(run.Out(),
            "SERVICE \"web and mail\"\n"
            "1\tRULE\tSCREEN \"gw\" \"www\" \"lan\" \"far\" ALLOW TIME \"nights\"\n"
            "3\tRULE\t\"www\" \"lan\" \"far\" VPN \"corp\" ALLOW\n");
}

TEST(ArgumentsTest, BadRequestsGetTheUsageOrTheCompilersAnswer) {
  struct Request {
    const char* arguments;
    int status;
    const char* err_start;
  };
  const Request requests[] = {
      {"", 1, "Usage: fw_config print"},
      {"list", 1, "Usage"},
      {"list hosts -f estate.conf", 1, "Usage"},
      {"list rules first -f estate.conf", 1, "Usage"},
      {"list addresses far --names -f estate.conf", 1, "Usage"},
      {"refs rules 1 -f estate.conf", 1, "Usage"},
      {"rename engines tcpx tcp2 -f estate.conf", 1, "Usage"},
      {"rename addresses far", 1, "Usage"},
      {"save", 1, "Usage"},
      {"print -x", 1, ""},
      {"refs addresses nobody -f estate.conf", 224, "Object not found \"nobody\"\n"},
      {"rename addresses lan office -f estate.conf", 224, "Object not found \"lan\"\n"},
      {"print -f missing.conf", 240, "file not found.\n"},
      {"print -f broken.conf", 241, "parse error near token ;.\nparse error.\n"},
      {"print -o nowhere", 2, "Error: output directory does not exist (nowhere)\n"},
  };
  CompilerRun run;
  run.Write("estate.conf", kEstate);
  run.Write("broken.conf", "broken ;\n");
  for (const Request& request : requests) {
    EXPECT_EQ(run.RunConfig(request.arguments), request.status) << request.arguments;
    EXPECT_EQ(run.Err().rfind(request.err_start, 0), 0u) << request.arguments << ": " << run.Err();
  }
}

}  // namespace
