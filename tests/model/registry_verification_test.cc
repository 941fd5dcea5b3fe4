// Registry::Verify on parsed configuration texts and a described host: what
// it links and builds for a clean configuration, and every message it can
// give, in its order.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "common/star_service_engines.h"
#include "crypto/certificate.h"
#include "lang/parsed_configuration.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/registry.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "services/service.h"
#include "support/host.h"
#include "support/host_description.h"

namespace {

const char kHost[] =
    "interface le0 192.168.1.1/24\n"
    "interface le1 10.0.0.1/8\n"
    "interface le2 172.16.0.1/16\n"
    "interface le3 172.17.0.1/16\n"
    "interface qfe0\n"
    "interface qfe1\n";

// One admin and one routing interface that protect the two halves of the
// space.
const char kSite[] =
    "inside ADDRESS 192.168.1.0/24 ;\n"
    "outside ADDRESS ! inside ;\n"
    "le0 INTERFACE ADMIN inside ;\n"
    "le1 INTERFACE GWY outside COMPLETE ;\n";

const char kGate[] = "gate SCREEN ADMIN_IP 192.168.1.1 ;\n";

// The ranges in ascending order, each followed by a blank.
std::string RangesOf(const Address& address) {
  std::ostringstream text;
  address.DumpRanges(text, nullptr, 0);
  return text.str();
}

// Parses the engines of the service "*" and `text`, then verifies for the
// screen "gate" as the compile does, on the host `host`.
class RegistryVerificationTest : public testing::Test {
 protected:
  void TearDown() override { Host::Use(nullptr); }

  int Verify(const std::string& text, const std::string& host = kHost) {
    auto description = std::make_unique<HostDescription>();
    std::string error;
    EXPECT_TRUE(description->Parse(host, "test host", &error)) << error;
    Host::Use(std::move(description));
    parsed_ = std::make_unique<ParsedConfiguration>(kStarServiceEngines + text);
    EXPECT_EQ(parsed_->result, 0) << parsed_->err;
    Ferrowall& gate = *Find<Ferrowall>(registry().Screens(), "gate");
    std::ostringstream messages;
    testing::internal::CaptureStderr();
    gate.FigureVirtualName(registry(), messages);
    int errors = registry().Verify(&gate, messages);
    err_ = testing::internal::GetCapturedStderr();
    out_ = messages.str();
    return errors;
  }

  Registry& registry() { return parsed_->registry(); }

  template <class T>
  T* Find(const TList<Entity>& list, const char* name) {
    return dynamic_cast<T*>(Entity(name, nullptr, nullptr, 0).FindSelf(list, 1));
  }

