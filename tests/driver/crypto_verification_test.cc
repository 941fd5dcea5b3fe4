// Security blocks through the whole compile: each verification message of
// the three kinds of key management, with the rule's listing line that
// follows it, and the statuses of the IKE files.
#include <gtest/gtest.h>

#include <string>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

const char kRegistry[] =
    "\"remote administration\" SERVICE tcp 3852 ;\n"
    "skip SERVICE tcp 1640 ;\n"
    "www SERVICE tcp 80 ;\n"
    "lan ADDRESS 10.1.0.0/24 ;\n"
    "wan ADDRESS 10.2.0.0/24 ;\n"
    "branch ADDRESS 172.16.0.0/24 ;\n"
    "tunnel ADDRESS 192.0.2.1 ;\n"
    "gw SCREEN ;\n"
    "peer SCREEN ;\n"
    "qe0 INTERFACE GWY lan COMPLETE SCREEN gw ;\n"
    "qe1 INTERFACE GWY wan SCREEN gw ;\n"
    "\"gw skip\" CERTIFICATE NSID 1 MKID \"10.2.0.1\" ;\n"
    "\"branch skip\" CERTIFICATE NSID 1 MKID \"192.0.2.1\" ;\n"
    "\"gw ike\" CERTIFICATE IKE \"CN=gw\" ;\n"
    "\"branch ike\" CERTIFICATE IKE \"CN=branch\" ;\n"
    "k1 KEY \"one\" ;\n"
    "k2 KEY \"two\" ;\n";

const char kHost[] =
    "interface qe0 10.1.0.1/24\n"
    "interface qe1 10.2.0.1/24\n"
    "skip-local-key 1 0a020001\n"
    "ike-local-id CN=gw\n";

const char kSkip2[] = "\"DES-CBC\" \"DES-CBC\" \"MD5\" \"NONE\"";

struct Case {
  const char* name;
  std::string policy;
  std::string host;  // added to kHost
  int status;
  std::string err;
  std::string out = "";
};

class CryptoVerificationTest : public testing::TestWithParam<Case> {
 protected:
  int Compile(const std::string& policy, const std::string& host) {
    run.Write("estate.conf", std::string(kStarServiceEngines) + kRegistry + policy);
    run.Write("gw.host", kHost + host);
    return run.Run("-s gw -f " + run.Path("estate.conf") + " -o out", "/dev/null",
                   "FERROWALL_HOST=" + run.Path("gw.host"));
  }
  CompilerRun run;
};

TEST_P(CryptoVerificationTest, ReportsAndEndsWithTheStatus) {
  const Case& c = GetParam();
  EXPECT_EQ(Compile(c.policy, c.host), c.status);
  EXPECT_EQ(run.Err(), c.err);
  EXPECT_EQ(run.Out(), c.out);
}

const std::string kCompilerError = "compiler error\n";
// Every resolve pass that asks the block refuses version 1 anew.
const std::string kSkipVersion1 = "SKIP_VERSION_1 not supported in this release\n";

