#include "screen/interface.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "screen/distribution_fixture.h"
#include "model/address.h"
#include "screen/ferrowall.h"
#include "screen/interface_clk.h"
#include "support/host.h"
#include "support/host_description.h"

namespace {

std::unique_ptr<Address> address_of(const char* name, const char* start, const char* end) {
  return std::make_unique<Address>(name, ip(start), ip(end), nullptr, nullptr, RS_ADDRESSES);
}

const char kHost[] =
    "interface hme0 10.0.0.1/24\n"
    "interface hme0:1 10.0.1.1/24\n"
    "interface hme1 192.168.7.254/16\n"
    "interface lo0 127.0.0.1/8\n"
    "interface qfe0\n";

// Every test runs on the host of kHost with fresh counters and sets.
class InterfaceTest : public testing::Test {
 protected:
  void SetUp() override {
    auto host = std::make_unique<HostDescription>();
    std::string error;
    ASSERT_TRUE(host->Parse(kHost, "test host", &error)) << error;
    Host::Use(std::move(host));
    Interface::ResetUniqueId();
    Interface::ResetBroadcastAddresses();
  }
  void TearDown() override { Host::Use(nullptr); }

  static std::unique_ptr<Interface> Make(const char* name, Interface_Type type, int strict = 0,
                                         const char* overlap = nullptr) {
    return std::make_unique<Interface>(name, "nets", type, LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr,
                                       nullptr, strict, overlap);
  }