  std::unique_ptr<ParsedConfiguration> parsed_;
  std::string out_;  // what Verify wrote to its stream
  std::string err_;  // what it wrote to the standard error stream
};

TEST_F(RegistryVerificationTest, ObjectsOfOtherScreensMayNameWhatDoesNotExist) {
  EXPECT_EQ(Verify(std::string(kSite) + kGate +
                   "branch SCREEN ;\n"
                   "far ADDRESS nowhere SCREEN branch ;\n"
                   "mix SERVICE_GROUP missing SCREEN branch ;\n"
                   "odd SERVICE nosuch 1 SCREEN branch ;\n"
                   "qfe9 INTERFACE GWY nowhere SCREEN branch ;\n"
                   "certs CERTIFICATE missing SCREEN branch ;\n"),
            0);
  EXPECT_EQ(out_, "");
  EXPECT_EQ(Names(registry().GWYInterfaces()), "le1 Ferrowall ");
}

TEST_F(RegistryVerificationTest, UndefinedNamesAreReportedWithTheirKindAndNothingIsReduced) {
  EXPECT_EQ(Verify(std::string(kSite) +
                   "group ADDRESS inside nowhere ;\n"
                   "web SERVICE tcp 80 nosuch 1 ;\n"
                   "both SERVICE_GROUP web absent ;\n"
                   "lost STATE_ENGINE ghost port FORWARD 1 9 0xffff 0 ;\n"
                   "le2 INTERFACE GWY unknown ;\n"
                   "ikecert CERTIFICATE IKE \"CN=gate\" ;\n"
                   "certs CERTIFICATE ikecert missingcert ;\n"
                   "gate SCREEN ADMIN_IP adminnet CERTIFICATE skipcert TUNNEL tunnelnet MASTER boss ;\n"),
            10);
  EXPECT_EQ(out_,
            "Error: \"group\" refers to undefined ADDRESS: \"nowhere\".\n"
            "Error: \"gate\" refers to undefined ADDRESS: \"adminnet\".\n"
            "Error: \"gate\" refers to undefined ADDRESS: \"tunnelnet\".\n"
            "Error: \"gate\" refers to undefined SCREEN: \"boss\".\n"
            "Error: \"gate\" refers to undefined CERTIFICATE: \"skipcert\".\n"
            "Error: \"lost\" refers to undefined STATEENGINEINTERNAL: \"ghost\".\n"
            "Error: \"nosuch\" refers to undefined STATEENGINE:\"Service\".\n"
            "Error: \"both\" refers to undefined SERVICE: \"absent\".\n"
            "Error: \"le2\" refers to undefined ADDRESS: \"unknown\".\n"
            "Error: \"certs\" refers to undefined CERTIFICATE: \"missingcert\".\n");
  EXPECT_EQ(Find<AddressList>(registry().Addresses(), "group")->Reduced(), 0);
  EXPECT_EQ(Find<Service>(registry().ServicesCompile(), "web")->Reduced(), 0);
  EXPECT_EQ(registry().ReverseAdminInterface(), nullptr);
}

TEST_F(RegistryVerificationTest, AlgorithmsWithoutANumberAreUndefinedInListOrder) {
  EXPECT_EQ(Verify(std::string(kSite) +
                   "ikecert CERTIFICATE IKE \"CN=gate\" ;\n"
                   "gate SCREEN ADMIN_IP 192.168.1.1 IKE \"ROT13\" \"MD5\" 2 \"PRE-SHARED\" ikecert\n"
                   "  KEYS nokey DATAS \"DES-CBC\" ;\n"),
            2);
  EXPECT_EQ(out_, "Undefined Algorithm: nokey\nUndefined Algorithm: ROT13\n");
}

TEST_F(RegistryVerificationTest, MissingDeviceStopsItsListAndResolutionStillReports) {
  EXPECT_EQ(Verify("inside ADDRESS 192.168.1.0/24 ;\n"
                   "group ADDRESS nowhere ;\n"
                   "le0 INTERFACE ADMIN inside ;\n"
                   "le5 INTERFACE GWY inside ;\n"
                   "le1 INTERFACE GWY inside ;\n"
                   "le2 INTERFACE DISABLED inside ;\n"
                   "le9 INTERFACE DISABLED inside ;\n" +
                   std::string(kGate)),
            2);
  EXPECT_EQ(err_, "Error: Interface does not exist. (le5)\n");
  EXPECT_EQ(out_, "Error: \"group\" refers to undefined ADDRESS: \"nowhere\".\n");
  // The interfaces behind the missing one were left alone; disabled ones
  // aren't looked for on the host but still take their addresses.
  EXPECT_EQ(RangesOf(*Find<Interface>(registry().GWYInterfaces(), "le1")->InterfaceAddress()), "");
  EXPECT_EQ(RangesOf(*registry().Localhost()), "172.16.0.1 - 172.16.0.1 192.168.1.1 - 192.168.1.1 ");
}

TEST_F(RegistryVerificationTest, ProtectedAddressesOfOneFamilyMayMeetOnlyInsideBothOverlaps) {
  const std::string addresses =
      "wide ADDRESS 10.0.0.0/8 ;\n"
      "part ADDRESS 10.1.0.0/16 ;\n"
      "other ADDRESS 10.1.2.0/24 ;\n"
      "shared ADDRESS 10.1.0.0/16 ;\n"
      "inside ADDRESS 192.168.1.0/24 ;\n"
      "le0 INTERFACE ADMIN \"*\" ;\n" +
      std::string(kGate);
  EXPECT_EQ(Verify(addresses +
                   "le1 INTERFACE GWY wide ;\n"
                   "le2 INTERFACE GWY part ;\n"
                   "le3 INTERFACE GWY other ;\n"),
            3);
  EXPECT_EQ(out_,
            "Error: Interfaces intersect (\"le1\", \"le2\")\n"
            "Error: Interfaces intersect (\"le1\", \"le3\")\n"
            "Error: Interfaces intersect (\"le2\", \"le3\")\n");

  EXPECT_EQ(Verify(addresses + "le1 INTERFACE GWY wide shared ;\nle2 INTERFACE GWY part shared ;\n"), 0);
  EXPECT_EQ(out_, "");
  // The overlap must be named on both sides and cover the whole intersection.
  EXPECT_EQ(Verify(addresses + "le1 INTERFACE GWY wide shared ;\nle2 INTERFACE GWY part ;\n"), 1);
  EXPECT_EQ(Verify(addresses + "le1 INTERFACE GWY wide other ;\nle2 INTERFACE GWY part other ;\n"), 1);
  EXPECT_EQ(out_, "Error: Interfaces intersect (\"le1\", \"le2\")\n");
}

TEST_F(RegistryVerificationTest, EveryGroupOnACycleIsReportedOnItsOwn) {
  EXPECT_EQ(Verify(std::string(kSite) + kGate +
                   "x ADDRESS y ;\ny ADDRESS x ;\nz ADDRESS x ;\n"
                   "a ADDRESS b ;\nb ADDRESS c ;\nc ADDRESS b ;\n"
                   "s1 SERVICE_GROUP s2 ;\ns2 SERVICE_GROUP s1 ;\n"
                   "c1 CERTIFICATE c2 ;\nc2 CERTIFICATE c1 ;\n"),
            8);
  EXPECT_EQ(out_,
            "Error: Cycle detected Address \"x\"\n"
            "Error: Cycle detected Address \"y\"\n"
            "Error: Cycle detected Address \"b\"\n"
            "Error: Cycle detected Address \"c\"\n"
            "Error: Cycle detected Service \"s1\"\n"
            "Error: Cycle detected Service \"s2\"\n"
            "Error: Cycle detected Certificate \"c1\"\n"
            "Error: Cycle detected Certificate \"c2\"\n");
}

TEST_F(RegistryVerificationTest, InconsistentServiceMessageHasNoLineEnd) {
  EXPECT_EQ(Verify(std::string(kSite) + kGate +
                   "odd SERVICE tcp 80 PARAMS ( 1 ) ;\n"
                   "fine SERVICE udp 53 ;\n"
                   "odder SERVICE udp 53 PARAMS ( 1 ) ;\n"),
            2);
  EXPECT_EQ(out_, "Error: Service incorrectly defined(odd)Error: Service incorrectly defined(odder)");
}

TEST_F(RegistryVerificationTest, CertificateGroupsMustReduceAndScreensNameTheRightKind) {
  EXPECT_EQ(Verify(std::string(kSite) +
                   "ike1 CERTIFICATE IKE \"CN=a\" ;\n"
                   "ike2 CERTIFICATE IKE \"CN=b\" ;\n"
                   "skip1 CERTIFICATE NSID 1 MKID \"10.0.0.1\" ;\n"
                   "mixed CERTIFICATE ike1 skip1 ;\n"
                   "withex CERTIFICATE ike1 ! ike2 ;\n"
                   "outer CERTIFICATE withex ;\n"
                   "gate SCREEN ADMIN_IP 192.168.1.1 IKE \"DES\" \"MD5\" 2 \"PRE-SHARED\" skip1 ;\n"),
            3);
  EXPECT_EQ(out_,
            "Error: Certificate group includes multiple Certificate types: \"mixed\"\n"
            "Error: Certificate group contains illegal construct(s): \"outer\"\n"
            "Error: Screen refers to non-IKE Certificate type: \"skip1\"\n");
  EXPECT_EQ(err_,
            "Error: Certificate group: \"outer\" cannot include group: \"withex\" because it contains "
            "exclusions\n");
}

TEST_F(RegistryVerificationTest, SecondaryScreensNeedOneRealAdminAddress) {
  EXPECT_EQ(Verify(std::string(kSite) + kGate +
                   "none ADDRESS ;\n"
                   "span ADDRESS 192.168.1.10 - 192.168.1.20 ;\n"
                   "s_empty SCREEN ADMIN_IP none MASTER gate ;\n"
                   "s_star SCREEN ADMIN_IP \"*\" MASTER gate ;\n"
                   "s_span SCREEN ADMIN_IP span MASTER gate ;\n"
                   "s_one SCREEN ADMIN_IP 192.168.1.7 MASTER gate ;\n"
                   "s_ha SCREEN ADMIN_IP \"*\" MASTER gate HA_SECONDARY ;\n"
                   "s_deeper SCREEN ADMIN_IP \"*\" MASTER s_one ;\n"
                   "s_no_ip SCREEN MASTER gate ;\n"),
            2);
  EXPECT_EQ(err_,
            "Error: Cannot use an empty Address group for ADMIN_IP of secondary Screen, s_empty\n"
            "ADMIN_IP should be a single IP Address that exists on the secondary Screen.\n"
            "Error: ADMIN_IP cannot be 0.0.0.0 or * for a secondary Screen.\n"
            "Warning: ADMIN_IP should be a single IP Address that exists on the secondary Screen, not a group or "
            "range. Screen: s_star\n"
            "Warning: ADMIN_IP should be a single IP Address that exists on the secondary Screen, not a group or "
            "range. Screen: s_span\n");
  EXPECT_EQ(out_, "");
  EXPECT_EQ(registry().ReverseAdminInterface(), nullptr);
}

TEST_F(RegistryVerificationTest, SecondaryCheckNeedsAScreenBesidesTheCompiledOne) {
  const std::string alone = std::string(kSite) + "gate SCREEN ADMIN_IP \"*\" MASTER gate ;\n";
  EXPECT_EQ(Verify(alone), 0);
  EXPECT_EQ(err_, "");
  EXPECT_EQ(Verify(alone + "branch SCREEN ;\n"), 1);
  EXPECT_EQ(err_,
            "Error: ADMIN_IP cannot be 0.0.0.0 or * for a secondary Screen.\n"
            "Warning: ADMIN_IP should be a single IP Address that exists on the secondary Screen, not a group or "
            "range. Screen: gate\n");
}

TEST_F(RegistryVerificationTest, StealthInterfacesWarnAboutEmptyAddressesNetworkAndUncoveredSpace) {
  EXPECT_EQ(Verify(std::string(kSite) + kGate +
                   "dark ADDRESS ;\n"
                   "lit ADDRESS 172.20.0.0/16 ;\n"
                   "qfe0 INTERFACE CLK dark ;\n"
                   "qfe1 INTERFACE CLK lit ;\n"),
            0);
  EXPECT_EQ(out_,
            "Warning: Stealth Interface should use non-empty Address: (qfe0: dark)\n"
            "Warning: Stealth Interfaces detected but STEALTH_NET not specified.\n"
            "Warning: These IP addresses are not associated with any STEALTH Interface.  NAT, CDP and packet "
            "routing may not work correctly: 0.0.0.0 - 172.19.255.255 172.21.0.0 - 255.255.255.255 \n");

  EXPECT_EQ(Verify(std::string(kSite) + "gate SCREEN ADMIN_IP 192.168.1.1 CLKNET 172.20.0.0/16 ;\n" +
                   "qfe0 INTERFACE CLK \"*\" ;\n"),
            0);
  EXPECT_EQ(out_, "");
  EXPECT_EQ(RangesOf(*registry().Localhost()),
            "10.0.0.1 - 10.0.0.1 172.20.0.0 - 172.20.0.0 192.168.1.1 - 192.168.1.1 ");
}

// The site with `count` stealth interfaces, each behind a network of its
// own; `host` receives the host that has their devices.
std::string StealthSite(int count, std::string* host) {
  std::string text = std::string(kSite) + "gate SCREEN ADMIN_IP 192.168.1.1 CLKNET 172.20.0.0/16 ;\n";
  *host = kHost;
  for (int i = 0; i < count; ++i) {
    std::string name = "hme" + std::to_string(i);
    std::string network = "net" + std::to_string(i);
    text += network + " ADDRESS 10.0." + std::to_string(i) + ".0/24 ;\n";
    text += name + " INTERFACE CLK " + network + " ;\n";
    *host += "interface " + name + "\n";
  }
  return text;
}

TEST_F(RegistryVerificationTest, FifteenStealthInterfacesAreTheLimit) {
  std::string host;
  std::string text = StealthSite(15, &host);
  EXPECT_EQ(Verify(text, host), 0);
  EXPECT_EQ(out_.find("Error"), std::string::npos) << out_;
  text = StealthSite(16, &host);
  EXPECT_EQ(Verify(text, host), 1);
  EXPECT_EQ(out_, "Error: More than 15 STEALTH Interfaces defined.\n");
}

TEST_F(RegistryVerificationTest, DisabledInterfacesAloneMakeAnEmptyRoutingReverseInterface) {
  EXPECT_EQ(Verify(std::string(kGate) + "spare ADDRESS 10.0.0.0/8 ;\nle9 INTERFACE DISABLED spare ;\n"), 0);
  EXPECT_EQ(err_, "Warning: No enabled (Routing or Admin) Interfaces detected.\n");
  EXPECT_TRUE(registry().GWYInterfaces().Empty());
  const Interface* reverse = registry().ReverseGWYInterface();
  ASSERT_NE(reverse, nullptr);
  EXPECT_STREQ(reverse->Name(), "Ferrowall");
  EXPECT_STREQ(reverse->Description(), "Reverse Interface");
  EXPECT_EQ(RangesOf(*reverse->ProtectedAddress()), "");
  EXPECT_EQ(registry().ReverseAdminInterface(), nullptr);
}

}  // namespace
