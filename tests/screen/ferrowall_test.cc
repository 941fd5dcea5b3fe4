#include "screen/ferrowall.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "screen/distribution_fixture.h"
#include "model/address.h"
#include "model/registry.h"
#include "screen/interface.h"

namespace {

// The screens of a test live in the registry's list, which owns them.
class FerrowallTest : public testing::Test {
 protected:
  Ferrowall& AddScreen(const char* name, const FerrowallSettings& settings) {
    Ferrowall* screen = new Ferrowall(name, settings);
    registry.Screens(*screen);
    return *screen;
  }

  // An HA screen: primary or secondary, with its HA address and master.
  Ferrowall& AddHAScreen(const char* name, int primary, int secondary, const char* ha_ip,
                         const char* master) {
    FerrowallSettings settings;
    settings.ha_primary = primary;
    settings.ha_secondary = secondary;
    settings.ha_ip = ha_ip != nullptr ? ip(ha_ip) : 0;
    settings.master = master;
    return AddScreen(name, settings);
  }

  void AddRoutingInterface(const char* name, Interface_Type type) {
    registry.GWYInterfaces(
        *new Interface(name, "nets", type, LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, nullptr, 0, nullptr));
  }

  // Resolves the masters of all screens.
  void ResolveMasters() {
    for (TList_Cell<Entity>* cell = registry.Screens().Head(); cell != nullptr; cell = cell->Next())
      EXPECT_EQ(cell->Data()->Resolve(CO_SCREEN, registry.Screens(), errors), 0);
  }

