#include "lang/scanner.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct Scanned {
  int kind;
  std::string text;   // the string value, or yytext for other kinds
  long long number;   // number, address or range start
  unsigned end;
  int style;
};

// Scans `source` to its end and returns every token before the end marker.
std::vector<Scanned> Scan(const std::string& source) {
  FILE* stream = fmemopen(const_cast<char*>(source.data()), source.size(), "r");
  yyrestart(stream);
  std::vector<Scanned> tokens;
  for (int kind = yylex(); kind != 0; kind = yylex()) {
    Scanned token{kind, yytext, 0, 0, 0};
    if (kind == TOK_STRING || kind == TOK_ALIENLINE) {
      token.text = yylval.string;
      free(yylval.string);
    } else if (kind == TOK_NUMBER) {
      token.number = yylval.number;
    } else if (kind == TOK_IPADDR) {
      token.number = ntohl(yylval.address);
    } else if (kind == TOK_IPRANGE) {
      token = {kind, yytext, yylval.start, yylval.end, yylval.style};
    }
    tokens.push_back(token);
  }
  fclose(stream);
  return tokens;
}

std::vector<int> Kinds(const std::string& source) {
  std::vector<int> kinds;
  for (const Scanned& token : Scan(source)) kinds.push_back(token.kind);
  return kinds;
}

unsigned Ip(const char* text) { return ntohl(inet_addr(text)); }

TEST(ScannerKeywordTest, TokenKindsOfWordsAndPunctuation) {
  const struct {
    std::string source;
    std::vector<int> kinds;
  } cases[] = {
      {"ADDRESS SERVICE_GROUP PROXY_Telnet G P -",
       {TOK_ADDRESS, TOK_SERVICE_GROUP, TOK_PROXY_Telnet, TOK_G, TOK_P, TOK_DASH}},
      {"address PROXY_TELNET", {TOK_STRING, TOK_STRING}},  // keywords are case sensitive
      {"ALL all", {TOK_ALL, TOK_ALL}},
      {"VPNGATEWAY VPNNODE", {TOK_VPNGATEWAY, TOK_VPNGATEWAY}},
      {"NETMASK IKE_CERTIFICATE", {TOK_NETMASK, TOK_IKE_CERTIFICATE}},  // reserved without a statement
      {"NONE", {TOK_STRING}},
      {"1.2.3", {TOK_NUMBER, '.', TOK_NUMBER, '.', TOK_NUMBER}},
      {"1-2 1 - 2", {TOK_NUMBER, TOK_NUMBER, TOK_NUMBER, TOK_DASH, TOK_NUMBER}},
      {"1.2.3.4/abc", {TOK_IPADDR, '/', TOK_STRING}},  // no valid mask: no range
      {"\"ADDRESS\" \"G\"", {TOK_STRING, TOK_STRING}},
      {"; ( ) * ! { \f", {';', '(', ')', '*', '!', '{', '\f'}},
      {std::string("a\0b", 3), {TOK_STRING}},  // NUL ends the input
      // Comments, and where a line starts.
      {"a # rest ; of line\nb // more\nc\n", {TOK_STRING, TOK_STRING, TOK_STRING}},
      {"begin_code anything \" at all\nx\n", {TOK_STRING}},
      {"begin_codex whatever\n", {}},
      {"  begin_code x\n", {TOK_STRING, TOK_STRING}},
      {"# a", {'#', TOK_STRING}},
      {"// a", {'/', '/', TOK_STRING}},
      {"begin_code", {TOK_STRING}},
      {"x\n@y\n", {TOK_STRING, TOK_ALIENLINE}},
      {"x\n  @y\n", {TOK_STRING, '@', TOK_STRING}},
      {"@\n", {'@'}},
      {"@y", {'@', TOK_STRING}},
  };
  for (const auto& c : cases) EXPECT_EQ(Kinds(c.source), c.kinds) << c.source;
}

// A keyword followed by a name character is a name, and so are dashed words.
TEST(ScannerNameTest, NameCharacters) {
  std::vector<std::string> texts;
  for (const Scanned& token : Scan("ADDRESS1 RULE.x SCREEN>y PRE-SHARED a->b _x -5a --a -- -0x10")) {
    EXPECT_EQ(token.kind, TOK_STRING) << token.text;
    texts.push_back(token.text);
  }
  EXPECT_EQ(texts, (std::vector<std::string>{"ADDRESS1", "RULE.x", "SCREEN>y", "PRE-SHARED", "a->b",
                                             "_x", "-5a", "--a", "--", "-0x10"}));
}

