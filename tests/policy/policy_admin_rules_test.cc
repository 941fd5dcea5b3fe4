// What the remote access entries of a policy need before they give rules.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "driver/fw_file.h"
#include "model/registry.h"
#include "policy/policy.h"
#include "screen/ferrowall.h"
#include "services/service.h"

namespace {

class PolicyAdminRulesTest : public testing::Test {
 protected:
  PolicyAdminRulesTest() : policy(new FWFile(nullptr, "policy")) {
    registry.Certificates(*new Entity("skip cert", nullptr, nullptr, 0));
    registry.Certificates(*new Entity("ike cert", nullptr, nullptr, 0));
  }

  void AddRemoteAdministration() {
    registry.ServicesCompile(*new Service("remote administration", nullptr, nullptr));
  }
  void AddAccessEntry() { policy.ACLsRemote(*new Entity("admin desk", nullptr, nullptr, 0)); }

  // A screen with its certificates and master resolved.
  Ferrowall& AddScreen(const char* name, const char* skip, const char* ike, const char* master = nullptr,
                       int ha_secondary = 0) {
    FerrowallSettings settings;
    settings.skip_certificate = skip;
    settings.ike_certificate = ike;
    settings.master = master;
    settings.ha_secondary = ha_secondary;
    Ferrowall* screen = new Ferrowall(name, settings);
    registry.Screens(*screen);
    std::ostringstream errors;
    screen->Resolve(CO_CERTIFICATE, registry.Certificates(), errors);
    screen->Resolve(CO_SCREEN, registry.Screens(), errors);
    EXPECT_EQ(errors.str(), "");
    return *screen;
  }

  // Generates for `screen`: whether a list came back, and the messages.
  bool Generate(Ferrowall& screen) {
    testing::internal::CaptureStderr();
    TList<Entity>* rules = policy.GenerateAdminRules(screen, registry);
    messages = testing::internal::GetCapturedStderr();
    if (rules == nullptr) return false;
    EXPECT_TRUE(rules->Empty());
    delete rules;
    return true;
  }

  Registry registry;
  Policy policy;
  std::string messages;
};

TEST_F(PolicyAdminRulesTest, AccessEntriesNeedTheServiceAndEitherCertificate) {
  EXPECT_TRUE(Generate(AddScreen("bare", nullptr, nullptr)));
  EXPECT_EQ(messages, "");
  AddAccessEntry();
  EXPECT_FALSE(Generate(AddScreen("gate", "skip cert", nullptr)));
  EXPECT_EQ(messages, "Error: Service not defined. (\"remote administration\")\n");
  AddRemoteAdministration();
  EXPECT_FALSE(Generate(AddScreen("none", nullptr, nullptr)));
  EXPECT_EQ(messages, "Error: Ferrowall object has no Administrative Certificate (none)\n");
  EXPECT_TRUE(Generate(AddScreen("skip only", "skip cert", nullptr)));
  EXPECT_TRUE(Generate(AddScreen("ike only", nullptr, "ike cert")));
  EXPECT_EQ(messages, "");
}

TEST_F(PolicyAdminRulesTest, OnlyAnHASecondaryBorrowsItsMastersCertificate) {
  AddAccessEntry();
  AddRemoteAdministration();
  AddScreen("primary", nullptr, "ike cert");
  EXPECT_TRUE(Generate(AddScreen("secondary", nullptr, nullptr, "primary", 1)));
  EXPECT_EQ(messages, "");
  EXPECT_FALSE(Generate(AddScreen("branch", nullptr, nullptr, "primary", 0)));
  EXPECT_EQ(messages, "Error: Ferrowall object has no Administrative Certificate (branch)\n");
}

}  // namespace