  Ferrowall screen{"s"};
  std::ostringstream errors;
};

const Ranges kMulticast = {"224.0.0.0-239.255.255.255"};

TEST_F(InterfaceTest, ResolveTakesPrivateCopiesAndReportsMisses) {
  TList<Entity> addresses;
  auto nets = address_of("nets", "10.0.0.0", "10.0.0.255");
  addresses.Append(*nets);
  auto interface = Make("hme0", INTERFACE_GWY);
  EXPECT_EQ(interface->Resolve(CO_SCREEN, addresses, errors), 0);
  EXPECT_TRUE(interface->ProtectedAddress()->Ranges().Empty());
  EXPECT_EQ(interface->Resolve(CO_ADDRESS, addresses, errors), 0);
  EXPECT_NE(interface->ProtectedAddress(), nets.get());
  EXPECT_EQ(ranges_of(*interface->ProtectedAddress()), Ranges{"10.0.0.0-10.0.0.255"});

  auto lost = std::make_unique<Interface>("hme1", "ghost", INTERFACE_GWY, LOG_NONE, SNMP_NONE,
                                          ICMP_NONE, nullptr, nullptr, 0, "phantom");
  EXPECT_EQ(lost->Resolve(CO_ADDRESS, addresses, errors), 2);
  EXPECT_EQ(errors.str(),
            "Error: \"hme1\" refers to undefined ADDRESS: \"ghost\".\n"
            "Error: \"hme1\" refers to undefined ADDRESS: \"phantom\".\n");
}

TEST_F(InterfaceTest, MatchTypeWords) {
  struct Case {
    Interface_Type type;
    std::vector<const char*> accepted, refused;
  };
  const Case cases[] = {
      {INTERFACE_ADMIN, {"ADMIN"}, {"admin", "GWY", "ROUTING"}},
      {INTERFACE_DISABLED, {"DISABLED"}, {"disabled", "ADMIN"}},
      {INTERFACE_GWY, {"GWY", "ROUTING", "routing", "Routing"}, {"gwy", "HA", "ADMIN"}},
      {INTERFACE_HA, {"HA"}, {"ha", "ROUTING", "GWY"}},
      {INTERFACE_CLK, {"CLK", "STEALTH", "stealth"}, {"clk", "ROUTING", "FOO"}},
  };
  for (const Case& c : cases) {
    auto interface = Make("hme0", c.type);
    for (const char* word : c.accepted) EXPECT_EQ(interface->Match(nullptr, "hme", word, 0), 1) << word;
    for (const char* word : c.refused) EXPECT_EQ(interface->Match(nullptr, "hme", word, 0), 0) << word;
    // The type word doesn't stand in for the name test.
    EXPECT_EQ(interface->Match(nullptr, "qfe", c.accepted[0], 0), 0);
  }
  EXPECT_EQ(Make("hme0", INTERFACE_GWY)->Match(nullptr, "hme0", nullptr, 1), 1);
}

TEST_F(InterfaceTest, UniqueIdsPerFamily) {
  auto gwy = Make("hme0", INTERFACE_GWY);
  auto admin = Make("hme1", INTERFACE_ADMIN);
  auto ha = Make("ha0", INTERFACE_HA);
  auto disabled = Make("qfe0", INTERFACE_DISABLED);
  InterfaceCLK clk("qfe1", "nets", LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, nullptr, nullptr);
  Interface reverse("Ferrowall", "Reverse Interface", nullptr, nullptr, 0, nullptr);
  auto gwy2 = Make("hme2", INTERFACE_GWY);

  EXPECT_EQ(ha->UniqueID(), 0u);
  EXPECT_EQ(admin->UniqueID(), 0u);
  EXPECT_EQ(clk.UniqueID(), 0u);
  EXPECT_EQ(gwy->UniqueID(), 1u);
  EXPECT_EQ(disabled->UniqueID(), Interface::kNoUniqueId);
  EXPECT_EQ(reverse.UniqueID(), 2u);  // the reverse interface counts as routing
  EXPECT_EQ(gwy->UniqueID(), 1u);     // kept once drawn
  EXPECT_EQ(gwy2->UniqueID(), 3u);

  gwy->CleanUp();
  EXPECT_EQ(gwy->UniqueID(), 4u);
  Interface::ResetUniqueId();
  admin->CleanUp();
  EXPECT_EQ(admin->UniqueID(), 0u);
  EXPECT_EQ(ha->UniqueID(), 0u);
}

TEST_F(InterfaceTest, RoutingInterfaceReadsItsAddressesAndBroadcastsFromTheHost) {
  auto hme0 = Make("hme0", INTERFACE_GWY);
  hme0->SetAddresses(screen);
  // Both the device's address and its logical unit's.
  EXPECT_EQ(ranges_of(*hme0->InterfaceAddress()), (Ranges{"10.0.0.1", "10.0.1.1"}));
  EXPECT_STREQ(hme0->InterfaceAddress()->Name(), "interface");
  EXPECT_EQ(ranges_of(Interface::BroadcastAddressGWY()),
            (Ranges{"0.0.0.0", "10.0.0.0", "10.0.0.255", "224.0.0.0-239.255.255.255", "255.255.255.255"}));
  EXPECT_EQ(ranges_of(Interface::BroadcastAddressCLK()), kMulticast);
  EXPECT_TRUE(Interface::BroadcastAddressAdmin().Ranges().Empty());
  EXPECT_EQ(&hme0->BroadcastAddress(), &Interface::BroadcastAddressGWY());

  // A second run replaces the interface address and adds to the shared set.
  auto ha = Make("hme1", INTERFACE_HA);
  ha->SetAddresses(screen);
  hme0->SetAddresses(screen);
  EXPECT_EQ(ranges_of(*hme0->InterfaceAddress()), (Ranges{"10.0.0.1", "10.0.1.1"}));
  EXPECT_EQ(ranges_of(Interface::BroadcastAddressGWY()),
            (Ranges{"0.0.0.0", "10.0.0.0", "10.0.0.255", "192.168.0.0", "192.168.255.255",
                    "224.0.0.0-239.255.255.255", "255.255.255.255"}));
}

TEST_F(InterfaceTest, LoopbackUnknownAndDisabledInterfacesGetNoHostValues) {
  for (const char* name : {"lo0", "qfe0", "nosuch"}) {
    auto interface = Make(name, INTERFACE_DISABLED);
    interface->SetAddresses(screen);
    EXPECT_TRUE(interface->InterfaceAddress()->Ranges().Empty()) << name;
  }
  // A disabled interface still adds the fixed values to the routing set.
  EXPECT_EQ(ranges_of(Interface::BroadcastAddressGWY()),
            (Ranges{"0.0.0.0", "224.0.0.0-239.255.255.255", "255.255.255.255"}));
}

// Interfaces with given protected and interface addresses, as the
// registry holds them after resolution.
class OtherAddressTest : public InterfaceTest {
 protected:
  Interface& Add(const char* protected_start, const char* protected_end, int strict,
                 const char* overlap_start = nullptr, const char* overlap_end = nullptr,
                 const char* own = nullptr) {
    auto protected_address = address_of("p", protected_start, protected_end);
    std::unique_ptr<Address> overlap, interface_address;
    if (overlap_start != nullptr) overlap = address_of("o", overlap_start, overlap_end);
    if (own != nullptr) interface_address = address_of("i", own, own);
    Interface* interface = new Interface("i", nullptr, protected_address.get(), interface_address.get(),
                                         strict, overlap.get());
    owned.emplace_back(interface);
    family.Append(*interface);
    return *interface;
  }

