// What the remote access entries of a policy need before they give rules,
// and which rules they give.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "crypto/acl_remote_ike.h"
#include "crypto/certificate.h"
#include "crypto/security_parameters_ike.h"
#include "driver/fw_file.h"
#include "model/address.h"
#include "model/registry.h"
#include "policy/policy.h"
#include "policy/rule.h"
#include "screen/ferrowall.h"
#include "services/service.h"

namespace {

class PolicyAdminRulesTest : public testing::Test {
 protected:
  PolicyAdminRulesTest() : policy(new FWFile(nullptr, "policy")) {
    registry.Certificates(*new Certificate("skip cert", IPSEC_SKIP, 1, "10.9.9.9", nullptr, nullptr, nullptr));
    registry.Certificates(*new Certificate("ike cert", IPSEC_IKE, 0, "CN=gate", nullptr, nullptr, nullptr));
    registry.Certificates(*new Certificate("desk cert", IPSEC_IKE, 0, "CN=desk", nullptr, nullptr, nullptr));
    registry.Addresses(*new Address("desk", 0x0a000005u, nullptr, nullptr));
  }

  void AddRemoteAdministration() {
    registry.ServicesCompile(*new Service("remote administration", nullptr, nullptr));
  }
  // An IKE entry from "desk", resolved as the policy resolves it.
  void AddAccessEntry() {
    ACLRemoteIKE* entry = new ACLRemoteIKE("admin", ACCESS_ALL, "desk", {"DES", "MD5", 1, "RSA-SIGNATURES"},
                                           "desk cert", nullptr, nullptr, nullptr, false, nullptr, nullptr);
    std::ostringstream errors;
    entry->Resolve(CO_ADDRESS, registry.Addresses(), errors);
    entry->Resolve(CO_CERTIFICATE, registry.Certificates(), errors);
    EXPECT_EQ(errors.str(), "");
    policy.ACLsRemote(*entry);
  }

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
  // The list's rules are described in `made`.
  bool Generate(Ferrowall& screen) {
    testing::internal::CaptureStderr();
    TList<Entity>* rules = policy.GenerateAdminRules(screen, registry);
    messages = testing::internal::GetCapturedStderr();
    made.clear();
    if (rules == nullptr) return false;
    for (TList_Cell<Entity>* cell = rules->Head(); cell != nullptr; cell = cell->Next()) {
      const Rule& rule = *static_cast<Rule*>(cell->Data());
      const auto& ike = static_cast<const SecurityParametersIKE&>(*rule.DecryptionParameters());
      made += std::string(rule.Source().Name()) + " -> " + rule.Destination().Name() + " " +
              ike.SourceCertificateResolved()->Name() + " -> " + ike.DestinationCertificateResolved()->Name() + "; ";
    }
    rules->Delete_Data();
    delete rules;
    return true;
  }

  Registry registry;
  Policy policy;
  std::string messages;
  std::string made;
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
  // The entry is an IKE entry: a screen with only a SKIP certificate makes
  // no rule for it, and says nothing.
  EXPECT_TRUE(Generate(AddScreen("skip only", "skip cert", nullptr)));
  EXPECT_EQ(made, "");
  EXPECT_TRUE(Generate(AddScreen("ike only", nullptr, "ike cert")));
  EXPECT_EQ(made, "desk -> localhost desk cert -> ike cert; ");
  EXPECT_EQ(messages, "");
}

TEST_F(PolicyAdminRulesTest, OnlyAnHASecondaryBorrowsItsMastersCertificate) {
  AddAccessEntry();
  AddRemoteAdministration();
  AddScreen("primary", nullptr, "ike cert");
  EXPECT_TRUE(Generate(AddScreen("secondary", nullptr, nullptr, "primary", 1)));
  EXPECT_EQ(made, "desk -> localhost desk cert -> ike cert; ");
  EXPECT_EQ(messages, "");
  EXPECT_FALSE(Generate(AddScreen("branch", nullptr, nullptr, "primary", 0)));
  EXPECT_EQ(messages, "Error: Ferrowall object has no Administrative Certificate (branch)\n");
}

}  // namespace
