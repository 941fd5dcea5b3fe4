#include "model/t_list.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string forward(const TList<int>& list) {
  std::string text;
  for (TList_Cell<int>* cell = list.Head(); cell != nullptr; cell = cell->Next()) text += std::to_string(*cell->Data());
  return text;
}

std::string backward(const TList<int>& list) {
  std::string text;
  for (TList_Cell<int>* cell = list.Tail(); cell != nullptr; cell = cell->Prior()) text += std::to_string(*cell->Data());
  return text;
}

// A null or end cell means the end of the list; links must hold both ways.
TEST(TListTest, InsertAtEndsAndInTheMiddleKeepsBothDirections) {
  int one = 1, two = 2, three = 3, four = 4, five = 5;
  TList<int> list;
  list.Append(two);
  list.Append(four, list.Tail());
  list.Append(five, nullptr);
  list.Prepend(one, nullptr);
  list.Append(three, list.Head()->Next());
  EXPECT_EQ(forward(list), "12345");
  EXPECT_EQ(backward(list), "54321");
  list.Prepend(five, list.Head());
  EXPECT_EQ(backward(list), "543215");
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

}  // namespace