TEST(ScannerNumberTest, DecimalValuesFollowAtoiAndSaturateAtThirtyTwoBits) {
  std::vector<Scanned> tokens = Scan("010 +5 -5 --5 +-5 0 99999999999 0xFFFFFFFFF -99999999999");
  std::vector<long long> values;
  for (const Scanned& token : tokens) {
    EXPECT_EQ(token.kind, TOK_NUMBER);
    values.push_back(token.number);
  }
  EXPECT_EQ(values, (std::vector<long long>{10, 5, -5, 0, 0, 0, 2147483647, 2147483647, -2147483647LL - 1}));
}

TEST(ScannerNumberTest, HexadecimalNeedsLowerCaseXAndADigit) {
  std::vector<Scanned> tokens = Scan("0x1F 0xff 0xg 0X10");
  ASSERT_EQ(tokens.size(), 6u);
  EXPECT_EQ(tokens[0].number, 31);
  EXPECT_EQ(tokens[1].number, 255);
  EXPECT_EQ(tokens[2].kind, TOK_NUMBER);
  EXPECT_EQ(tokens[2].number, 0);
  EXPECT_EQ(tokens[3].kind, TOK_STRING);
  EXPECT_EQ(tokens[3].text, "xg");
  EXPECT_EQ(tokens[4].number, 0);
  EXPECT_EQ(tokens[5].text, "X10");
}

TEST(ScannerAddressTest, DottedAddressInNetworkOrder) {
  std::vector<Scanned> tokens = Scan("10.1.2.3 1.2.3.256");
  ASSERT_EQ(tokens.size(), 2u);
  EXPECT_EQ(tokens[0].kind, TOK_IPADDR);
  EXPECT_EQ(tokens[0].number, Ip("10.1.2.3"));
  EXPECT_EQ(tokens[1].number, 0xFFFFFFFFu);
}

TEST(ScannerRangeTest, DashRangeAllowsOneBlankOnEachSide) {
  for (const char* text : {"10.0.0.1-10.0.0.9", "10.0.0.1 -10.0.0.9", "10.0.0.1 - 10.0.0.9",
                           "10.0.0.1- 10.0.0.9"}) {
    std::vector<Scanned> tokens = Scan(text);
    ASSERT_EQ(tokens.size(), 1u) << text;
    EXPECT_EQ(tokens[0].kind, TOK_IPRANGE);
    EXPECT_EQ(tokens[0].number, Ip("10.0.0.1"));
    EXPECT_EQ(tokens[0].end, Ip("10.0.0.9"));
    EXPECT_EQ(tokens[0].style, 0);
  }
  EXPECT_EQ(Kinds("10.0.0.1  - 10.0.0.9"), (std::vector<int>{TOK_IPADDR, TOK_DASH, TOK_IPADDR}));
  std::vector<Scanned> tabbed = Scan("10.0.0.1\t-10.0.0.9");
  ASSERT_EQ(tabbed.size(), 2u);
  EXPECT_EQ(tabbed[0].kind, TOK_IPADDR);
  EXPECT_EQ(tabbed[1].text, "-10.0.0.9");
}

TEST(ScannerRangeTest, RangeBoundsAndMaskStyle) {
  const struct {
    const char* source;
    const char* start;
    const char* end;
    int style;  // -1: not checked
  } cases[] = {
      {"10.0.0.9 - 10.0.0.1", "10.0.0.9", "10.0.0.1", -1},  // the written order stays
      {"10.0.0.0/8", "10.0.0.0", "10.255.255.255", 1},
      {"10.1.2.3/8", "10.0.0.0", "10.255.255.255", 1},
      {"10.1.2.3/0", "0.0.0.0", "255.255.255.255", 1},
      {"10.1.2.3/32", "10.1.2.3", "10.1.2.3", -1},
      {"192.168.1.77/255.255.255.0", "192.168.1.0", "192.168.1.255", 2},
      {"192.168.1.77/0xFFFF0000", "192.168.0.0", "192.168.255.255", 3},
  };
  for (const auto& c : cases) {
    std::vector<Scanned> tokens = Scan(c.source);
    ASSERT_EQ(tokens.size(), 1u) << c.source;
    EXPECT_EQ(tokens[0].number, Ip(c.start)) << c.source;
    EXPECT_EQ(tokens[0].end, Ip(c.end)) << c.source;
    if (c.style >= 0) {
      EXPECT_EQ(tokens[0].style, c.style) << c.source;
    }
  }
}

