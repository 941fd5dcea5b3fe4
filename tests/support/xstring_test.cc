#include "support/xstring.h"

#include <gtest/gtest.h>

#include <string>

#include "test_env.h"

namespace {

TEST(XstringTest, NullAndEmptyDiffer) {
  Xstring null_string;
  Xstring empty("");
  EXPECT_TRUE(null_string.isnull());
  EXPECT_EQ(null_string.length(), 0u);
  EXPECT_EQ(static_cast<const char*>(null_string), nullptr);
  EXPECT_FALSE(empty.isnull());
  EXPECT_NE(null_string, empty);
  EXPECT_EQ(null_string, Xstring(static_cast<const char*>(nullptr)));
}

TEST(XstringTest, ConcatenationTreatsNullAsEmptyUnlessBothAreNull) {
  EXPECT_TRUE(Xstring(Xstring(), Xstring()).isnull());
  EXPECT_EQ(Xstring(Xstring(), Xstring("b")), "b");
  EXPECT_EQ(Xstring("a") + Xstring(), "a");
  Xstring text;
  text += "ab";
  text += Xstring("cd");
  EXPECT_EQ(text, "abcd");
  EXPECT_EQ(text.length(), 4u);
}

TEST(XsQuoteTest, EnquoteEscapesQuotesAndKeepsEscapedOnesEscaped) {
  EXPECT_EQ(Xs_enquote("say \"hi\""), "say \\\"hi\\\"");
  EXPECT_EQ(Xs_enquote("a\\\"b"), "a\\\\\\\"b");
  EXPECT_EQ(Xs_enquote("\"x"), "\\\"x");
  EXPECT_EQ(Xs_enquote("plain"), "plain");
}

TEST(XsQuoteTest, DequoteOfBadTextGivesEmptyAndLogs) {
  LogCapture log;
  EXPECT_EQ(Xs_dequote("\""), "");
  EXPECT_EQ(Xs_dequote("abc"), "");
  EXPECT_EQ(Xs_dequote("\"abc"), "");
  std::string text = log.text();
  EXPECT_NE(text.find("Xs_dequote: runt"), std::string::npos) << text;
  EXPECT_NE(text.find("Xs_dequote: non-quoted"), std::string::npos) << text;
}

TEST(XsSafeTest, LongTextIsCutTo2048BytesWithEllipsis) {
  std::string fits(2048, 'x');
  EXPECT_EQ(Xs_safe(fits.c_str()), fits.c_str());
  std::string safe = Xs_safe((fits + "y").c_str()).c_str();
  EXPECT_EQ(safe.size(), 2048u);
  EXPECT_EQ(safe.substr(2045), "...");
  EXPECT_TRUE(Xs_safe(nullptr).isnull());
}

}  // namespace
