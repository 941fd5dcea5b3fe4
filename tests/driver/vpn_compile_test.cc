// VPN rules through the whole compile: the messages of gateways that can't
// be used, and which ordered pairs of gateways a VPN rule becomes.
#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "common/compiler_run.h"
#include "common/star_service_engines.h"

namespace {

const char kRegistry[] =
    "\"remote administration\" SERVICE tcp 3852 ;\n"
    "skip SERVICE tcp 1640 ;\n"
    "www SERVICE tcp 80 ;\n"
    "lan ADDRESS 10.1.0.0/24 ;\n"
    "\"lan host\" ADDRESS 10.1.0.5 ;\n"
    "wan ADDRESS 10.2.0.0/24 ;\n"
    "branch ADDRESS 172.16.0.0/24 ;\n"
    "tunnel ADDRESS 192.0.2.1 ;\n"
    "gw SCREEN ;\n"
    "qe0 INTERFACE GWY lan COMPLETE SCREEN gw ;\n"
    "qe1 INTERFACE GWY wan SCREEN gw ;\n"
    "\"gw skip\" CERTIFICATE NSID 1 MKID \"10.2.0.1\" ;\n"
    "\"branch skip\" CERTIFICATE NSID 1 MKID \"192.0.2.1\" ;\n"
    "\"gw ike\" CERTIFICATE IKE \"CN=gw\" ;\n"
    "\"branch ike\" CERTIFICATE IKE \"CN=branch\" ;\n"
    "\"other ike\" CERTIFICATE IKE \"CN=other\" ;\n";

const char kHost[] =
    "interface qe0 10.1.0.1/24\n"
    "interface qe1 10.2.0.1/24\n"
    "skip-local-key 1 0a020001\n"
    "ike-local-id CN=gw\n";

// An IKE gateway of "corp" for `address` with `certificate`, and `more`.
std::string IkeGateway(const std::string& address, const std::string& certificate, const std::string& more = "") {
  return "VPNGATEWAY IKE corp \"" + address + "\" \"DES\" \"MD5\" 1 \"RSA-SIGNATURES\" \"" + certificate +
         "\" ESP \"DES\" \"MD5\" " + more + ";\n";
}

const std::string kLanAndBranch = IkeGateway("lan", "gw ike") + IkeGateway("branch", "branch ike", "TUNNEL tunnel");

class VpnCompileTest : public testing::Test {
 protected:
  int Compile(const std::string& policy) {
    run.Write("estate.conf", std::string(kStarServiceEngines) + kRegistry + policy);
    run.Write("gw.host", kHost);
    return run.Run("-s gw -f " + run.Path("estate.conf") + " -o out", "/dev/null",
                   "FERROWALL_HOST=" + run.Path("gw.host"));
  }
  // The pairs of IKE rules in ike/config as "source certificate -> destination
  // certificate", once for the copies of one rule that follow each other.
  std::vector<std::string> Pairs() {
    std::istringstream config(run.Read("out/ike/config"));
    std::vector<std::string> pairs;
    const std::string method = "\"RSA-SIGNATURES\" \"";
    for (std::string line; std::getline(config, line);) {
      size_t at = line.find(method);
      if (line.rfind("# RULE:", 0) != 0 || at == std::string::npos) continue;
      std::istringstream names(line.substr(at + method.size() - 1));
      std::string source, destination;
      names >> std::quoted(source) >> std::quoted(destination);
      std::string pair = source + " -> " + destination;
      if (pairs.empty() || pairs.back() != pair) pairs.push_back(pair);
    }
    return pairs;
  }
  CompilerRun run;
};

TEST_F(VpnCompileTest, GatewaysThatCantBeUsedAreReportedPassByPass) {
  EXPECT_EQ(Compile("VPNGATEWAY IKE corp nowhere \"DES\" \"MD5\" 1 \"RSA-SIGNATURES\" \"no cert\" TUNNEL away "
                    "SCREEN nobody ;\n"
                    "VPNGATEWAY skipped branch \"gw ike\" KEYS \"DES-CBC\" DATAS \"DES-CBC\" MACS \"MD5\" "
                    "COMPRESSIONS \"NONE\" ;\n"
                    "VPNGATEWAY IKE older branch \"branch skip\" \"RSA-SIGNATURES\" \"DES\" \"MD5\" ;\n"
                    "RULE www lan branch VPN other ALLOW ;\n"),
            245);
  EXPECT_EQ(run.Err(),
            "Error: \"RULE\" refers to undefined VPN: \"other\".\n"
            "Error: \"VPNGateway\" refers to undefined ADDRESS: \"nowhere\".\n"
            "Error: \"VPNGateway\" refers to undefined ADDRESS: \"away\".\n"
            "Error: \"VPNGateway\" refers to undefined FERROWALL: \"nobody\".\n"
            "Error: \"VPNGateway\" refers to undefined CERTIFICATE: \"no cert\".\n"
            "Error: VPNGateway refers to invalid Certificate type: \"gw ike\"\n"
            "Error: VPNGateway refers to invalid Certificate type: \"branch skip\"\n"
            "compiler error\n");
}

struct PairCase {
  const char* name;
  std::string policy;
  std::vector<std::string> pairs;
};

class VpnPairTest : public VpnCompileTest, public testing::WithParamInterface<PairCase> {};

TEST_P(VpnPairTest, KeepsThePairsWithThisScreenAtOneEnd) {
  ASSERT_EQ(Compile(GetParam().policy), 0) << run.Err();
  EXPECT_EQ(run.Err(), "");
  EXPECT_EQ(Pairs(), GetParam().pairs);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, VpnPairTest,
    testing::Values(
        // Only the branch gateway meets the source: one rule after the first
        // sweep, one pair after the second.
        PairCase{"SourceBehindOneGateway", kLanAndBranch + "RULE www branch lan VPN corp ALLOW ;\n",
                 {"branch ike -> gw ike"}},
        // Both "branch" gateways meet the source, and the last of them is the
        // source gateway of both copies; they never pair with each other.
        PairCase{"GatewaysSharingAnAddressName",
                 kLanAndBranch + IkeGateway("branch", "other ike") + "RULE www \"*\" \"*\" VPN corp ALLOW ;\n",
                 {"other ike -> gw ike", "gw ike -> other ike", "gw ike -> branch ike"}},
        // "lan host" lies inside "lan" under another name, so the two pair.
        PairCase{"OverlappingGatewaysPair",
                 kLanAndBranch + IkeGateway("lan host", "other ike") + "RULE www lan \"*\" VPN corp ALLOW ;\n",
                 {"other ike -> gw ike", "gw ike -> other ike", "gw ike -> branch ike"}},
        PairCase{"RuleWithoutGatewaysDisappears", kLanAndBranch + "RULE www wan wan VPN corp ALLOW ;\n", {}}),
    [](const testing::TestParamInfo<PairCase>& info) { return info.param.name; });

}  // namespace
