#include "crypto/certificate_list.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>

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

TEST_F(CertificateListTest, MixedTypesMakeTypeFourAndFailReduction) {
  Single("s", IPSEC_SKIP, "1");
  Single("i", IPSEC_IKE, "CN=i");
  CertificateList& g = Group("g", {"s"}, {"i"});
  ResolveAll();
  EXPECT_EQ(g.IPsecType(), IPSEC_MIXED);
  EXPECT_EQ(g.Reduce(), nullptr);
  EXPECT_EQ(g.Reduce(), nullptr);
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

}  // namespace