  TList<Entity> family;
  std::vector<std::unique_ptr<Interface>> owned;
};

TEST_F(OtherAddressTest, StrictMeansEverythingOutsideTheProtectedAddress) {
  Interface& a = Add("10.0.0.0", "10.0.0.255", 1);
  Interface& b = Add("10.0.1.0", "10.0.1.255", 0);
  Interface& c = Add("10.0.2.0", "10.0.2.255", 0);
  a.OtherAddress(family);
  b.OtherAddress(family);
  EXPECT_EQ(ranges_of(*a.OtherAddress()), (Ranges{"0.0.0.0-9.255.255.255", "10.0.1.0-255.255.255.255"}));
  EXPECT_EQ(ranges_of(*b.OtherAddress()), (Ranges{"10.0.0.0-10.0.0.255", "10.0.2.0-10.0.2.255"}));
  // Recomputing doesn't accumulate.
  c.OtherAddress(family);
  c.OtherAddress(family);
  EXPECT_EQ(ranges_of(*c.OtherAddress()), Ranges{"10.0.0.0-10.0.1.255"});
}

TEST_F(OtherAddressTest, OverlapIsNotForeignButTheNeighboursHostsInItAre) {
  Interface& a = Add("10.0.0.0", "10.0.1.255", 0, "10.0.1.0", "10.0.1.255");
  Add("10.0.1.0", "10.0.2.255", 0, nullptr, nullptr, "10.0.1.1");
  a.OtherAddress(family);
  EXPECT_EQ(ranges_of(*a.OtherAddress()), Ranges{"10.0.2.0-10.0.2.255"});

  // Strict, with an overlap reaching beyond the own protected address: the
  // neighbour's host inside the overlap is taken out of the complement.
  Interface& strict = Add("10.0.0.0", "10.0.0.255", 1, "10.0.0.0", "10.0.1.255");
  TList<Entity> pair;
  pair.Append(strict);
  pair.Append(*family.Head()->Next()->Data());
  strict.OtherAddress(pair);
  EXPECT_EQ(ranges_of(*strict.OtherAddress()),
            (Ranges{"0.0.0.0-9.255.255.255", "10.0.1.0", "10.0.1.2-255.255.255.255"}));
}

TEST_F(InterfaceTest, StealthInterfaceTakesTheScreensStealthNetwork) {
  FerrowallSettings settings;
  simplerange clk = {ip("10.1.0.0"), ip("10.1.255.255"), RS_DOTTED_MASK};
  settings.stealth_network = &clk;
  Ferrowall stealth_screen("s", settings);
  TList<unsigned>* routers = new TList<unsigned>;
  routers->Append(*new unsigned(ip("10.1.0.1")));
  InterfaceCLK clk_interface("nosuch", "nets", LOG_NONE, SNMP_NONE, ICMP_NONE, routers, nullptr, nullptr);
  EXPECT_EQ(clk_interface.Type(), INTERFACE_CLK);
  EXPECT_EQ(clk_interface.Strict(), 1);
  EXPECT_EQ(clk_interface.Overlap(), nullptr);
  EXPECT_EQ(&clk_interface.BroadcastAddress(), &Interface::BroadcastAddressCLK());

  clk_interface.SetAddresses(stealth_screen);
  EXPECT_EQ(ranges_of(*clk_interface.InterfaceAddress()), Ranges{"10.1.0.0"});
  EXPECT_EQ(ranges_of(Interface::BroadcastAddressCLK()),
            (Ranges{"0.0.0.0", "10.1.0.0", "10.1.255.255", "224.0.0.0-239.255.255.255", "255.255.255.255"}));
  EXPECT_TRUE(Interface::BroadcastAddressGWY().Ranges().Empty());

  // Without a stealth network: no interface address, only the fixed values.
  Interface::ResetBroadcastAddresses();
  clk_interface.SetAddresses(screen);
  EXPECT_TRUE(clk_interface.InterfaceAddress()->Ranges().Empty());
  EXPECT_EQ(ranges_of(Interface::BroadcastAddressCLK()),
            (Ranges{"0.0.0.0", "224.0.0.0-239.255.255.255", "255.255.255.255"}));
}

TEST_F(InterfaceTest, StatementsOfEachKind) {
  Interface gwy("hme0", "inside", INTERFACE_GWY, LOG_SUMMARY, SNMP_TRAP, ICMP_HOST_UNREACHABLE, "s",
                "first", 1, "shared");
  Interface plain_gwy("hme1", "outside", INTERFACE_GWY, LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, nullptr,
                      0, nullptr);
  Interface disabled("qfe0", "off", INTERFACE_DISABLED, LOG_DETAIL, SNMP_TRAP, ICMP_NONE, nullptr, "c", 0,
                     nullptr);
  Interface ha("ha0", "hanet", INTERFACE_HA, LOG_DETAIL, SNMP_NONE, ICMP_NONE, nullptr, nullptr, 0, nullptr);
  TList<unsigned>* routers = new TList<unsigned>;
  routers->Append(*new unsigned(ip("10.1.0.1")));
  routers->Append(*new unsigned(ip("10.1.0.2")));
  InterfaceCLK clk("qfe1", "bridge", LOG_NONE, SNMP_TRAP, ICMP_NONE, routers, nullptr, nullptr);
  InterfaceCLK bare_clk("qfe2", "bridge", LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, "s", nullptr);
  auto text = [](const Entity& entity) {
    std::ostringstream out;
    out << entity;
    return out.str();
  };
  EXPECT_EQ(text(gwy),
            "\"hme0\"\tINTERFACE\tGWY\t\"inside\"\t COMPLETE \"shared\" LOG SUMMARY \tSNMP \tICMP "
            "HOST_UNREACHABLE \tSCREEN\t\"s\"\tCOMMENT\t\"first\";\n");
  EXPECT_EQ(text(plain_gwy), "\"hme1\"\tINTERFACE\tGWY\t\"outside\"\t \t\t ;\n");
  EXPECT_EQ(text(disabled), "\"qfe0\"\tINTERFACE\tDISABLED\t\"off\"\t\tCOMMENT\t\"c\";\n");
  EXPECT_EQ(text(ha), "\"ha0\"\tINTERFACE\tHA\t\"hanet\"\tLOG DETAIL \t\t ;\n");
  EXPECT_EQ(text(clk), "\"qfe1\"\tINTERFACE\tCLK\t\"bridge\"\t \tSNMP \t  10.1.0.1 10.1.0.2 ;\n");
  EXPECT_EQ(text(bare_clk), "\"qfe2\"\tINTERFACE\tCLK\t\"bridge\"\t \t\t \tSCREEN\t\"s\";\n");
}

TEST_F(InterfaceTest, ListingLines) {
  Interface gwy("hme0", "inside", INTERFACE_GWY, LOG_SUMMARY, SNMP_TRAP, ICMP_NONE, "s", "first", 1,
                "shared");
  Interface admin("hme1", "adm", INTERFACE_ADMIN, LOG_NONE, SNMP_NONE, ICMP_NET_FORBIDDEN, nullptr, nullptr,
                  0, nullptr);
  TList<unsigned>* routers = new TList<unsigned>;
  routers->Append(*new unsigned(ip("10.1.0.1")));
  InterfaceCLK clk("qfe1", "bridge", LOG_NONE, SNMP_NONE, ICMP_NONE, routers, nullptr, "c");
  auto line = [](const Entity& entity, Enumerate_Type type) {
    std::ostringstream out;
    entity.Enumerate(out, type);
    return out.str();
  };
  EXPECT_EQ(line(gwy, ENUM_FULL),
            "SCREEN \"s\" \"hme0\" ROUTING \"inside\"  COMPLETE  OVERLAP \"shared\" LOG SUMMARY SNMP   "
            "COMMENT \"first\"\n");
  EXPECT_EQ(line(gwy, ENUM_NAME), "\"hme0\" ROUTING\n");
  EXPECT_EQ(line(admin, ENUM_FULL), "\"hme1\" ADMIN \"adm\"  INCOMPLETE  ICMP NET_FORBIDDEN \n");
  EXPECT_EQ(line(clk, ENUM_FULL),
            "\"qfe1\" STEALTH \"bridge\"  COMPLETE   ROUTER 10.1.0.1  COMMENT \"c\"\n");
  EXPECT_EQ(line(clk, ENUM_NAME), "\"qfe1\" STEALTH\n");
}

}  // namespace
