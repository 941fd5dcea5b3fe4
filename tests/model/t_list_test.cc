#include "model/t_list.h"

#include <gtest/gtest.h>

namespace {

TEST(TListTest, AppendBehindTailOrNullIsTheSame) {
  int a = 1, b = 2, c = 3;
  TList<int> list;
  list.Append(a);
  list.Append(b, list.Tail());
  list.Append(c, nullptr);
  ASSERT_EQ(list.Length(), 3);
  EXPECT_EQ(*list.Head()->Data(), 1);
  EXPECT_EQ(*list.Head()->Next()->Data(), 2);
  EXPECT_EQ(*list.Tail()->Data(), 3);
  EXPECT_EQ(list.Tail()->Prior(), list.Head()->Next());
}

TEST(TListTest, PrependBeforeHeadOrNullIsTheSame) {
  int a = 1, b = 2, c = 3;
  TList<int> list;
  list.Prepend(a);
  list.Prepend(b, list.Head());
  list.Prepend(c, nullptr);
  EXPECT_EQ(*list.Head()->Data(), 3);
  EXPECT_EQ(*list.Head()->Next()->Data(), 2);
  EXPECT_EQ(*list.Tail()->Data(), 1);
}

TEST(TListTest, InsertInTheMiddleKeepsBothDirections) {
  int a = 1, b = 2, c = 3;
  TList<int> list;
  list.Append(a);
  list.Append(c);
  list.Append(b, list.Head());
  EXPECT_EQ(*list.Head()->Next()->Data(), 2);
  EXPECT_EQ(*list.Tail()->Prior()->Data(), 2);
  EXPECT_EQ(list.Tail()->Prior()->Prior(), list.Head());
}

TEST(TListTest, DeletingTheOnlyCellEmptiesTheList) {
  int a = 1;
  TList<int> list;
  list.Append(a);
  list.Delete_Cell(list.Head());
  EXPECT_EQ(list.Head(), nullptr);
  EXPECT_EQ(list.Tail(), nullptr);
  list.Delete_Cell(nullptr);
  EXPECT_EQ(list.Length(), 0);
}

TEST(TListTest, DeleteDataFreesEveryElement) {
  TList<int> list;
  for (int i = 0; i < 5; ++i) list.Append(*new int(i));
  list.Delete_Data();
  EXPECT_TRUE(list.Empty());
  EXPECT_EQ(list.Tail(), nullptr);
}

}  // namespace
