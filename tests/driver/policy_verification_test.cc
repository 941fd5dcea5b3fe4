// The policy stage of the compile: rules and address translations that
// name what doesn't exist or can't be translated, each reported exactly,
// and the compile ending with "compiler error".
#include <gtest/gtest.h>

#include <string>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

const char kRegistry[] =
    "\"remote administration\" SERVICE tcp 3852 ;\n"
    "skip SERVICE tcp 1640 ;\n"
    "www SERVICE tcp 80 ;\n"
    "inside ADDRESS 192.168.1.0/24 ;\n"
    "outside ADDRESS ! inside ;\n"
    "web ADDRESS 192.168.1.80 ;\n"
    "pool ADDRESS 10.0.0.0 - 10.0.0.255 ;\n"
    "public ADDRESS 203.0.113.80 ;\n"
    "lower ADDRESS 10.0.0.128 - 10.0.0.130 ;\n"
    "nothing ADDRESS ;\n"
    "gate SCREEN ADMIN_IP 192.168.1.1 ;\n"
    "le0 INTERFACE ADMIN inside SCREEN gate ;\n"
    "le1 INTERFACE GWY outside SCREEN gate ;\n";

class PolicyVerificationTest : public testing::Test {
 protected:
  int Compile(const std::string& policy) {
    run.Write("estate.conf", std::string(kStarServiceEngines) + kRegistry + policy);
    run.Write("gate.host", "interface le0 192.168.1.1/24\ninterface le1 203.0.113.1/24\n");
    return run.Run("-s gate -f estate.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("gate.host"));
  }
  CompilerRun run;
};

TEST_F(PolicyVerificationTest, UndefinedNamesOfARuleInTheOrderOfTheirKinds) {
  EXPECT_EQ(Compile("RULE nosuch from to ALLOW ;\n"), 245);
  EXPECT_EQ(run.Err(),
            "Error: \"RULE\" refers to undefined ADDRESS: \"from\".\n"
            "Error: \"RULE\" refers to undefined ADDRESS: \"to\".\n"
            "Error: \"RULE\" refers to undefined SERVICE: \"nosuch\".\n"
            "compiler error\n");
}

TEST_F(PolicyVerificationTest, UndefinedTimeAndVpn) {
  EXPECT_EQ(Compile("RULE www inside web VPN corp ALLOW TIME later ;\n"), 245);
  EXPECT_EQ(run.Err(),
            "Error: \"RULE\" refers to undefined VPN: \"corp\".\n"
            "Error: \"RULE\" refers to undefined TIME: \"later\".\n"
            "compiler error\n");
}

TEST_F(PolicyVerificationTest, TimeStarAndEntriesOfAnotherScreenPass) {
  EXPECT_EQ(Compile("RULE www inside web ALLOW TIME \"*\" ;\n"
                    "RULE nosuch from to ALLOW SCREEN elsewhere ;\nNAT STATIC a b c d SCREEN elsewhere ;\n"),
            0);
  EXPECT_EQ(run.Err(), "");
}

// Each rule that can't give up its Ethernet part is reported, with no line
// end after it, and the translations are not looked at any more.
TEST_F(PolicyVerificationTest, EthernetRulesWithAUserAreRefused) {
  EXPECT_EQ(Compile("ether STATE_ENGINE tcp_engine type FORWARD 9 1 0xffff 0 ;\n"
                    "arp SERVICE ether 2054 ;\n"
                    "RULE arp inside web USER bob ALLOW ;\n"
                    "RULE arp inside web ALLOW ;\n"
                    "RULE arp web inside USER ann ALLOW ;\n"
                    "NAT STATIC pool \"*\" public \"*\" ;\n"),
            245);
  EXPECT_EQ(run.Err(),
            "Error: SKIP and Ethernet filtering not supported(RULE\t\"arp\"  \"inside\"  \"web\"  USER \"bob\"  ALLOW;\n)"
            "Error: SKIP and Ethernet filtering not supported(RULE\t\"arp\"  \"web\"  \"inside\"  USER \"ann\"  ALLOW;\n)"
            "compiler error\n");
}

// The FTP and Telnet proxies authenticate a user, the SMTP proxy serves
// anybody; every rule that doesn't fit is reported, and the proxies' files
// are not written.
TEST_F(PolicyVerificationTest, ProxiesThatLackOrMustNotHaveAUser) {
  EXPECT_EQ(Compile("RULE www inside web ALLOW PROXY_FTP FTP_GET FTP_PUT !FTP_CHDIR FTP_MKDIR FTP_RENAME "
                    "FTP_REMOVE_DIR FTP_DELETE ;\n"
                    "RULE www inside web USER bob ALLOW PROXY_SMTP RELAY ;\n"
                    "RULE www inside web ALLOW PROXY_HTTP !COOKIES !ACTIVE_X !SSL !JAVA ;\n"
                    "RULE www inside web USER bob DENY PROXY_HTTP COOKIES ACTIVE_X SSL JAVA ;\n"
                    "RULE www inside web DENY PROXY_Telnet ;\n"),
            245);
  EXPECT_EQ(run.Err(),
            "Proxy Error: \"www\" \"inside\" \"web\" ALLOW PROXY_FTP FTP_GET FTP_PUT FTP_MKDIR FTP_RENAME FTP_REMOVE_DIR "
            "FTP_DELETE\n"
            "Proxy Error: \"www\" \"inside\" \"web\" USER \"bob\" ALLOW PROXY_SMTP RELAY\n"
            "Proxy Error: \"www\" \"inside\" \"web\" DENY PROXY_Telnet\n"
            "compiler error\n");
  EXPECT_FALSE(run.Exists("ftpp.conf"));
}

TEST_F(PolicyVerificationTest, TranslationOfUndefinedAddresses) {
  EXPECT_EQ(Compile("NAT DYNAMIC inside away public \"*\" ;\n"), 245);
  EXPECT_EQ(run.Err(), "Error: \"NAT\" refers to undefined ADDRESS: \"away\".\ncompiler error\n");
}

TEST_F(PolicyVerificationTest, TranslationChecksOneErrorPerEntry) {
  EXPECT_EQ(Compile("NAT STATIC pool \"*\" public \"*\" ;\n"
                    "NAT DYNAMIC pool \"*\" public \"*\" ;\n"
                    "NAT DYNAMIC pool \"*\" lower \"*\" ;\n"
                    "NAT DYNAMIC pool web public inside SCREEN gate ;\n"
                    "NAT STATIC nothing \"*\" nothing \"*\" ;\n"),
            245);
  EXPECT_EQ(run.Err(),
            "Error: Static NAT, but Addresses are different sizes\n"
            "\tSTATIC \"pool\" \"*\" \"public\" \"*\"\n"
            "Error: Original and Tranlated Source Addresses Intersect.\n"
            "\tDYNAMIC \"pool\" \"*\" \"lower\" \"*\"\n"
            "Error: Original and Tranlated Destination Addresses Intersect.\n"
            "\tSCREEN \"gate\" DYNAMIC \"pool\" \"web\" \"public\" \"inside\"\n"
            "Error:  Cannot translate both source and destination addresses.\n"
            "\tSCREEN \"gate\" DYNAMIC \"pool\" \"web\" \"public\" \"inside\"\n"
            "\"nothing\", \"nothing\" Address(es) have no value and cannot be used in a NAT Rule.\n"
            "compiler error\n");
}

}  // namespace

