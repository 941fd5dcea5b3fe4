// The rules a screen makes for its own traffic and administration.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "model/address.h"
#include "model/registry.h"
#include "policy/rule.h"
#include "screen/distribution_fixture.h"
#include "screen/ferrowall.h"
#include "services/service.h"

namespace {

const char* const kEveryService[] = {"remote administration", "snmp traps", "skip", "certificate discovery",
                                     "rip", "dns", "nis"};

// "service source>destination", with " HA" for a rule of the cluster.
std::string Describe(const Rule& rule) {
  std::string text = std::string(rule.InputService().Name()) + ' ' + rule.Source().Name() + '>' +
                     rule.Destination().Name();
  return rule.HAValue() ? text + " HA" : text;
}

// Owns a generated list and its rules.
struct RuleList {
  explicit RuleList(TList<Entity>* list) : rules(list) {}
  ~RuleList() {
    if (rules == nullptr) return;
    rules->Delete_Data();
    delete rules;
  }
  std::vector<std::string> Described() const {
    std::vector<std::string> texts;
    for (TList_Cell<Entity>* cell = rules->Head(); cell != nullptr; cell = cell->Next())
      texts.push_back(Describe(*static_cast<Rule*>(cell->Data())));
    return texts;
  }
  TList<Entity>* rules;
};

class AdminRulesTest : public testing::Test {
 protected:
  void AddServices(const std::vector<std::string>& skipped = {}) {
    for (const char* name : kEveryService)
      if (std::find(skipped.begin(), skipped.end(), name) == skipped.end())
        registry.ServicesCompile(*new Service(name, nullptr, nullptr));
  }

  Ferrowall& AddScreen(const char* name, const FerrowallSettings& settings = FerrowallSettings()) {
    Ferrowall* screen = new Ferrowall(name, settings);
    registry.Screens(*screen);
    return *screen;
  }

  // A screen that asks for every kind of traffic of its own.
  Ferrowall& AddBusyScreen(const char* name) {
    FerrowallSettings settings;
    settings.snmp_recipients = new TList<unsigned>;
    for (const char* receiver : {"10.0.0.9", "10.0.0.5", "10.0.0.6"})
      settings.snmp_recipients->Append(*new unsigned(ip(receiver)));
    settings.certificate_discovery = settings.routing = settings.dns = settings.nis = 1;
    return AddScreen(name, settings);
  }

  Ferrowall& AddManagedScreen(const char* name, const char* master, int ha_secondary) {
    FerrowallSettings settings;
    settings.master = master;
    settings.ha_secondary = ha_secondary;
    return AddScreen(name, settings);
  }

