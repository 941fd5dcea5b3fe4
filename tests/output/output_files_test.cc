#include "output/output_files.h"

#include <memory>
#include <sstream>
#include <vector>

#include "crypto/certificate_list.h"
#include "driver/fw_file.h"
#include "model/registry.h"
#include "output/output_fixture.h"
#include "policy/policy.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"

namespace {

class OutputFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    Address::ResetUniqueId();
    Interface::ResetUniqueId();
    Certificate::ResetUniqueId();
  }

  Ferrowall& AddScreen(const char* name, FerrowallSettings settings) {
    Ferrowall* screen = new Ferrowall(name, settings);
    registry_.Screens(*screen);
    return *screen;
  }

  int Generate(Ferrowall& screen) {
    std::ostringstream warnings;
    OutputFiles::GeneratePolicyOutput(policy_);
    std::vector<TList<Entity>*> rules = {nullptr, nullptr, &policy_.Rules().Items()};
    OutputFiles::GenerateRegistryOutput(screen, registry_, rules, warnings);
    return OutputFiles::GenerateMoreOutput(screen, policy_, registry_, rules);
  }

  Registry registry_;
  Policy policy_{new FWFile(nullptr, "policy")};
  ScratchDirectory directory_;
};

TEST_F(OutputFilesTest, ScreenWithoutInterfacesGetsTheAlwaysFiles) {
  Ferrowall& screen = AddScreen("gate", FerrowallSettings());
  EXPECT_EQ(Generate(screen), 0);
  for (const char* name : {"Input.nat", "Screen", "Dest", "Slaves", "Time", "state_engines.h", "Addresses",
                           "Services", "SKIP_V1_TABLE", "Interface.in", "CertificateGroups", "Remote.Access"})
    EXPECT_TRUE(exists(name)) << name;
  for (const char* name : {"snmp_timer", "HA", "ike", "secret"}) EXPECT_FALSE(exists(name)) << name;
  EXPECT_EQ(contents("Interface.in"), "");
}

TEST_F(OutputFilesTest, ALoneScreenListHasNoSlavesAndNoHA) {
  Ferrowall& star = *static_cast<Ferrowall*>(registry_.Screens().Head()->Data());
  Generate(star);
  EXPECT_TRUE(exists("Screen"));
  EXPECT_FALSE(exists("Slaves"));
  EXPECT_FALSE(exists("HA"));
}

TEST_F(OutputFilesTest, CertificateGroupsListsTheGroupsThatGotAnId) {
  Ferrowall& screen = AddScreen("gate", FerrowallSettings());
  registry_.Certificates(*new Certificate("a", IPSEC_IKE, 0, "a@example", nullptr, nullptr, nullptr));
  registry_.Certificates(*new Certificate("b", IPSEC_IKE, 0, "b@example", nullptr, nullptr, nullptr));
  CertificateList* used = new CertificateList("used", IPSEC_UNKNOWN, nullptr, nullptr, nullptr, nullptr);
  used->Member("a", 0, 0);
  used->Member("b", 0, 1);
  CertificateList* unused = new CertificateList("unused", IPSEC_UNKNOWN, nullptr, nullptr, nullptr, nullptr);
  unused->Member("a", 0, 0);
  registry_.Certificates(*used);
  registry_.Certificates(*unused);
  std::ostringstream sink;
  for (TList_Cell<Entity>* cell = registry_.Certificates().Head(); cell != nullptr; cell = cell->Next()) {
    ASSERT_EQ(cell->Data()->Resolve(CO_CERTIFICATE, registry_.Certificates(), sink), 0) << sink.str();
    ASSERT_NE(cell->Data()->Reduce(), nullptr);
  }
  // As a rule's table line would name the group.
  used->EmitData(sink);
  Generate(screen);
  EXPECT_EQ(contents("CertificateGroups"), "\"used\" 0 \"a@example\" ! \"b@example\" \n");
}

}  // namespace