namespace {

// The high-availability checks of the screen come after the policy stage.
class ScreenVerificationTest : public PolicyVerificationTest {
 protected:
  int CompileWith(const std::string& screen_and_interfaces) {
    std::string registry = kRegistry;
    registry.erase(registry.find("gate SCREEN"));
    run.Write("estate.conf", std::string(kStarServiceEngines) + registry + screen_and_interfaces);
    run.Write("gate.host", "interface le0 192.168.1.1/24\ninterface le1 203.0.113.1/24\ninterface le2 10.9.9.1/24\n");
    return run.Run("-s gate -f estate.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("gate.host"));
  }
};

const char kInterfaces[] =
    "pair ADDRESS 10.9.9.0/24 ;\n"
    "beyond ADDRESS ! inside ! pair ;\n"
    "le0 INTERFACE ADMIN inside SCREEN gate ;\n"
    "le1 INTERFACE GWY beyond SCREEN gate ;\n";

TEST_F(ScreenVerificationTest, HighAvailabilityFaults) {
  const struct {
    const char* screen;
    const char* more;
    const char* err;
  } cases[] = {
      {"gate SCREEN ADMIN_IP 192.168.1.1 ;\n", "le2 INTERFACE HA pair SCREEN gate ;\n",
       "Error: HA not enabled but HA Interface(s) defined.\n"},
      {"gate SCREEN ADMIN_IP 192.168.1.1 HA_PRIMARY ;\n", "", "Error: HA Screen is missing HA_IP parameter.\n"},
      {"gate SCREEN ADMIN_IP 192.168.1.1 HA_PRIMARY HA_ADMIN_IP 10.9.9.1 ;\n", "",
       "Error: HA enabled with no HA Interface defined.\n"},
      {"gate SCREEN ADMIN_IP 192.168.1.1 HA_SECONDARY ;\n", "", "Error: HA Secondary with no Master\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CompileWith(c.screen + std::string(kInterfaces) + c.more), 245) << c.screen;
    EXPECT_EQ(run.Err(), std::string(c.err) + "compiler error\n") << c.screen;
  }
}

}  // namespace
