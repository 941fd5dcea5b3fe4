#include "driver/print_error.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string Printed(int code, const char* name) {
  std::ostringstream out;
  PrintError(out, code, name);
  return out.str();
}

TEST(PrintErrorTest, ZeroWritesNothing) { EXPECT_EQ(Printed(0, "x"), ""); }

TEST(PrintErrorTest, NameOnlyWhereTheCodeTakesOne) {
  EXPECT_EQ(Printed(239, "gate"), "Screen object not defined for Screen \"gate\"\n");
  EXPECT_EQ(Printed(239, nullptr), "Screen object not defined for Screen\n");
  EXPECT_EQ(Printed(245, "gate"), "compiler error\n");
  EXPECT_EQ(Printed(237, "Addresses"), "Could not write file \"Addresses\"\n");
}

TEST(PrintErrorTest, FixedTailsFollowTheText) {
  EXPECT_EQ(Printed(228, "x"), "cannot refer to \"NONE\"\n");
  EXPECT_EQ(Printed(247, nullptr), "cannot modify \"*\"\n");
  EXPECT_EQ(Printed(248, nullptr), "cannot modify address \"localhost\"\n");
  EXPECT_EQ(Printed(233, nullptr), "Cannot name Policy \"Version.\"\n");
}

TEST(PrintErrorTest, MultiLineAndQuotedTexts) {
  EXPECT_EQ(Printed(227, nullptr),
            "Cannot edit a read-only policy.\nUse \"saveas Policy name Registry Registry\" followed by \"load "
            "name\" to edit.\n");
  EXPECT_EQ(Printed(225, nullptr), "Illegal Registry name, use \"Registry\".\n");
}

TEST(PrintErrorTest, UnknownCodes) {
  EXPECT_EQ(Printed(246, "x"), "unknown error code 246\n");
  EXPECT_EQ(Printed(230, nullptr), "unknown error code 230\n");
  EXPECT_EQ(Printed(1, nullptr), "unknown error code 1\n");
}

}  // namespace