INSTANTIATE_TEST_SUITE_P(
    Messages, CryptoVerificationTest,
    testing::Values(
        Case{"SkipVersion1OnEveryPass",
             "RULE www lan branch SKIP_VERSION_1 \"gw skip\" \"branch skip\" \"DES-CBC\" \"DES-CBC\" ALLOW ;\n", "",
             245, kSkipVersion1 + kSkipVersion1 + kSkipVersion1 + kSkipVersion1 + kSkipVersion1 + kCompilerError},
        Case{"SkipBothEndsLocal",
             std::string("RULE www lan branch SKIP_VERSION_2 \"gw skip\" \"gw skip\" ") + kSkip2 + " ALLOW ;\n", "",
             245,
             "security_parameters direction error: \"www\" \"lan\" \"branch\" SKIP_VERSION_2  \"gw skip\"  "
             "\"gw skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   ALLOW\n" +
                 kCompilerError},
        Case{"SkipDecryptingBlockThatEncrypts",
             std::string("RULE www lan branch SKIP_VERSION_2 \"gw skip\" \"branch skip\" ") + kSkip2 +
                 " SKIP_VERSION_2 \"gw skip\" \"branch skip\" " + kSkip2 + " ALLOW ;\n",
             "", 245,
             "misdirected decryption_parameters: \"www\" \"lan\" \"branch\" SKIP_VERSION_2  \"gw skip\"  "
             "\"branch skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   SKIP_VERSION_2  \"gw skip\"  "
             "\"branch skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   ALLOW\n" +
                 kCompilerError},
        Case{"SkipEncryptingBlockThatDecrypts",
             std::string("RULE www branch lan SKIP_VERSION_2 \"branch skip\" \"gw skip\" ") + kSkip2 +
                 " SKIP_VERSION_2 \"branch skip\" \"gw skip\" " + kSkip2 + " ALLOW ;\n",
             "", 245,
             "misdirected encryption_parameters: \"www\" \"branch\" \"lan\" SKIP_VERSION_2  \"branch skip\"  "
             "\"gw skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   SKIP_VERSION_2  \"branch skip\"  "
             "\"gw skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   ALLOW\n" +
                 kCompilerError},
        Case{"SkipBothBlocksUndecided",
             std::string("RULE www lan branch SKIP_VERSION_2 \"gw skip\" \"gw skip\" ") + kSkip2 +
                 " SKIP_VERSION_2 \"branch skip\" \"branch skip\" " + kSkip2 + " ALLOW ;\n",
             "", 245,
             "decryption_parameters direction error: encryption_parameters direction error: \"www\" \"lan\" "
             "\"branch\" SKIP_VERSION_2  \"gw skip\"  \"gw skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   "
             "SKIP_VERSION_2  \"branch skip\"  \"branch skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"   "
             "ALLOW\n" +
                 kCompilerError},
        Case{"SkipWithAnIkeCertificate",
             std::string("RULE www lan branch SKIP_VERSION_2 \"gw ike\" \"branch skip\" ") + kSkip2 + " ALLOW ;\n",
             "", 245, "Error: Rule refers to invalid Certificate type: gw ike\n" + kCompilerError},
        Case{"UndefinedNamesOfABlock",
             "RULE www lan branch MANUAL ESP 1 \"DES\" KEYS nokey SOURCE_TUNNEL away SOURCE_SCREEN nowhere ALLOW ;\n",
             "", 245,
             "Error: \"RULE\" refers to undefined SCREEN: \"nowhere\".\n"
             "Error: \"RULE\" refers to undefined ADDRESS: \"away\".\n"
             "Error: \"RULE\" refers to undefined CERTIFICATE: \"nokey\".\n" +
                 kCompilerError},
        Case{"ManualWithoutThisScreen",
             "RULE www lan branch MANUAL ESP 1 \"DES\" KEYS k1 DESTINATION_SCREEN peer ALLOW ;\n", "", 245,
             "security_parameters direction error: \"www\" \"lan\" \"branch\" IPSEC ESP(0x1, \"DES\", \"k1\")  "
             "DESTINATION_SCREEN \"peer\" ALLOW\n" +
                 kCompilerError},
        Case{"ManualOnAnOldHost",
             "RULE www lan branch MANUAL ESP 1 \"DES\" KEYS k1 SOURCE_SCREEN gw DESTINATION_SCREEN peer ALLOW ;\n",
             "release 7\n", 0,
             "Warning: IPsec/IKE requires Meridix 8 or higher.\n"
             "Rule uses IPsec/IKE, but this host is not running Meridix 8 or higher.\n"
             "Ferrowall will not be able to provide IPsec/IKE encryption for rule:\n"
             "\"www\" \"lan\" \"branch\" IPSEC ESP(0x1, \"DES\", \"k1\")  SOURCE_SCREEN \"gw\" DESTINATION_SCREEN "
             "\"peer\" ALLOW\n"},
        Case{"ManualAlgorithmNotLoaded", "RULE www lan branch MANUAL ESP 1 \"DES\" KEYS k1 SOURCE_SCREEN gw ALLOW ;\n",
             "ipsec-unavailable DES\n", 245, kCompilerError,
             "Error: a rule in the policy uses the IPsec encryption algorithm DES,\n"
             "but this algorithm is not installed on the system.\n"
             "Please install the package that provides this algorithm.\n"
             "The policy cannot be activated until you install this package,\n"
             "or remove the rule(s) that use this algorithm.\n"},
        Case{"IkePreSharedKeyThatIsACertificate",
             "RULE www lan branch IKE \"DES\" \"MD5\" \"PRE-SHARED\" \"gw ike\" \"\" SOURCE_SCREEN gw ALLOW ;\n", "",
             245, "Error: \"RULE\" refers to undefined CERTIFICATE: \"gw ike\".\n" + kCompilerError},
        Case{"IkeEncryptionNotForPhase1",
             "RULE www lan branch IKE \"AES\" \"MD5\" \"PRE-SHARED\" k1 \"\" SOURCE_SCREEN gw ALLOW ;\n", "", 245,
             kCompilerError,
             "Error: a rule in the policy uses the IKE encryption algorithm AES,\n"
             "but this is not a valid IKE encryption algorithm\n"},
        Case{"IkeScreenAndLocalityDisagree",
             "RULE www lan branch IKE \"DES\" \"MD5\" \"RSA-SIGNATURES\" \"branch ike\" \"gw ike\" SOURCE_SCREEN gw "
             "ALLOW ;\n",
             "", 245,
             "security_parameters direction error: \"www\" \"lan\" \"branch\" IPSEC IKE(\"DES\", \"MD5\", 1, "
             "RSA-SIGNATURES, \"branch ike\", \"gw ike\") SOURCE_SCREEN \"gw\" ALLOW\n" +
                 kCompilerError},
        Case{"ManualIndexesInConflict",
             "RULE www branch lan MANUAL ESP 7 \"DES\" KEYS k1 DESTINATION_TUNNEL tunnel DESTINATION_SCREEN gw ALLOW ;\n"
             "RULE www branch wan MANUAL ESP 7 \"DES\" KEYS k2 DESTINATION_TUNNEL tunnel DESTINATION_SCREEN gw ALLOW ;\n",
             "", 245,
             "Error: IPsec conflict between the following two Rules: RULE\t\"www\"  \"branch\"  \"lan\"  MANUAL ESP 7 "
             "\"DES\" KEYS \"k1\"  DESTINATION_TUNNEL \"tunnel\" DESTINATION_SCREEN \"gw\"  ALLOW;\n"
             "RULE\t\"www\"  \"branch\"  \"wan\"  MANUAL ESP 7 \"DES\" KEYS \"k2\"  DESTINATION_TUNNEL \"tunnel\" "
             "DESTINATION_SCREEN \"gw\"  ALLOW;\n" +
                 kCompilerError},
        // A certificate group has no single counterpart once the ends change
        // places; the first rule that can't be turned around ends the pass.
        Case{"ReverseFilterWithADecryptingCertificateGroup",
             "trace SERVICE udp 33434 REVERSE icmp 11 ;\nbranches CERTIFICATE \"branch skip\" ;\n" +
                 std::string("RULE trace branch lan SKIP_VERSION_2 branches \"gw skip\" ") + kSkip2 + " ALLOW ;\n" +
                 "RULE trace branch wan SKIP_VERSION_2 branches \"gw skip\" " + kSkip2 + " ALLOW ;\n",
             "", 245,
             "Error: Rule uses Certificate Group with Service containing Reverse Filter (RULE\t\"trace\"  \"branch\"  "
             "\"lan\"  SKIP_VERSION_2  \"branches\"  \"gw skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  \"NONE\"  "
             "ALLOW;\n)\n" +
                 kCompilerError},
        Case{"ReverseEngineWithADecryptingCertificateGroup",
             "ftpsvc SERVICE ftp 21 ;\nbranches CERTIFICATE \"branch skip\" ;\n" +
                 std::string("RULE ftpsvc branch lan SKIP_VERSION_2 branches \"gw skip\" ") + kSkip2 + " ALLOW ;\n",
             "", 245,
             "Error: Rule uses Certificate Group with Service containing Reverse State Engine (RULE\t\"ftpsvc\"  "
             "\"branch\"  \"lan\"  SKIP_VERSION_2  \"branches\"  \"gw skip\"  \"DES-CBC\"  \"DES-CBC\"  \"MD5\"  "
             "\"NONE\"  ALLOW;\n)\n" +
                 kCompilerError},
        Case{"ManualIndexesSharedWithTheSameKey",
             "RULE www branch lan MANUAL ESP 7 \"DES\" KEYS k1 DESTINATION_TUNNEL tunnel DESTINATION_SCREEN gw ALLOW ;\n"
             "RULE www branch wan MANUAL ESP 7 \"DES\" KEYS k1 DESTINATION_TUNNEL tunnel DESTINATION_SCREEN gw ALLOW ;\n",
             "", 0, ""}),
    [](const testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

// The key daemon's files go into directories of their own; a directory that
// is there already may hold another compile's files, so the compile stops.
TEST(CryptoOutputTest, AnIkeDirectoryThatExistsStopsTheOutput) {
  CompilerRun run;
  run.Write("estate.conf", std::string(kStarServiceEngines) + kRegistry +
                               "RULE www lan branch IKE \"DES\" \"MD5\" \"PRE-SHARED\" k1 \"\" SOURCE_SCREEN gw ALLOW ;\n");
  run.Write("gw.host", kHost);
  mkdir(run.Path("out/ike").c_str(), 0755);
  EXPECT_EQ(run.Run("-s gw -f " + run.Path("estate.conf") + " -o out", "/dev/null",
                    "FERROWALL_HOST=" + run.Path("gw.host")),
            237);
  EXPECT_EQ(run.Err(), "Unable to create directory 'ike', error: File exists\nCould not write file \"gw\"\n");
  EXPECT_FALSE(run.Exists("out/secret"));
  EXPECT_FALSE(run.Exists("out/Remote.Access"));
  EXPECT_TRUE(run.Exists("out/qe0.data"));
}

// A hand-written configuration of the etc directory is copied in whole, and
// a special group bound to the screen names its certificates for the daemon.
TEST(CryptoOutputTest, IkeConfigurationTakesTheLocalFileAndTheScreensGroup) {
  CompilerRun run;
  run.Write("estate.conf", std::string(kStarServiceEngines) + kRegistry +
                               "\"IKE manually verified certificates\" CERTIFICATE \"branch ike\" SCREEN gw ;\n"
                               "office ADDRESS 10.1.0.5 ;\n"
                               "RULE www office tunnel IKE \"DES\" \"MD5\" \"PRE-SHARED\" k1 \"\" SOURCE_SCREEN gw ALLOW ;\n");
  run.Write("gw.host", kHost);
  mkdir(run.Path("etc/ike").c_str(), 0755);
  run.Write("etc/ike/config", "# by hand\nretry 3\n");
  ASSERT_EQ(run.Run("-s gw -f " + run.Path("estate.conf") + " -o out", "/dev/null",
                    "FERROWALL_HOST=" + run.Path("gw.host")),
            0)
      << run.Err();
  std::string included = run.Path("etc") + "/ike/config";
  std::string config = run.Read("out/ike/config");
  EXPECT_EQ(config.substr(0, config.find("\n# RULE: ")),
            "#IKEconf *** This file is automatically generated by Ferrowall activation ***\n"
            "#        *************************  Do not hand-edit  ***********************\n"
            "\n# *** inclusion: '" + included + "' ***\n\n# by hand\nretry 3\n\n# *** end inclusion: '" + included +
                "' ***\n"
                "\n# *** 'IKE manually verified certificates' SCREEN gw ***\ncert_trust\t \"CN=branch\" \n");
}

}  // namespace
