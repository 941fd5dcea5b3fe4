#include "model/registry.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "model/address.h"
#include "model/time.h"
#include "screen/ferrowall.h"
#include "services/service.h"

namespace {

std::string Names(const TList<Entity>& list) {
  std::string names;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    names += cell->Data()->Name();
    if (cell->Data()->Screen() != nullptr) names += std::string("@") + cell->Data()->Screen();
    names += ' ';
  }
  return names;
}

Address* NewAddress(const char* name, const char* screen) { return new Address(name, 0x0A000001u, screen, nullptr); }

class RemoveOtherScreenDataTest : public testing::Test {
 protected:
  RemoveOtherScreenDataTest() : screen("gate") {}
  Registry registry;
  Ferrowall screen;
};

TEST_F(RemoveOtherScreenDataTest, ScreensOwnDefinitionWinsWhicheverCameFirst) {
  TList<Entity>& list = registry.Addresses();
  list.Append(*NewAddress("a", nullptr));
  list.Append(*NewAddress("a", "gate"));
  list.Append(*NewAddress("b", "gate"));
  list.Append(*NewAddress("b", nullptr));
  registry.RemoveOtherScreenData(screen, list);
  EXPECT_EQ(Names(list), "* localhost a@gate b@gate ");
}

TEST_F(RemoveOtherScreenDataTest, OtherScreensGoAndStarBecomesGeneral) {
  TList<Entity>& list = registry.Addresses();
  list.Append(*NewAddress("other", "elsewhere"));
  list.Append(*NewAddress("everywhere", "*"));
  list.Append(*NewAddress("c", "*"));
  list.Append(*NewAddress("c", "gate"));
  registry.RemoveOtherScreenData(screen, list);
  EXPECT_EQ(Names(list), "* localhost everywhere c@gate ");
}

TEST(RegistryEditingTest, CreateReplacesInPlaceRenameOntoANameRemovesIt) {
  Registry registry;
  registry.Create(CO_ADDRESS, NewAddress("a", nullptr));
  registry.Create(CO_ADDRESS, NewAddress("b", nullptr));
  Address* replacement = NewAddress("a", nullptr);
  registry.Create(CO_ADDRESS, replacement);
  EXPECT_EQ(Names(registry.Addresses()), "* localhost a b ");
  EXPECT_EQ(registry.Addresses().Head()->Next()->Next()->Data(), replacement);
  registry.Create(CO_ADDRESS, NewAddress("a", "gate"));
  EXPECT_EQ(Names(registry.Addresses()), "* localhost a b a@gate ");
  EXPECT_EQ(registry.Dirty(), 1);
  registry.Rename(CO_ADDRESS, "b", "a", nullptr);
  EXPECT_EQ(Names(registry.Addresses()), "* localhost a a@gate ");
}

TEST(RegistryUniqueTimesTest, ThirtyOneTimesInUseAreTheLimit) {
  Time::ResetUniqueId();
  Registry registry;
  registry.Times().Head()->Data()->Used(0);
  for (int i = 0; i < 40; ++i) {
    Time* time = new Time(("t" + std::to_string(i)).c_str(), nullptr, nullptr, nullptr);
    time->Used(i < 31 ? 1 : i % 2 == 0);
    registry.Times(*time);
  }
  TList<Entity>& times = registry.Times();
  EXPECT_EQ(registry.UniqueTimes(), 1);
  Time& last_allowed = *static_cast<Time*>(times.Head()->Next()->Next()->Next()->Data());
  EXPECT_EQ(last_allowed.UniqueId(), 3);

  Time::ResetUniqueId();
  Registry small;
  for (int i = 0; i < 40; ++i) {
    Time* time = new Time(("t" + std::to_string(i)).c_str(), nullptr, nullptr, nullptr);
    time->Used(i < 30);
    small.Times(*time);
  }
  small.Times().Head()->Data()->Used(1);
  EXPECT_EQ(small.UniqueTimes(), 0);
  EXPECT_EQ(static_cast<Time*>(small.Times().Tail()->Data())->Reduced(), 0);
}

}  // namespace

#include "crypto/certificate_list.h"

namespace {

TEST(RegistrySpecialCertificatesTest, EditingAddsMissingGroupsOnceIkeIsInUse) {
  Registry registry;
  testing::internal::CaptureStderr();
  registry.Create(CO_CERTIFICATE, new Certificate("gate", IPSEC_IKE, 0, "CN=gate", nullptr, nullptr, nullptr));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Note: adding empty special certificate: \"IKE root CA certificates\"\n"
            "Note: adding empty special certificate: \"IKE manually verified certificates\"\n");
  EXPECT_EQ(Names(registry.Certificates()), "gate IKE root CA certificates IKE manually verified certificates ");

  testing::internal::CaptureStderr();
  registry.Create(CO_CERTIFICATE,
                  new Certificate("IKE root CA certificates", IPSEC_SKIP, 1, "x", nullptr, nullptr, nullptr));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Warning: special certificate name overloaded: \"IKE root CA certificates\"\n"
            "Note: adding empty special certificate: \"IKE root CA certificates\"\n");
}

}  // namespace

#include "screen/interface.h"

namespace {

Interface* NewInterface(const char* name, Interface_Type type) {
  return new Interface(name, "inside", type, LOG_NONE, SNMP_NONE, ICMP_NONE, nullptr, nullptr, 0, nullptr);
}

// Creates an interface and answers the warning it raised, if any.
std::string Create(Registry& registry, const char* name, Interface_Type type) {
  testing::internal::CaptureStderr();
  registry.Create(CO_INTERFACE, NewInterface(name, type));
  return testing::internal::GetCapturedStderr();
}

TEST(RegistryInterfacesTest, CreateMovesAnInterfaceToTheListOfItsType) {
  Registry registry;
  Create(registry, "le0", INTERFACE_ADMIN);
  Create(registry, "le1", INTERFACE_GWY);
  EXPECT_EQ(Create(registry, "le0", INTERFACE_GWY), "Warning: operation replaced the Administrative Interface.\n");
  EXPECT_EQ(Names(registry.AdminInterfaces()), "");
  EXPECT_EQ(Names(registry.GWYInterfaces()), "le1 le0 ");
  EXPECT_EQ(Create(registry, "le1", INTERFACE_HA), "");
  EXPECT_EQ(Names(registry.GWYInterfaces()), "le0 le1 ");
}

TEST(RegistryInterfacesTest, StealthWarnings) {
  Registry registry;
  Create(registry, "s0", INTERFACE_CLK);
  Create(registry, "s1", INTERFACE_CLK);
  EXPECT_EQ(Create(registry, "s0", INTERFACE_DISABLED), "Warning: operation left only one STEALTH Interface.\n");
  EXPECT_EQ(Create(registry, "s1", INTERFACE_ADMIN), "Warning: operation replaced only STEALTH Interface.\n");
  EXPECT_EQ(Names(registry.DisabledInterfaces()), "s0 ");
  EXPECT_EQ(Names(registry.AdminInterfaces()), "s1 ");
}

}  // namespace