TEST(ScannerAlienLineTest, AtLineStartKeepsTheRest) {
  std::vector<Scanned> tokens = Scan("@ keep \"this\" ; as is\n");
  ASSERT_EQ(tokens.size(), 1u);
  EXPECT_EQ(tokens[0].kind, TOK_ALIENLINE);
  EXPECT_EQ(tokens[0].text, " keep \"this\" ; as is");
}

TEST(ScannerStringTest, EscapesAreKept) {
  std::vector<Scanned> tokens = Scan(R"("a\"b" "c\\d" "e\f" "" "two
lines")");
  ASSERT_EQ(tokens.size(), 5u);
  EXPECT_EQ(tokens[0].text, R"(a\"b)");
  EXPECT_EQ(tokens[1].text, R"(c\\d)");
  EXPECT_EQ(tokens[2].text, R"(e\\f)");
  EXPECT_EQ(tokens[3].text, "");
  EXPECT_EQ(tokens[4].text, "two\nlines");
}

TEST(ScannerStringTest, LongStringsAreTruncatedWithOneWarning) {
  std::string exact(255, 'a');
  testing::internal::CaptureStderr();
  std::vector<Scanned> tokens = Scan("\"" + exact + "\"");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(tokens[0].text, exact);

  testing::internal::CaptureStderr();
  tokens = Scan("\"" + std::string(300, 'b') + "\" next");
  std::string kept(255, 'b');
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Warning: String '" + kept + "' truncated to 255 characters.\n");
  ASSERT_EQ(tokens.size(), 2u);
  EXPECT_EQ(tokens[0].text, kept);
  EXPECT_EQ(tokens[1].text, "next");

  // An escape that would cross the limit is taken back whole.
  std::string short_kept(254, 'c');
  testing::internal::CaptureStderr();
  tokens = Scan("\"" + short_kept + "\\x\"");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Warning: String '" + short_kept + "' truncated to 255 characters.\n");
  EXPECT_EQ(tokens[0].text, short_kept);
}

TEST(ScannerStringTest, NulEndsTheString) {
  std::string source("\"ab\0cd\"", 7);
  std::vector<Scanned> tokens = Scan(source);
  ASSERT_GE(tokens.size(), 1u);
  EXPECT_EQ(tokens[0].text, "ab");
}

TEST(ScannerStringTest, UnclosedStringEndsAsTheQuoteCharacter) {
  FILE* stream = fmemopen(const_cast<char*>("x \"never closed"), 15, "r");
  yyrestart(stream);
  EXPECT_EQ(yylex(), TOK_STRING);
  free(yylval.string);
  EXPECT_EQ(yylex(), '"');
  EXPECT_STREQ(yytext, "\"");
  fclose(stream);
}

TEST(ScannerStreamTest, EndOfStreamRestartsOnTheNextStreamAtLineStart) {
  FILE* first = fmemopen(const_cast<char*>("a"), 1, "r");
  yyrestart(first);
  EXPECT_EQ(yylex(), TOK_STRING);
  free(yylval.string);
  EXPECT_EQ(yylex(), 0);
  EXPECT_STREQ(yytext, "");
  fclose(first);
  FILE* second = fmemopen(const_cast<char*>("@alien\n"), 7, "r");
  yyin = second;
  EXPECT_EQ(yylex(), TOK_ALIENLINE);
  free(yylval.string);
  EXPECT_EQ(yylex(), 0);
  fclose(second);
}

TEST(ScannerStreamTest, TokensLongerThanAReadBlock) {
  std::string name(40000, 'n');
  std::vector<Scanned> tokens = Scan("x " + name + " y");
  ASSERT_EQ(tokens.size(), 3u);
  EXPECT_EQ(tokens[1].text, name);
}

}  // namespace
