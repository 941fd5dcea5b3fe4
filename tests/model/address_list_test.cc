#include "model/address_list.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <utility>

namespace {

TList<Entity>* names(std::initializer_list<const char*> members) {
  TList<Entity>* list = new TList<Entity>;
  for (const char* member : members) list->Append(*new Entity(member, nullptr, nullptr, 0));
  return list;
}

// A registry's worth of addresses, owned here.
class AddressListTest : public ::testing::Test {
 protected:
  ~AddressListTest() override { registry_.Delete_Data(); }

  Address& Host(const char* name, uint32_t start, uint32_t end) {
    Address* address = new Address(name, start, end, nullptr, nullptr, RS_ADDRESSES);
    registry_.Append(*address);
    return *address;
  }
  AddressList& Group(const char* name, std::initializer_list<const char*> include,
                     std::initializer_list<const char*> exclude) {
    AddressList* group = new AddressList(name, names(include), names(exclude), nullptr, nullptr);
    registry_.Append(*group);
    return *group;
  }
  int ResolveAll(std::ostream& out) {
    int misses = 0;
    for (TList_Cell<Entity>* cell = registry_.Head(); cell != nullptr; cell = cell->Next())
      misses += cell->Data()->Resolve(CO_ADDRESS, registry_, out);
    return misses;
  }
  void ClearMarks() {
    for (TList_Cell<Entity>* cell = registry_.Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->Used(0);
  }

  TList<Entity> registry_;
  std::ostringstream errors_;
};

TEST_F(AddressListTest, ExclusionsOnlyStartFromTheWholeSpace) {
  Host("*", 0, 0xFFFFFFFFu);
  Host("inside", 10, 19);
  AddressList& outside = Group("outside", {}, {"inside"});
  EXPECT_STREQ(outside.IncludeNames().Head()->Data()->Name(), "*");
  ASSERT_EQ(ResolveAll(errors_), 0);
  outside.Reduce();
  EXPECT_EQ(outside.SizeOf(), 4294967296ULL - 10);
  EXPECT_EQ(outside.Type(), ADDRESS_GROUP);
}

TEST_F(AddressListTest, IncludesComeBeforeExcludesWhateverTheOrder) {
  Host("low", 0, 10);
  Host("high", 5, 20);
  AddressList& nested = Group("nested", {"low"}, {});
  AddressList& group = Group("g", {"nested", "high"}, {"cut"});
  Host("cut", 8, 12);
  Group("empty", {}, {});
  AddressList& with_empty = Group("with empty", {"empty"}, {});
  ASSERT_EQ(ResolveAll(errors_), 0);
  group.Reduce();
  EXPECT_TRUE(nested.Reduced());
  EXPECT_EQ(group.SizeOf(), 21ULL - 5);
  EXPECT_FALSE(group.Contains(Range(8, 8, RT_ADDRESS, RS_ADDRESSES)));
  with_empty.Reduce();
  EXPECT_TRUE(with_empty.Ranges().Empty());
  group.CleanUp();
  EXPECT_FALSE(group.Reduced());
  EXPECT_TRUE(group.Ranges().Empty());
  group.Reduce();
  EXPECT_EQ(group.SizeOf(), 16ULL);
}

TEST_F(AddressListTest, UnknownMembersAreReportedAndCounted) {
  AddressList& group = Group("g", {"nowhere"}, {"gone"});
  EXPECT_EQ(ResolveAll(errors_), 2);
  EXPECT_EQ(errors_.str(),
            "Error: \"g\" refers to undefined ADDRESS: \"nowhere\".\n"
            "Error: \"g\" refers to undefined ADDRESS: \"gone\".\n");
  EXPECT_EQ(group.Resolve(CO_SERVICE, registry_, errors_), 0);
  group.Reduce();
  EXPECT_TRUE(group.Ranges().Empty());
}

// Reduction must end on a cycle; the cycle check then reports it.
TEST_F(AddressListTest, ACycleIsFoundOnlyFromGroupsOnIt) {
  AddressList& self = Group("self", {"self", "x"}, {});
  AddressList& a = Group("a", {"b"}, {});
  AddressList& b = Group("b", {"c"}, {});
  AddressList& c = Group("c", {"x"}, {"b"});
  Host("x", 3, 4);
  ASSERT_EQ(ResolveAll(errors_), 0);
  EXPECT_EQ(self.Reduce(), &self);
  EXPECT_EQ(self.SizeOf(), 2ULL);
  a.Reduce();
  const std::pair<AddressList*, int> expected[] = {{&self, 1}, {&a, 0}, {&b, 1}, {&c, 1}};
  for (const auto& [group, cycle] : expected) {
    ClearMarks();
    EXPECT_EQ(group->DetectCycle(), cycle) << group->Name();
  }
  EXPECT_EQ(Host("plain", 1, 1).DetectCycle(), 0);
}

}  // namespace