  void ResolveMasters() {
    std::ostringstream errors;
    for (TList_Cell<Entity>* cell = registry.Screens().Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->Resolve(CO_SCREEN, registry.Screens(), errors);
    EXPECT_EQ(errors.str(), "");
  }

  // Generates for `screen` and keeps what it wrote on the standard error.
  std::unique_ptr<RuleList> Generate(Ferrowall& screen) {
    testing::internal::CaptureStderr();
    std::unique_ptr<RuleList> rules(new RuleList(screen.GenerateAdminRules(registry)));
    messages = testing::internal::GetCapturedStderr();
    return rules;
  }

  Registry registry;
  std::string messages;
};

TEST_F(AdminRulesTest, EverySettingGivesItsRulesInOrder) {
  AddServices();
  Ferrowall& screen = AddBusyScreen("gate");
  std::unique_ptr<RuleList> rules = Generate(screen);
  ASSERT_NE(rules->rules, nullptr);
  EXPECT_EQ(messages, "");
  EXPECT_EQ(rules->Described(),
            (std::vector<std::string>{"snmp traps localhost>SNMP_Recipients", "skip localhost>*",
                                      "certificate discovery localhost>*", "certificate discovery *>localhost",
                                      "rip localhost>* HA", "rip *>localhost HA", "dns localhost>*",
                                      "nis localhost>*"}));
}

TEST_F(AdminRulesTest, PlainScreenNeedsOnlyKeyManagement) {
  AddServices({"snmp traps", "certificate discovery", "rip", "dns", "nis"});
  FerrowallSettings settings;
  settings.snmp_recipients = new TList<unsigned>;
  std::unique_ptr<RuleList> rules = Generate(AddScreen("gate", settings));
  ASSERT_NE(rules->rules, nullptr);
  EXPECT_EQ(messages, "");
  EXPECT_EQ(rules->Described(), std::vector<std::string>{"skip localhost>*"});
}

// Rules made before the missing service are freed with the list.
TEST_F(AdminRulesTest, EachMissingServiceIsNamed) {
  Ferrowall& screen = AddBusyScreen("gate");
  for (const char* missing : kEveryService) {
    registry.ServicesCompile().Delete_Data();
    AddServices({missing});
    std::unique_ptr<RuleList> rules = Generate(screen);
    EXPECT_EQ(rules->rules, nullptr) << missing;
    EXPECT_EQ(messages, std::string("Error: Service not defined (") + missing + ")\n");
  }
}

// The built-in screen "*" is always listed, so a defined screen beside it
// is already a registry of more than one screen.
TEST_F(AdminRulesTest, OnlyASingleListedScreenGoesWithoutRemoteAdministration) {
  AddServices({"remote administration"});
  Ferrowall& star = *static_cast<Ferrowall*>(registry.Screens().Head()->Data());
  std::unique_ptr<RuleList> alone = Generate(star);
  ASSERT_NE(alone->rules, nullptr);
  EXPECT_EQ(messages, "");
  EXPECT_EQ(alone->Described(), std::vector<std::string>{"skip localhost>*"});

  std::unique_ptr<RuleList> defined = Generate(AddScreen("gate"));
  EXPECT_EQ(defined->rules, nullptr);
  EXPECT_EQ(messages, "Error: Service not defined (remote administration)\n");
}

TEST_F(AdminRulesTest, ScreensWithoutMastersNeedNoScreenToScreenRule) {
  AddServices();
  AddScreen("other");
  Ferrowall& gate = AddScreen("gate");
  ResolveMasters();
  std::unique_ptr<RuleList> rules = Generate(gate);
  ASSERT_NE(rules->rules, nullptr);
  EXPECT_EQ(messages, "");
  EXPECT_EQ(rules->Described(), std::vector<std::string>{"skip localhost>*"});
}

// Without certificates no rule can link the two screens: the compile of
// either screen is refused, each naming the other side.
TEST_F(AdminRulesTest, ScreensWithoutCertificatesCantBeLinkedFromEitherSide) {
  AddServices();
  Ferrowall& master = AddScreen("master");
  Ferrowall& branch = AddManagedScreen("branch", "master", 0);
  ResolveMasters();
  const std::string cause = "\"branch\" requires a certificate to be administered by screen \"master\"\n";
  std::unique_ptr<RuleList> rules = Generate(branch);
  EXPECT_EQ(rules->rules, nullptr);
  EXPECT_EQ(messages, cause + "Error:  could not generate Rule from Screen: \"master\"\n");
  rules = Generate(master);
  EXPECT_EQ(rules->rules, nullptr);
  EXPECT_EQ(messages, cause + "Error:  could not generate Rule to Screen: \"branch\"\n");
}

TEST_F(AdminRulesTest, RemoteAdministrationIsLookedUpFirst) {
  AddServices({"remote administration"});
  AddScreen("master");
  Ferrowall& branch = AddManagedScreen("branch", "master", 0);
  ResolveMasters();
  std::unique_ptr<RuleList> rules = Generate(branch);
  EXPECT_EQ(rules->rules, nullptr);
  EXPECT_EQ(messages, "Error: Service not defined (remote administration)\n");
}

// A secondary is administered through its primary, which needs no rule of
// its own to reach it.
TEST_F(AdminRulesTest, HASecondaryIsNoScreenToScreenCase) {
  AddServices();
  Ferrowall& primary = AddScreen("primary");
  Ferrowall& secondary = AddManagedScreen("secondary", "primary", 1);
  ResolveMasters();
  for (Ferrowall* compiled : {&secondary, &primary}) {
    std::unique_ptr<RuleList> rules = Generate(*compiled);
    ASSERT_NE(rules->rules, nullptr) << compiled->Name();
    EXPECT_EQ(messages, "");
    EXPECT_EQ(rules->Described(), std::vector<std::string>{"skip localhost>*"});
  }
}

}  // namespace
