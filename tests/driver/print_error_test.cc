#include "driver/print_error.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

TEST(PrintErrorTest, TextOfEachCode) {
  const struct {
    int code;
    const char* name;
    const char* text;
  } cases[] = {
      {0, "x", ""},
      {239, "gate", "Screen object not defined for Screen \"gate\"\n"},
      {239, nullptr, "Screen object not defined for Screen\n"},
      {245, "gate", "compiler error\n"},  // the name is only shown where the code takes one
      {237, "Addresses", "Could not write file \"Addresses\"\n"},
      {228, "x", "cannot refer to \"NONE\"\n"},
      {247, nullptr, "cannot modify \"*\"\n"},
      {248, nullptr, "cannot modify address \"localhost\"\n"},
      {233, nullptr, "Cannot name Policy \"Version.\"\n"},
      {227, nullptr,
       "Cannot edit a read-only policy.\nUse \"saveas Policy name Registry Registry\" followed by \"load "
       "name\" to edit.\n"},
      {225, nullptr, "Illegal Registry name, use \"Registry\".\n"},
      {246, "x", "unknown error code 246\n"},
      {230, nullptr, "unknown error code 230\n"},
      {1, nullptr, "unknown error code 1\n"},
  };
  for (const auto& c : cases) {
    std::ostringstream out;
    PrintError(out, c.code, c.name);
    EXPECT_EQ(out.str(), c.text) << c.code;
  }
}

}  // namespace
