#include "model/entity.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// A list that owns its entities for the length of a test.
struct OwnedList {
  TList<Entity> list;
  ~OwnedList() { list.Delete_Data(); }
  Entity& Add(const char* name, const char* screen) {
    Entity* entity = new Entity(name, screen, nullptr, 0);
    list.Append(*entity);
    return *entity;
  }
};

TEST(EntityLookupTest, ExactModeTestsTheScreenAnyModeDoesNot) {
  OwnedList owned;
  Entity& bound = owned.Add("web", "s1");
  Entity& general = owned.Add("web", nullptr);
  Entity searcher("web", nullptr, nullptr, 0);
  EXPECT_EQ(searcher.FindSelf(owned.list, 0), &general);
  EXPECT_EQ(searcher.FindSelf(owned.list, 1), &bound);
}

TEST(EntityLookupTest, ExactModeScreenTable) {
  OwnedList owned;
  Entity& star = owned.Add("a", "*");
  Entity& s1 = owned.Add("b", "s1");
  Entity& none = owned.Add("b", nullptr);
  EXPECT_EQ(Entity("a", nullptr, nullptr, 0).FindSelf(owned.list, 0), &star);
  EXPECT_EQ(Entity("a", "*", nullptr, 0).FindSelf(owned.list, 0), nullptr);
  EXPECT_EQ(Entity("b", "*", nullptr, 0).FindSelf(owned.list, 0), &none);
  EXPECT_EQ(Entity("b", "s1", nullptr, 0).FindSelf(owned.list, 0), &s1);
  EXPECT_EQ(Entity("b", "s2", nullptr, 0).FindSelf(owned.list, 0), nullptr);
  EXPECT_EQ(Entity("B", nullptr, nullptr, 0).FindSelf(owned.list, 1), nullptr);
}

TEST(EntityLookupTest, FindSelfAllCollectsEveryMatchInOrder) {
  OwnedList owned;
  Entity& s1 = owned.Add("x", "s1");
  Entity& none = owned.Add("x", nullptr);
  Entity& s2 = owned.Add("x", "s2");
  owned.Add("y", "s1");

  TList<Entity>* all = Entity("x", "*", nullptr, 0).FindSelfAll(owned.list);
  ASSERT_NE(all, nullptr);
  ASSERT_EQ(all->Length(), 3);
  EXPECT_EQ(all->Head()->Data(), &s1);
  EXPECT_EQ(all->Head()->Next()->Data(), &none);
  EXPECT_EQ(all->Tail()->Data(), &s2);
  delete all;

  TList<Entity>* general = Entity("x", nullptr, nullptr, 0).FindSelfAll(owned.list);
  ASSERT_NE(general, nullptr);
  EXPECT_EQ(general->Length(), 1);
  EXPECT_EQ(general->Head()->Data(), &none);
  delete general;

  EXPECT_EQ(Entity("x", "s3", nullptr, 0).FindSelfAll(owned.list), nullptr);
}

TEST(EntityResolveTest, ResolveNamesReportsEachMissAndGoesOn) {
  OwnedList known;
  Entity& a = known.Add("a", "s1");
  OwnedList names;
  names.Add("missing", nullptr);
  names.Add("a", nullptr);
  TList<Entity> resolved;
  std::ostringstream out;
  Entity rule("rule 1", nullptr, nullptr, 0);
  EXPECT_EQ(rule.Resolve_Names(names.list, resolved, known.list, "address", out), 1);
  EXPECT_EQ(out.str(), "Error: \"rule 1\" refers to undefined address: \"missing\".\n");
  ASSERT_EQ(resolved.Length(), 1);
  EXPECT_EQ(resolved.Head()->Data(), &a);
}

}  // namespace
