#include "crypto/certificate_list.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>

#include "support/fake_host_devices.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

// A registry's certificate list that owns its objects.
class CertificateListTest : public testing::Test {
 protected:
  ~CertificateListTest() override { certificates_.Delete_Data(); }

  Certificate& Single(const char* name, IPSEC_TYPE type, const char* data) {
    Certificate* cert = new Certificate(name, type, 1, data, nullptr, nullptr, nullptr);
    certificates_.Append(*cert);
    return *cert;
  }

  CertificateList& Group(const char* name, std::initializer_list<const char*> includes,
                         std::initializer_list<const char*> excludes = {}) {
    CertificateList* group = new CertificateList(name, IPSEC_UNKNOWN, nullptr, nullptr, nullptr, nullptr);
    for (const char* member : includes) group->Member(member, 0, 0);
    for (const char* member : excludes) group->Member(member, 0, 1);
    certificates_.Append(*group);
    return *group;
  }

  // Resolves every certificate as the registry does; returns the misses.
  int ResolveAll() {
    int misses = 0;
    for (TList_Cell<Entity>* cell = certificates_.Head(); cell != nullptr; cell = cell->Next())
      misses += cell->Data()->Resolve(CO_CERTIFICATE, certificates_, messages_);
    return misses;
  }

  // A cycle check that starts at `group` with all marks cleared.
  int CycleFrom(Entity& group) {
    for (TList_Cell<Entity>* cell = certificates_.Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->Used(0);
    return group.DetectCycle();
  }

  static std::string Generated(CertificateList& group) {
    std::ostringstream out;
    group.GenerateDataFile(out);
    return out.str();
  }

  TList<Entity> certificates_;
  std::ostringstream messages_;
};

TEST_F(CertificateListTest, UndefinedMembersAreReportedEach) {
  Single("a", IPSEC_SKIP, "1");
  CertificateList& g = Group("g", {"a", "x"}, {"y"});
  EXPECT_EQ(ResolveAll(), 2);
  EXPECT_EQ(messages_.str(),
            "Error: \"g\" refers to undefined CERTIFICATE: \"x\".\n"
            "Error: \"g\" refers to undefined CERTIFICATE: \"y\".\n");
  // A second pass rebuilds the links rather than adding to them.
  ResolveAll();
  ASSERT_NE(g.Reduce(), nullptr);
  EXPECT_EQ(g.Data()->Length(), 1);
}

TEST_F(CertificateListTest, EmptyGroupHasNoTypeNoDataAndReducesToItself) {
  CertificateList& g = Group("g", {});
  ResolveAll();
  EXPECT_EQ(g.IPsecType(), IPSEC_UNKNOWN);
  EXPECT_EQ(g.Reduce(), &g);
  EXPECT_EQ(g.Data(), nullptr);
  EXPECT_TRUE(g.Data_not().Empty());
}

TEST_F(CertificateListTest, MixedTypesMakeTypeFourAndFailReduction) {
  Single("s", IPSEC_SKIP, "1");
  Single("i", IPSEC_IKE, "CN=i");
  CertificateList& g = Group("g", {"s"}, {"i"});
  ResolveAll();
  EXPECT_EQ(g.IPsecType(), IPSEC_MIXED);
  EXPECT_EQ(g.Reduce(), nullptr);
  EXPECT_EQ(g.Reduce(), nullptr);
}

TEST_F(CertificateListTest, EmptyMemberGroupAfterATypedMemberMixesTypes) {
  Single("s", IPSEC_SKIP, "1");
  Group("empty", {});
  CertificateList& typed_first = Group("g1", {"s", "empty"});
  CertificateList& empty_first = Group("g2", {"empty"});
  ResolveAll();
  EXPECT_EQ(typed_first.IPsecType(), IPSEC_MIXED);
  EXPECT_EQ(empty_first.IPsecType(), IPSEC_UNKNOWN);
}

TEST_F(CertificateListTest, ReductionFlattensNestedGroupsWithoutDuplicates) {
  Single("a", IPSEC_SKIP, "0xa");
  Single("A", IPSEC_SKIP, "0xA");
  Single("b", IPSEC_SKIP, "0xb");
  Single("c", IPSEC_SKIP, "0xc");
  Group("inner", {"a", "b"});
  CertificateList& outer = Group("outer", {"inner", "A"}, {"c"});
  CertificateList& same = Group("same", {"b", "a"}, {"c"});
  CertificateList& fewer = Group("fewer", {"a"}, {"c"});
  ResolveAll();
  ASSERT_EQ(outer.Reduce(), &outer);
  EXPECT_EQ(outer.IPsecType(), IPSEC_SKIP);
  EXPECT_EQ(outer.Data()->Length(), 2);
  EXPECT_EQ(outer.Data_not().Length(), 1);
  EXPECT_EQ(outer.Reduce(), &outer);
  EXPECT_EQ(outer.Data()->Length(), 2);
  same.Reduce();
  fewer.Reduce();
  EXPECT_TRUE(outer.Equal(same));
  EXPECT_FALSE(outer.Equal(fewer));
}

TEST_F(CertificateListTest, MemberGroupWithExclusionsIsRefused) {
  Single("a", IPSEC_SKIP, "1");
  Single("b", IPSEC_SKIP, "2");
  CertificateList& holey = Group("holey", {"a"}, {"b"});
  CertificateList& includer = Group("includer", {"holey"});
  CertificateList& excluder = Group("excluder", {"a"}, {"holey"});
  ResolveAll();
  CaptureStderr();
  EXPECT_EQ(includer.Reduce(), nullptr);
  EXPECT_EQ(excluder.Reduce(), nullptr);
  EXPECT_EQ(GetCapturedStderr(),
            "Error: Certificate group: \"includer\" cannot include group: \"holey\""
            " because it contains exclusions\n"
            "Error: Certificate group: \"excluder\" cannot exclude group: \"holey\""
            " because it contains exclusions\n");
  // A group may have exclusions of its own.
  EXPECT_EQ(holey.Reduce(), &holey);
}

TEST_F(CertificateListTest, GroupIncludingItselfThroughAnotherIsACycle) {
  Single("s", IPSEC_SKIP, "1");
  CertificateList& a = Group("a", {"s", "b"});
  CertificateList& b = Group("b", {}, {"a"});
  ResolveAll();
  EXPECT_EQ(CycleFrom(a), 1);
  EXPECT_EQ(CycleFrom(b), 1);
  // Type scans and reductions must come to an end on a cycle too; what they
  // answer there does not matter, since the cycle fails the compile.
  a.IPsecType();
  b.Reduce();
}

TEST_F(CertificateListTest, CycleBehindAGroupIsNotThatGroupsCycle) {
  Single("s", IPSEC_SKIP, "1");
  CertificateList& a = Group("a", {"b"});
  CertificateList& b = Group("b", {"c"});
  CertificateList& c = Group("c", {"b", "s"});
  ResolveAll();
  EXPECT_EQ(CycleFrom(a), 0);
  EXPECT_EQ(CycleFrom(b), 1);
  EXPECT_EQ(CycleFrom(c), 1);
  EXPECT_EQ(CycleFrom(*certificates_.Head()->Data()), 0);
}

TEST_F(CertificateListTest, LocalWhenEveryIncludedEntryIsExcludedOnesDoNotCount) {
  FakeHostDevices host;
  Single("mine", IPSEC_IKE, "gw_local");
  Single("also", IPSEC_IKE, "gw2_local");
  Single("theirs", IPSEC_IKE, "remote");
  CertificateList& local = Group("local", {"mine", "also"}, {"theirs"});
  CertificateList& mixed = Group("mixed", {"mine", "theirs"});
  ResolveAll();
  local.Reduce();
  mixed.Reduce();
  EXPECT_EQ(local.IsLocal(), 1);
  EXPECT_EQ(mixed.IsLocal(), 0);
}

TEST_F(CertificateListTest, UniqueIdsComeWithTheFirstEmitAndTheTableLine) {
  Certificate::ResetUniqueId();
  Single("a", IPSEC_SKIP, "0xa");
  Single("b", IPSEC_SKIP, "0xb");
  CertificateList& g = Group("g", {"a"}, {"b"});
  CertificateList& h = Group("h", {"a"});
  ResolveAll();
  g.Reduce();
  h.Reduce();
  EXPECT_EQ(g.UniqueID(), Certificate::kNoUniqueId);
  std::ostringstream out;
  h.EmitData(out);
  g.EmitData(out);
  h.EmitData(out);
  EXPECT_EQ(out.str(), " \"h\" 255 \"0\"  \"g\" 255 \"1\"  \"h\" 255 \"0\" ");
  EXPECT_EQ(Generated(g), "\"g\" 1 1 \"0xa\" ! 1 \"0xb\" \n");
  EXPECT_EQ(Generated(h), "\"h\" 0 1 \"0xa\" \n");
}

TEST_F(CertificateListTest, DumpWritesExclusionsBehindTheirPrefix) {
  Single("a", IPSEC_SKIP, "0xa");
  Single("b", IPSEC_SKIP, "0xb");
  CertificateList& g = Group("g", {"a"}, {"b"});
  ResolveAll();
  g.Reduce();
  std::ostringstream out;
  g.Dump(out, "+", "-", IPSEC_SKIP);
  EXPECT_EQ(out.str(), "+ 1 \"0xa\" \n- 1 \"0xb\" \n");
  out.str("");
  g.Dump(out, "+", "-", IPSEC_IKE);
  EXPECT_EQ(out.str(), "");
}

TEST_F(CertificateListTest, CleanUpForgetsTheReductionOnly) {
  Single("a", IPSEC_SKIP, "0xa");
  Single("b", IPSEC_SKIP, "0xb");
  CertificateList& g = Group("g", {"a"}, {"b"});
  ResolveAll();
  g.Reduce();
  g.CleanUp();
  EXPECT_TRUE(g.Data()->Empty());
  EXPECT_TRUE(g.Data_not().Empty());
  EXPECT_EQ(g.Includes().Length(), 1);
  ASSERT_EQ(g.Reduce(), &g);
  EXPECT_EQ(g.Data()->Length(), 1);
  EXPECT_EQ(g.Data_not().Length(), 1);
}

TEST_F(CertificateListTest, MemberAddsOnceAndRemovesByName) {
  CertificateList& g = Group("g", {"a"});
  EXPECT_EQ(g.Member("a", 0, 0), 0);
  EXPECT_EQ(g.Member("b", 0, 1), 0);
  EXPECT_EQ(g.Member("b", 0, 1), 0);
  EXPECT_EQ(g.Includes().Length(), 1);
  EXPECT_EQ(g.Excludes().Length(), 1);
  g.Member("a", 1, 0);
  g.Member("zzz", 1, 1);
  EXPECT_EQ(g.Includes().Length(), 0);
  EXPECT_EQ(g.Excludes().Length(), 1);
}

TEST_F(CertificateListTest, ReferRenameAndMarkWorkOnMembers) {
  Single("a", IPSEC_SKIP, "0xa");
  Single("b", IPSEC_SKIP, "0xb");
  CertificateList& g = Group("g", {"a"}, {"b"});
  EXPECT_TRUE(g.Refer(CO_CERTIFICATE, "b", 0));
  EXPECT_FALSE(g.Refer(CO_CERTIFICATE, "g", 0));
  g.RenameReference(CO_CERTIFICATE, "b", "bee");
  EXPECT_STREQ(g.Excludes().Head()->Data()->Name(), "bee");
  ResolveAll();
  g.Mark();
  EXPECT_EQ(certificates_.Head()->Data()->Used(), 1);
  EXPECT_EQ(certificates_.Head()->Next()->Data()->Used(), 0);
}

TEST_F(CertificateListTest, PrintAndEnumerateListMembers) {
  CertificateList g("g", IPSEC_UNKNOWN, nullptr, nullptr, "fw", "two");
  g.Member("a", 0, 0);
  g.Member("b", 0, 0);
  g.Member("c", 0, 1);
  std::ostringstream out;
  g.Print(out);
  EXPECT_EQ(out.str(), "\"g\"\tCERTIFICATE\t\"a\"\t\"b\"\t!\"c\"\tSCREEN\t\"fw\"\tCOMMENT\t\"two\"");
  out.str("");
  g.Enumerate(out, ENUM_FULL);
  EXPECT_EQ(out.str(), "SCREEN \"fw\" \"g\" GROUP { \"a\" \"b\" } { \"c\" } COMMENT \"two\"\n");
  out.str("");
  g.Enumerate(out, ENUM_NAME);
  EXPECT_EQ(out.str(), "\"g\" GROUP\n");
  EXPECT_TRUE(g.Match("fw", "g", "GROUP", 1));
}

}  // namespace
