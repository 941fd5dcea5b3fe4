#include <gtest/gtest.h>

#include <sstream>

#include "model/ordered_entity_list.h"
#include "screen/distribution_fixture.h"
#include "screen/ferrowall.h"
#include "services/service.h"

namespace {

std::vector<Rule*> origins_of(const Interface& interface) {
  std::vector<Rule*> origins;
  for (Rule* rule : rules_of(interface)) origins.push_back(rule->Origin());
  return origins;
}

// One interface of each kind: admin X, routing G, HA H and stealth S.
class RegistryDistributionTest : public DistributionTest {
 protected:
  void SetUp() override {
    DistributionTest::SetUp();
    x = &AddInterface("X", INTERFACE_ADMIN, {span("10.9.0.0", "10.9.0.255")});
    g = &AddInterface("G", INTERFACE_GWY, {span("10.0.0.0", "10.0.0.255")});
    h = &AddInterface("H", INTERFACE_HA, {span("10.5.0.0", "10.5.0.255")});
    s = &AddInterface("S", INTERFACE_CLK, {span("10.3.0.0", "10.3.0.255")});
    Seal();
  }

  Interface* x = nullptr;
  Interface* g = nullptr;
  Interface* h = nullptr;
  Interface* s = nullptr;
  std::unique_ptr<Service> www = Plain();
};

TEST_F(RegistryDistributionTest, PolicyRulesReachAdminInterfacesOnlyTowardsLocalhost) {
  OrderedEntityList policy;
  auto service = Plain();
  auto everywhere = address_of("*", {kEverything});
  Rule* to_screen = new Rule(*service, *everywhere, *one("localhost", "127.0.0.1"), nullptr, nullptr, nullptr,
                             nullptr, ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr,
                             nullptr);
  Rule* to_web = new Rule(*service, *everywhere, *one("web", "127.0.0.1"), nullptr, nullptr, nullptr, nullptr,
                          ACTION_ALLOW, LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
  policy.Items(*to_screen);
  policy.Items(*to_web);
  registry.AddRules(policy);

  EXPECT_EQ(origins_of(*x), std::vector<Rule*>({to_screen})) << "decided by the name alone";
  EXPECT_EQ(origins_of(*g), std::vector<Rule*>({to_screen, to_web}));
  EXPECT_EQ(origins_of(*h), std::vector<Rule*>({to_screen, to_web})) << "HA interfaces route policy rules";
  EXPECT_EQ(origins_of(*s), std::vector<Rule*>({to_screen, to_web}));
}

FerrowallSettings ha_settings(int primary, const char* ha_ip, const char* master = nullptr) {
  FerrowallSettings settings;
  settings.ha_primary = primary;
  settings.ha_secondary = !primary;
  settings.ha_ip = ip(ha_ip);
  settings.master = master;
  return settings;
}

// A routing interface G, the HA interface H and the reverse interface R,
// which protects the primary's own addresses, the HA address among them.
// The secondary's HA address lies behind H.
class HARulesTest : public DistributionTest {
 protected:
  void SetUp() override {
    DistributionTest::SetUp();
    g = &AddInterface("G", INTERFACE_GWY, {span("10.0.0.0", "10.0.0.255")});
    h = &AddInterface("H", INTERFACE_HA, {span("10.5.0.0", "10.5.0.255")});
    r = &AddRoutingReverse({"10.0.0.1", "10.5.0.1"});
    Seal();
    registry.Screens(*primary);
    registry.Screens(*secondary);
    std::ostringstream errors;
    EXPECT_EQ(secondary->Resolve(CO_SCREEN, registry.Screens(), errors), 0) << errors.str();
  }

  int AddHARules(Ferrowall& screen) {
    testing::internal::CaptureStderr();
    int result = registry.AddHARules(screen);
    errors = testing::internal::GetCapturedStderr();
    return result;
  }

  Ferrowall* primary = new Ferrowall("P", ha_settings(1, "10.5.0.1"));
  Ferrowall* secondary = new Ferrowall("Q", ha_settings(0, "10.5.0.2", "P"));
  Interface* g = nullptr;
  Interface* h = nullptr;
  Interface* r = nullptr;
  std::string errors;
};

TEST_F(HARulesTest, EachMissingPieceIsReportedAndFails) {
  std::ostringstream out;
  ASSERT_EQ(primary->Verify(registry, out), 0) << out.str();
  EXPECT_EQ(AddHARules(*primary), 1);
  EXPECT_EQ(errors, "Error: Could not find HA Service\n");

  registry.ServicesCompile(*Plain("HA administration").release());
  EXPECT_EQ(AddHARules(*primary), 1) << "both services are needed";
  EXPECT_EQ(errors, "Error: Could not find HA Service\n");

  registry.ServicesCompile(*Plain("HA heartbeat").release());
  Ferrowall unverified("U", ha_settings(1, "10.5.0.1"));
  EXPECT_EQ(AddHARules(unverified), 1);
  EXPECT_EQ(errors, "Error: HA cluster missing HA IP Addresses\n");

  // The secondary's hosts were worked out with one primary; a primary of
  // the same name off the HA network has since taken its place.
  ASSERT_EQ(secondary->Verify(registry, out), 0) << out.str();
  TList<Entity> elsewhere;
  Ferrowall moved("P", ha_settings(1, "192.168.9.9"));
  elsewhere.Append(moved);
  ASSERT_EQ(secondary->Resolve(CO_SCREEN, elsewhere, out), 0);
  EXPECT_EQ(AddHARules(*secondary), 1);
  EXPECT_EQ(errors, "Error: HA IP address is not on HA interface HA network!.\n");

  for (Interface* interface : {g, h, r}) EXPECT_TRUE(interface->Rules().Empty());
}

TEST_F(DistributionTest, NoHAInterfaceMeansNoHARulesAndNoMessage) {
  AddInterface("G", INTERFACE_GWY, {span("10.0.0.0", "10.0.0.255")});
  Seal();
  Ferrowall screen("P", ha_settings(1, "10.5.0.1"));
  EXPECT_EQ(registry.AddHARules(screen), 0);
  EXPECT_TRUE(members_of(registry.GWYInterfaces())[0]->Rules().Empty());
}

}  // namespace
