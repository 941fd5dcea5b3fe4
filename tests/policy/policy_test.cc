#include "policy/policy.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "driver/fw_file.h"
#include "model/registry.h"
#include "policy/rule_fixture.h"
#include "screen/ferrowall.h"

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

Entity* NewEntry(const char* name, const char* screen = nullptr) { return new Entity(name, screen, nullptr, 0); }

TEST(PolicyTest, VersionedFileIsReadonlyAndItsLoadShareItsDomain) {
  EXPECT_EQ(Policy(new FWFile(nullptr, "policy")).ReadonlyVersion(), 0);
  Policy policy(new FWFile("./lab", "policy.2"));
  EXPECT_EQ(policy.ReadonlyVersion(), 1);
  policy.Load("registry.5");
  EXPECT_STREQ(policy.Load()->Directory(), "./lab");
}

TEST(PolicyEditingTest, ListOperationsByKind) {
  Policy policy(new FWFile(nullptr, nullptr));
  for (const char* name : {"a", "b", "c"}) policy.Create(CO_RULE, NewEntry(name));
  policy.Insert(CO_RULE, 2, NewEntry("x"));
  policy.Move(CO_RULE, 1, 4);
  EXPECT_EQ(Names(policy.Rules().Items()), "x b c a ");
  policy.Delete(CO_RULE, 0);
  policy.Delete(CO_RULE, 9);
  policy.Delete(CO_RULE, 2);
  EXPECT_EQ(Names(policy.Rules().Items()), "x c a ");
  EXPECT_EQ(policy.Dirty(), 1);
  Entity* node = NewEntry("gateway");
  policy.Insert(CO_VPN_NODE, 1, node);
  EXPECT_TRUE(policy.VPNNodes().Items().Empty());
  delete node;
  policy.Create(CO_ADDRESS, nullptr);
  EXPECT_EQ(policy.TypeToList(CO_ADDRESS), nullptr);
  EXPECT_EQ(policy.TypeToList(CO_NAT), &policy.Nats().Items());
}

TEST(PolicyEditingTest, EnumerateNumberWritesPositions) {
  Policy policy(new FWFile(nullptr, nullptr));
  policy.Create(CO_NAT, NewEntry("first"));
  policy.Create(CO_NAT, NewEntry("second"));
  testing::internal::CaptureStdout();
  policy.EnumerateNumber(CO_NAT, 2);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "2 \"second\" ");
  testing::internal::CaptureStdout();
  policy.EnumerateNumber(CO_NAT, 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "1 \"first\" 2 \"second\" ");
}

TEST(PolicyScreenDataTest, KeepsGeneralAndOwnEntriesInOrder) {
  Ferrowall screen("gate");
  TList<Entity> list;
  for (Entity* entry : {NewEntry("a"), NewEntry("b", "other"), NewEntry("c", "*"), NewEntry("d", "gate"),
                        NewEntry("e", "other")})
    list.Append(*entry);
  Policy::RemoveOtherScreenData(screen, list);
  EXPECT_EQ(Names(list), "a c d@gate ");
  list.Delete_Data();
}

TEST(PolicyVerifyTest, RemoteAccessNeedsAnEnabledInterface) {
  Policy policy(new FWFile(nullptr, nullptr));
  policy.ACLsRemote(*NewEntry("access"));
  Registry registry;
  Ferrowall screen("gate");
  std::ostringstream out;
  testing::internal::CaptureStderr();
  EXPECT_EQ(policy.Verify(screen, out, registry), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: No enabled (Routing or Admin) Interfaces specified with remote admin rules.\n");
}

TEST_F(PolicyVerifyInScratchTest, EmptyPolicyVerifiesAndEmptiesTheFourProxyFiles) {
  std::ofstream("ftpp.conf") << "21\n1\n";
  Policy policy(new FWFile(nullptr, nullptr));
  Registry registry;
  Ferrowall screen("gate");
  std::ostringstream out;
  EXPECT_EQ(policy.Verify(screen, out, registry), 0);
  EXPECT_EQ(out.str(), "");
  for (const char* name : {"ftpp.conf", "httpp.conf", "smtpp.conf", "telnetp.conf"}) {
    EXPECT_TRUE(std::filesystem::exists(name)) << name;
    EXPECT_EQ(std::filesystem::file_size(name), 0u) << name;
  }
}

}  // namespace

#include "model/address.h"
#include "policy/rule.h"

namespace {

TEST(PolicyHATest, RulesTowardsTheHAAddressGetTheFlag) {
  Policy policy(new FWFile(nullptr, nullptr));
  for (const char* destination : {"pair", "other", "pair"})
    policy.Rules(*new Rule("svc", "src", destination, nullptr, nullptr, nullptr, nullptr, ACTION_ALLOW, LOG_NONE,
                           SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr));
  Address ha_address("pair", nullptr, nullptr, ADDRESS_SINGLE);
  policy.SetHARules(ha_address);
  std::string flags;
  for (TList_Cell<Entity>* cell = policy.Rules().Items().Head(); cell != nullptr; cell = cell->Next())
    flags += std::to_string(static_cast<Rule*>(cell->Data())->HAValue());
  EXPECT_EQ(flags, "101");
}

}  // namespace
