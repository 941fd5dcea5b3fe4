#include <gtest/gtest.h>

#include <string>

#include "model/ordered_entity_list.h"
#include "model/sorted_entity_list.h"

namespace {

std::string Names(const TList<Entity>& list) {
  std::string names;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) names += cell->Data()->Name();
  return names;
}

// Counts destructions, to tell a deleted object from one only unlinked.
class Tracked : public Entity {
 public:
  Tracked(const char* name, const char* screen, int* deaths) : Entity(name, screen, nullptr, 0), deaths_(deaths) {}
  ~Tracked() override { ++*deaths_; }

 private:
  int* deaths_;
};

class OrderedEntityListTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"a", "b", "c", "d"}) list.Items(*new Entity(name, nullptr, nullptr, 0));
  }
  OrderedEntityList list;
};

TEST_F(OrderedEntityListTest, MoveEndsAtTheTargetPositionClampedToTheList) {
  list.Move(1, 3);
  EXPECT_EQ(Names(list.Items()), "bcad");
  list.Move(4, 1);
  EXPECT_EQ(Names(list.Items()), "dbca");
  list.Move(3, 3);
  list.Move(0, 99);
  EXPECT_EQ(Names(list.Items()), "bcad");
  OrderedEntityList empty;
  empty.Move(1, 2);
  EXPECT_TRUE(empty.Items().Empty());
}

TEST_F(OrderedEntityListTest, InsertPositions) {
  list.Insert(0, *new Entity("x", nullptr, nullptr, 0));
  list.Insert(1, *new Entity("y", nullptr, nullptr, 0));
  EXPECT_EQ(Names(list.Items()), "yxabcd");
  list.Insert(3, *new Entity("z", nullptr, nullptr, 0));
  EXPECT_EQ(Names(list.Items()), "yxzabcd");
  list.Insert(8, *new Entity("e", nullptr, nullptr, 0));
  EXPECT_EQ(Names(list.Items()), "yxzabcde");
}

TEST(SortedEntityListTest, InsertsInNameOrder) {
  SortedEntityList sorted;
  Entity c("c", nullptr, nullptr, 0), a("a", nullptr, nullptr, 0), b("b", nullptr, nullptr, 0);
  sorted.Insert(c);
  sorted.Insert(a);
  sorted.Insert(b);
  sorted.Insert(b);
  EXPECT_EQ(Names(sorted.List()), "abc");
}

TEST(SortedEntityListTest, EqualNameAndScreenReplacesAndDeletesTheOld) {
  int deaths = 0;
  SortedEntityList sorted;
  Tracked* first = new Tracked("x", "s", &deaths);
  Tracked* second = new Tracked("x", "s", &deaths);
  sorted.Insert(*first);
  sorted.Insert(*second);
  EXPECT_EQ(deaths, 1);
  ASSERT_EQ(sorted.Length(), 1);
  EXPECT_EQ(sorted.List().Head()->Data(), second);
  sorted.Delete_Data();
  EXPECT_EQ(deaths, 2);
}

}  // namespace
