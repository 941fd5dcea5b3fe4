// Saved and listing text of addresses and address groups.
#include <gtest/gtest.h>

#include <sstream>

#include "model/address_list.h"

namespace {

template <class T>
std::string printed(const T& object) {
  std::ostringstream out;
  object.Print(out);
  return out.str();
}

std::string listed(const Entity& object, Enumerate_Type type) {
  std::ostringstream out;
  object.Enumerate(out, type);
  return out.str();
}

TEST(AddressTextTest, SingleAddressForms) {
  Address net("lan", 0x0A000000u, 0x0A0000FFu, "north", "office", RS_PREFIX);
  EXPECT_EQ(printed(net), "\"lan\"\tADDRESS\t10.0.0.0/24\tSCREEN\t\"north\"\tCOMMENT\t\"office\"");
  EXPECT_EQ(listed(net, ENUM_FULL), "SCREEN \"north\" \"lan\" RANGE 10.0.0.0/24 COMMENT \"office\"\n");
  EXPECT_EQ(listed(net, ENUM_NAME), "\"lan\" RANGE\n");
  EXPECT_EQ(listed(net, ENUM_SEARCH), "SCREEN \"north\" \"lan\" RANGE\n");
  Address host("gw", 0x0A000001u, nullptr, nullptr);
  EXPECT_EQ(printed(host), "\"gw\"\tADDRESS\t10.0.0.1");
  EXPECT_EQ(listed(host, ENUM_FULL), "\"gw\" HOST 10.0.0.1\n");
  Address odd("odd", 0x0A000001u, 0x0A0000FEu, nullptr, nullptr, RS_PREFIX);
  EXPECT_EQ(printed(odd), "\"odd\"\tADDRESS\t10.0.0.1 - 10.0.0.254");
  simplerange written{0x0A000000u, 0x0A0000FFu, RS_DOTTED_MASK};
  Address inline_address(&written);
  EXPECT_EQ(printed(inline_address), "10.0.0.0/255.255.255.0\t");
  std::ostringstream statement;
  statement << host;
  EXPECT_EQ(statement.str(), "\"gw\"\tADDRESS\t10.0.0.1;\n");
}

TEST(AddressTextTest, GroupForms) {
  TList<Entity>* include = new TList<Entity>;
  include->Append(*new Entity("a", nullptr, nullptr, 0));
  include->Append(*new Entity("b", nullptr, nullptr, 0));
  TList<Entity>* exclude = new TList<Entity>;
  exclude->Append(*new Entity("c", nullptr, nullptr, 0));
  AddressList group("g", include, exclude, nullptr, "mixed");
  EXPECT_EQ(printed(group), "\"g\"\tADDRESS\t\"a\"\t\"b\"\t!\"c\"\tCOMMENT\t\"mixed\"");
  EXPECT_EQ(listed(group, ENUM_FULL), "\"g\" GROUP { \"a\" \"b\" } { \"c\" } COMMENT \"mixed\"\n");
  AddressList empty("e", nullptr, nullptr, "s", nullptr);
  EXPECT_EQ(printed(empty), "\"e\"\tADDRESS\tSCREEN\t\"s\"");
  EXPECT_EQ(listed(empty, ENUM_FULL), "SCREEN \"s\" \"e\" GROUP { } { }\n");
}

}  // namespace