  Registry registry;
  std::ostringstream errors;
};

TEST_F(FerrowallTest, SecondaryTakesItsMastersNameBeforeAndAfterResolution) {
  Ferrowall& secondary = AddHAScreen("second", 0, 1, "10.9.0.2", "first");
  EXPECT_EQ(secondary.FigureVirtualName(registry, errors), 0);
  EXPECT_STREQ(secondary.VirtualName(), "first");

  Ferrowall& both = AddHAScreen("both", 1, 1, "10.9.0.3", "first");
  AddHAScreen("first", 1, 0, "10.9.0.1", nullptr);
  ResolveMasters();
  EXPECT_EQ(both.FigureVirtualName(registry, errors), 0);
  EXPECT_STREQ(both.VirtualName(), "first");
  EXPECT_EQ(both.VirtualName(), both.MasterResolved()->Name());
}

TEST_F(FerrowallTest, UndefinedMasterPassesTheVirtualNameAndFailsResolution) {
  Ferrowall& secondary = AddHAScreen("second", 0, 1, "10.9.0.2", "ghost");
  EXPECT_EQ(secondary.FigureVirtualName(registry, errors), 0);
  EXPECT_EQ(secondary.Resolve(CO_SCREEN, registry.Screens(), errors), 1);
  EXPECT_EQ(errors.str(), "Error: \"second\" refers to undefined SCREEN: \"ghost\".\n");
  EXPECT_EQ(secondary.MasterResolved(), nullptr);
}

TEST_F(FerrowallTest, InlineAdminIPResolvesToItselfDespiteANameClash) {
  simplerange range = {ip("10.0.0.1"), ip("10.0.0.1"), RS_ADDRESSES};
  Address* inline_address = new Address(&range);
  registry.Addresses(*new Address(inline_address->Name(), ip("192.168.0.1"), nullptr, nullptr));
  FerrowallSettings settings;
  settings.admin_ip = inline_address;
  Ferrowall& screen = AddScreen("s", settings);
  EXPECT_EQ(screen.Resolve(CO_ADDRESS, registry.Addresses(), errors), 0);
  EXPECT_EQ(screen.AdminIP(), inline_address);
}

TEST_F(FerrowallTest, AddressReferencesResolveByNameAndReportMisses) {
  Address* admin = new Address("admin", ip("10.0.0.1"), "s", nullptr);
  registry.Addresses(*admin);
  FerrowallSettings settings;
  settings.admin_ip = new Address("admin", nullptr, nullptr, ADDRESS_SINGLE);
  settings.tunnel = "tunnel";
  Ferrowall& screen = AddScreen("s", settings);
  EXPECT_EQ(screen.Resolve(CO_ADDRESS, registry.Addresses(), errors), 1);
  EXPECT_EQ(screen.AdminIP(), admin);
  EXPECT_EQ(errors.str(), "Error: \"s\" refers to undefined ADDRESS: \"tunnel\".\n");
}

TEST_F(FerrowallTest, EveryUnresolvedNameIsCountedWithItsWord) {
  FerrowallSettings settings;
  settings.ike_encryption = "enc";
  settings.ike_hash = "hash";
  settings.ike_authentication = "auth";
  settings.ike_certificate = "ike cert";
  settings.skip_certificate = "skip cert";
  settings.key_algorithm = "key";
  settings.data_algorithm = "data";
  settings.mac_algorithm = "mac";
  settings.compression_algorithm = "comp";
  Ferrowall& screen = AddScreen("s", settings);
  EXPECT_EQ(screen.Resolve(CO_CERTIFICATE, registry.Certificates(), errors), 2);
  EXPECT_EQ(screen.Resolve(CO_ALGORITHM, registry.Algorithms(), errors), 3);
  EXPECT_EQ(screen.Resolve(CO_ALG_KEY, registry.AlgorithmKeyV2(), errors), 1);
  EXPECT_EQ(screen.Resolve(CO_ALG_DATA, registry.AlgorithmDataV2(), errors), 1);
  EXPECT_EQ(screen.Resolve(CO_ALG_MAC, registry.AlgorithmMacV2(), errors), 1);
  EXPECT_EQ(screen.Resolve(CO_ALG_COMP, registry.AlgorithmCompV2(), errors), 1);
  EXPECT_EQ(errors.str(),
            "Error: \"s\" refers to undefined CERTIFICATE: \"ike cert\".\n"
            "Error: \"s\" refers to undefined CERTIFICATE: \"skip cert\".\n"
            "Error: \"s\" refers to undefined ALGORITHM: \"auth\".\n"
            "Error: \"s\" refers to undefined ALGORITHM: \"enc\".\n"
            "Error: \"s\" refers to undefined ALGORITHM: \"hash\".\n"
            "Error: \"s\" refers to undefined KEY ALGORITHM: \"key\".\n"
            "Error: \"s\" refers to undefined DATA ALGORITHM: \"data\".\n"
            "Error: \"s\" refers to undefined MAC ALGORITHM: \"mac\".\n"
            "Error: \"s\" refers to undefined COMPRESSION ALGORITHM: \"comp\".\n");
}

TEST_F(FerrowallTest, CertificatesMustBeOfTheKeyManagementTheyAreNamedFor) {
  registry.Certificates(*new Certificate("ike", IPSEC_IKE, 0, "CN=ike", nullptr, nullptr, nullptr));
  registry.Certificates(*new Certificate("skip", IPSEC_SKIP, 1, "0a0b", nullptr, nullptr, nullptr));
  FerrowallSettings right;
  right.ike_certificate = "ike";
  right.skip_certificate = "skip";
  Ferrowall& good = AddScreen("good", right);
  FerrowallSettings swapped;
  swapped.ike_certificate = "skip";
  swapped.skip_certificate = "ike";
  Ferrowall& bad = AddScreen("bad", swapped);
  for (Ferrowall* screen : {&good, &bad})
    EXPECT_EQ(screen->Resolve(CO_CERTIFICATE, registry.Certificates(), errors), 0);
  EXPECT_EQ(good.Resolve2(CO_CERTIFICATE, registry.Certificates(), errors), 0);
  EXPECT_EQ(bad.Resolve2(CO_ADDRESS, registry.Certificates(), errors), 0);
  EXPECT_EQ(bad.Resolve2(CO_CERTIFICATE, registry.Certificates(), errors), 2);
  EXPECT_EQ(errors.str(),
            "Error: Screen refers to non-IKE Certificate type: \"skip\"\n"
            "Error: Screen refers to non-SKIP Certificate type: \"ike\"\n");
}

TEST_F(FerrowallTest, VerifyReportsTheFirstHAFault) {
  struct Case {
    int primary, secondary;
    const char* ha_ip;
    int ha_interfaces;
    const char* message;
  };
  const Case cases[] = {
      {0, 0, nullptr, 1, "Error: HA not enabled but HA Interface(s) defined.\n"},
      {1, 0, nullptr, 0, "Error: HA Screen is missing HA_IP parameter.\n"},
      {1, 0, "10.9.0.1", 0, "Error: HA enabled with no HA Interface defined.\n"},
      {1, 0, "10.9.0.1", 2, "Error: HA enabled with multiple Interfaces defined.\n"},
      // A secondary's master is checked before anything else.
      {0, 1, nullptr, 0, "Error: HA Secondary with no Master\n"},
  };
  for (const Case& c : cases) {
    Registry fresh;
    std::ostringstream out;
    FerrowallSettings settings;
    settings.ha_primary = c.primary;
    settings.ha_secondary = c.secondary;
    settings.ha_ip = c.ha_ip != nullptr ? ip(c.ha_ip) : 0;
    Ferrowall* screen = new Ferrowall("s", settings);
    fresh.Screens(*screen);
    for (int n = 0; n < c.ha_interfaces; ++n)
      fresh.GWYInterfaces(*new Interface(n == 0 ? "ha0" : "ha1", "nets", INTERFACE_HA, LOG_NONE,
                                         SNMP_NONE, ICMP_NONE, nullptr, nullptr, 0, nullptr));
    EXPECT_EQ(screen->Verify(fresh, out), 1) << c.message;
    EXPECT_EQ(out.str(), c.message);
    EXPECT_EQ(screen->HA_HOSTS(), nullptr);
  }
}

TEST_F(FerrowallTest, PrimaryCollectsTheHAAddressesOfEveryScreenItMasters) {
  Ferrowall& primary = AddHAScreen("first", 1, 0, "10.9.0.1", nullptr);
  AddHAScreen("second", 0, 1, "10.9.0.5", "first");
  AddHAScreen("slave", 0, 0, nullptr, "first");           // no HA address: 0.0.0.0
  AddHAScreen("stranger", 0, 0, "10.9.0.7", "elsewhere");  // another master
  AddHAScreen("elsewhere", 0, 0, "10.9.0.8", nullptr);
  AddRoutingInterface("hme0", INTERFACE_GWY);
  AddRoutingInterface("ha0", INTERFACE_HA);
  ResolveMasters();
  EXPECT_EQ(primary.Verify(registry, errors), 0);
  ASSERT_NE(primary.HA_HOSTS(), nullptr);
  EXPECT_STREQ(primary.HA_HOSTS()->Name(), "HA_HOSTS");
  EXPECT_EQ(ranges_of(*primary.HA_HOSTS()),
            (std::vector<std::string>{"0.0.0.0", "10.9.0.1", "10.9.0.5"}));
  // A second run replaces the hosts.
  EXPECT_EQ(primary.Verify(registry, errors), 0);
  EXPECT_EQ(ranges_of(*primary.HA_HOSTS()).size(), 3u);
  EXPECT_EQ(errors.str(), "");
}

TEST_F(FerrowallTest, SecondaryGetsItsPrimarysHostsAndBothFlagsCountAsPrimary) {
  AddHAScreen("first", 1, 0, "10.9.0.1", nullptr);
  Ferrowall& secondary = AddHAScreen("second", 0, 1, "10.9.0.2", "first");
  Ferrowall& both = AddHAScreen("both", 1, 1, "10.9.0.3", "first");
  AddHAScreen("under both", 0, 0, "10.9.0.4", "both");
  AddRoutingInterface("ha0", INTERFACE_HA);
  ResolveMasters();
  EXPECT_EQ(secondary.Verify(registry, errors), 0);
  EXPECT_EQ(ranges_of(*secondary.HA_HOSTS()),
            (std::vector<std::string>{"10.9.0.1-10.9.0.3"}));
  EXPECT_EQ(both.Verify(registry, errors), 0);
  EXPECT_EQ(ranges_of(*both.HA_HOSTS()), (std::vector<std::string>{"10.9.0.3-10.9.0.4"}));
}

TEST_F(FerrowallTest, ComputeHASkipsScreensOfTheSameName) {
  Ferrowall& primary = AddHAScreen("first", 1, 0, "10.9.0.1", nullptr);
  // A second object named like the primary that names it as master.
  AddHAScreen("first", 0, 0, "10.9.0.5", "first");
  ResolveMasters();
  Address* hosts = primary.ComputeHA(registry.Screens());
  EXPECT_EQ(ranges_of(*hosts), (std::vector<std::string>{"10.9.0.1"}));
  delete hosts;
}

// A screen with every option of the statement set.
FerrowallSettings FullSettings(simplerange* clk) {
  FerrowallSettings settings;
  settings.admin_ip = new Address("adm", nullptr, nullptr, ADDRESS_SINGLE);
  settings.ike_encryption = "3DES-CBC";
  settings.oakley_group = 2;
  settings.ike_authentication = "PRE-SHARED";
  settings.esp_params = new IPsecIKEespParams("3DES", nullptr);
  settings.ah_params = new IPsecIKEahParams("SHA1");
  settings.skip_certificate = "skipc";
  settings.key_algorithm = "k";
  settings.data_algorithm = "d";
  settings.mac_algorithm = "m";
  settings.compression_algorithm = "c";
  settings.tunnel = "tun";
  settings.master = "boss";
  settings.timeout = 30;
  settings.certificate_discovery = settings.dest_check = settings.routing = settings.dns = settings.nis = 1;
  settings.log_size = 100;
  settings.ha_primary = 1;
  settings.ha_ip = ip("10.9.0.1");
  settings.ha_ether = "8:0:20:a:b:ff";
  settings.snmp_recipients = new TList<unsigned>;
  settings.snmp_recipients->Append(*new unsigned(ip("10.0.0.9")));
  settings.snmp_recipients->Append(*new unsigned(ip("10.0.0.10")));
  settings.snmp_timer = 60;
  *clk = {ip("10.1.0.0"), ip("10.1.255.255"), RS_DOTTED_MASK};
  settings.stealth_network = clk;
  settings.comment = "all";
  return settings;
}

std::string statement(const Entity& entity) {
  std::ostringstream out;
  entity.Print(out);
  return out.str();
}

std::string listing(const Entity& entity, Enumerate_Type type) {
  std::ostringstream out;
  entity.Enumerate(out, type);
  return out.str();
}

TEST_F(FerrowallTest, StatementWithEveryOption) {
  simplerange clk;
  const Ferrowall& screen = AddScreen("s", FullSettings(&clk));
  EXPECT_EQ(statement(screen),
            "\"s\" SCREEN ADMIN_IP \"adm\" IKE \"3DES-CBC\" \"NONE\" 2 PRE-SHARED \"NONE\" ESP \"3DES\" \"\" AH \"SHA1\"  "
            "CERTIFICATE \"skipc\""
            " KEYS \"k\" DATAS \"d\" MACS \"m\" COMPRESSIONS \"c\" TUNNEL \"tun\" MASTER \"boss\" TIMEOUT 30"
            " CERTIFICATE_DISCOVERY DEST_CHECK ROUTING DNS NIS LOGSIZE 100 HA_PRIMARY HA_ADMIN_IP 10.9.0.1"
            " HA_ETHER \"8:0:20:a:b:ff\" 10.0.0.9 10.0.0.10 SNMP_TIMER 60 CLK 10.1.0.0 255.255.0.0"
            " COMMENT \"all\"");
  EXPECT_EQ(listing(screen, ENUM_FULL),
            "\"s\" SCREEN ADMIN_IP \"adm\" ESP(\"3DES\") AH(\"SHA1\") IKE(\"3DES-CBC\", \"NONE\", 2, PRE-SHARED, \"NONE\") "
            " ADMIN_CERTIFICATE"
            " \"skipc\" KEY \"k\" DATA \"d\" MAC \"m\" COMPRESSION \"c\" TUNNEL \"tun\" MASTER \"boss\""
            " TIMEOUT 30 CDP DEST_CHECK RIP DNS NIS LOGSIZE 100 HA_PRIMARY HA_IP 10.9.0.1"
            " HA_ETHER 8:0:20:a:b:ff SNMP 10.0.0.9 10.0.0.10 SNMP_TIMER 60 STEALTH_NET 10.1.0.0/255.255.0.0"
            " COMMENT \"all\"\n");
  EXPECT_EQ(listing(screen, ENUM_NAME), "\"s\"\n");
}

TEST_F(FerrowallTest, StatementLeavesDefaultsOutAndWritesInlineAddressesBare) {
  EXPECT_EQ(statement(*registry.Screens().Head()->Data()), "\"*\" SCREEN");
  simplerange admin = {ip("10.0.0.1"), ip("10.0.0.1"), RS_ADDRESSES};
  simplerange net = {ip("10.2.0.0"), ip("10.2.0.255"), RS_PREFIX};
  FerrowallSettings settings;
  settings.admin_ip = new Address(&admin);
  settings.ike_certificate = "ikec";
  settings.ha_ether = "not an ether address";
  settings.stealth_network = &net;
  const Ferrowall& screen = AddScreen("s", settings);
  EXPECT_EQ(statement(screen),
            "\"s\" SCREEN ADMIN_IP 10.0.0.1 IKE \"NONE\" \"NONE\" 0 \"NONE\" \"ikec\"  CLKNET 10.2.0.0/24");
  EXPECT_EQ(listing(screen, ENUM_FULL),
            "\"s\" SCREEN ADMIN_IP 10.0.0.1 IKE(\"ikec\")  STEALTH_NET 10.2.0.0/24\n");
}

}  // namespace
