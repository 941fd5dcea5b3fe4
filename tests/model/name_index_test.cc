#include "model/name_index.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A list long enough to carry an index, owning its entities.
struct IndexedList {
  TList<Entity> list;
  IndexedList() {
    for (int i = 0; i < 40; ++i) Add(("filler" + std::to_string(i)).c_str(), nullptr);
  }
  ~IndexedList() { list.Delete_Data(); }
  Entity& Add(const char* name, const char* screen) {
    Entity* entity = new Entity(name, screen, nullptr, 0);
    list.Append(*entity);
    return *entity;
  }
  TList_Cell<Entity>* CellOf(const Entity& entity) const {
    for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next())
      if (cell->Data() == &entity) return cell;
    return nullptr;
  }
  Entity* Find(const char* name, const char* screen, int any) const {
    return Entity(name, screen, nullptr, 0).FindSelf(list, any);
  }
};

TEST(NameIndexTest, ShortListsAreWalkedLongOnesIndexed) {
  TList<Entity> list;
  Entity only("x", nullptr, nullptr, 0);
  list.Append(only);
  EXPECT_EQ(NameIndex::Of(list), nullptr);
  IndexedList indexed;
  ASSERT_NE(NameIndex::Of(indexed.list), nullptr);
  EXPECT_EQ(NameIndex::Of(indexed.list)->Find("filler7")->front()->Data()->Name(), std::string("filler7"));
  EXPECT_EQ(NameIndex::Of(indexed.list)->Find("nothing"), nullptr);
}

// The index must give what the walk gives: the first object of the name in
// list order, in any mode, and the first one whose screen passes in exact
// mode, whatever order the list was built in.
TEST(NameIndexTest, FirstMatchFollowsListOrderAtBothEndsAndInTheMiddle) {
  IndexedList owned;
  Entity& bound = owned.Add("web", "s1");
  EXPECT_EQ(owned.Find("web", nullptr, 1), &bound);
  EXPECT_EQ(owned.Find("web", nullptr, 0), nullptr);

  Entity& general = owned.Add("web", nullptr);
  EXPECT_EQ(owned.Find("web", nullptr, 0), &general);
  EXPECT_EQ(owned.Find("web", "s1", 0), &bound);

  Entity& front = *new Entity("web", "s2", nullptr, 0);
  owned.list.Prepend(front);
  EXPECT_EQ(owned.Find("web", nullptr, 1), &front);
  EXPECT_EQ(owned.Find("web", "s2", 0), &front);

  // Replacement in place, as the registry's Create does it.
  Entity& replacement = *new Entity("web", "s1", nullptr, 0);
  TList_Cell<Entity>* old = owned.CellOf(bound);
  owned.list.Append(replacement, old);
  owned.list.Delete_Data_Cell(old);
  EXPECT_EQ(owned.Find("web", "s1", 0), &replacement);
  EXPECT_EQ(owned.Find("web", nullptr, 1), &front);

  owned.list.Delete_Data_Cell(owned.CellOf(front));
  EXPECT_EQ(owned.Find("web", nullptr, 1), &replacement);
  EXPECT_EQ(owned.Find("web", "s2", 0), nullptr);
}

// The first object of a name owns the key's text: once it leaves, the key
// must still find the others.
TEST(NameIndexTest, RemovalAndRenameKeepTheOthersOfTheName) {
  IndexedList owned;
  Entity& first = owned.Add("db", nullptr);
  Entity& second = owned.Add("db", "s1");
  owned.list.Delete_Data_Cell(owned.CellOf(first));
  EXPECT_EQ(owned.Find(std::string("db").c_str(), nullptr, 1), &second);

  second.Name("database");
  EXPECT_EQ(owned.Find("db", nullptr, 1), nullptr);
  EXPECT_EQ(owned.Find("database", "s1", 0), &second);
  owned.list.Delete_Cell(owned.CellOf(second));
  delete &second;
  EXPECT_EQ(owned.Find("database", nullptr, 1), nullptr);
  EXPECT_EQ(owned.Find("filler39", nullptr, 0)->Name(), std::string("filler39"));
}

}  // namespace
