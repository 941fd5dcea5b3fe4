#include "support/attrib.h"

#include <gtest/gtest.h>

#include <string>

#include "test_env.h"

namespace {

// Lists are equal when their elements agree in type, name, value and
// children, in order.
bool same_list(const attrib* a, const attrib* b) {
  for (; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (a->type != b->type || a->name != b->name || a->value != b->value) return false;
    if (!same_list(a->children, b->children)) return false;
  }
  return a == b;
}

TEST(AttribParseTest, TypePrefixHitsTheLastEntryThatFits) {
  Xstring remainder;
  attrib list("a:s=1; b:un=2; c:unk=3; d:b=4; e:a=5; f:ASCII=6; g : sig = -7 ;", remainder);
  ASSERT_EQ(remainder, "");
  const attrib_type expected[] = {attr_skipname, attr_unsigned32, attr_unknown, attr_bytes,
                                  attr_ascii,    attr_ascii,      attr_signed32};
  const attrib* a = &list;
  for (attrib_type type : expected) {
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->type, type) << a->name.c_str();
    a = a->next;
  }
  EXPECT_EQ(list.find("g")->value, "-7");
  EXPECT_EQ(list.find("f")->printable(), "f:ascii=6; g:signed32=-7; ");
}

TEST(AttribParseTest, BracesAndEscapedQuotesInsideQuotesDontEndStruct) {
  Xstring remainder;
  attrib list("s:struct={ b:ascii=\"}\"; c:ascii=\"\\\"{\"; }; t:ascii=2;", remainder);
  ASSERT_EQ(remainder, "");
  ASSERT_NE(list.children, nullptr);
  EXPECT_EQ(list.children->value, "\"}\"");
  ASSERT_NE(list.children->next, nullptr);
  EXPECT_EQ(list.children->next->value, "\"\\\"{\"");
  ASSERT_NE(list.next, nullptr);
  EXPECT_EQ(list.next->name, "t");
}

TEST(AttribParseTest, PrintableParsesBackToAnEqualList) {
  Xstring remainder;
  attrib list(
      "sys:utf8=\"fw1\"; empty:struct={}; n:unsigned32=7; v:bytes=;"
      " s:struct={ x:ascii=\"a b\"; y:struct={ z:ipV4=10.0.0.1; }; }; u:utf8=\"\xc3\xa9\"; p:u={};",
      remainder);
  ASSERT_EQ(remainder, "");
  Xstring text = list.printable();
  attrib again(text, remainder);
  EXPECT_EQ(remainder, "");
  EXPECT_TRUE(same_list(&list, &again)) << text.c_str() << "\n" << again.printable().c_str();
}

TEST(AttribParseTest, EmptyTextPrintsAsEmptyText) {
  Xstring remainder;
  attrib empty("", remainder);
  EXPECT_EQ(empty.printable(), "");
}

struct ParseFailure {
  const char* name;
  const char* text;
  const char* message;
  const char* remainder;
};

void PrintTo(const ParseFailure& failure, std::ostream* out) { *out << failure.name; }

class AttribParseFailureTest : public testing::TestWithParam<ParseFailure> {};

TEST_P(AttribParseFailureTest, LogsTheReasonAndGivesTheFailedItemOn) {
  const ParseFailure& failure = GetParam();
  LogCapture log;
  attrib* list = nullptr;
  Xstring remainder;
  EXPECT_EQ(attrib_parse(&list, failure.text, remainder), -1);
  EXPECT_EQ(remainder, failure.remainder);
  std::string text = log.text();
  EXPECT_NE(text.find(failure.message), std::string::npos) << text;
  if (list != nullptr) list->reap();
}

INSTANTIATE_TEST_SUITE_P(
    Messages, AttribParseFailureTest,
    testing::Values(
        ParseFailure{"NoFinalSemicolon", "x:ascii=1", "attrib_parse: missing semicolon", "x:ascii=1"},
        ParseFailure{"NoEndQuote", "\"a:ascii=1;", "attrib_parse: missing end double quote", "\"a:ascii=1;"},
        ParseFailure{"LoneQuote", "\"", "attrib_parse: missing end double quote", "\""},
        ParseFailure{"NoEndBrace", "{ a:ascii=1;", "attrib_parse: missing end brace", "{ a:ascii=1;"},
        ParseFailure{"BadNameStart", "a:ascii=1; 9b:ascii=2;", "attrib_parse: bad name 1st char '9'", "9b:ascii=2;"},
        ParseFailure{"NoColon", "a ascii=1;", "attrib_parse: missing colon", "a ascii=1;"},
        ParseFailure{"BadTypeStart", "a:9x=1;", "attrib_parse: bad type 1st char '9'", "a:9x=1;"},
        ParseFailure{"NoEquals", "a:ascii 1;", "attrib_parse: missing equals", "a:ascii 1;"},
        ParseFailure{"UnknownType", "a:zz=1;", "attrib_parse: unknown type", "a:zz=1;"},
        ParseFailure{"TypeLongerThanAnyName", "a:asciiz=1;", "attrib_parse: unknown type", "a:asciiz=1;"},
        ParseFailure{"StructWithoutSemicolon", "a:struct={ b:ascii=1;", "attrib_parse: missing semicolon", "a:struct={ b:ascii=1;"},
        ParseFailure{"FailureInsideStruct", "a:struct={ b:ascii 1; };", "attrib_parse: missing equals", "b:ascii 1;"}),
    [](const testing::TestParamInfo<ParseFailure>& info) { return std::string(info.param.name); });

TEST(AttribParseTest, ConstructorWithoutRemainderLogsTheLeftover) {
  LogCapture log;
  attrib list("a:ascii=1; oops");
  std::string text = log.text();
  EXPECT_NE(text.find("attrib: unparsable input 'oops'"), std::string::npos) << text;
}

class AttribMatchTest : public testing::Test {
 protected:
  bool matches(const char* pattern_text) {
    Xstring remainder;
    attrib pattern(pattern_text, remainder);
    EXPECT_EQ(remainder, "") << pattern_text;
    return list_.match(&pattern);
  }
  Xstring remainder_;
  attrib list_{"name:utf8=\"x\"; v:ascii=1; v:ascii=2; n:unsigned32=3; s:struct={ c:ascii=4; d:ascii=5; };",
               remainder_};
};

TEST_F(AttribMatchTest, EveryPatternElementNeedsAPartner) {
  EXPECT_TRUE(list_.match(nullptr));
  const struct {
    const char* pattern;
    bool matches;
  } cases[] = {
      {"name:utf8=\"x\";", true},
      {"name:ascii=\"x\"; n:unsigned32=3;", true},
      {"name:ascii=\"x\"; missing:ascii=1;", false},
      {"name:ascii=\"y\";", false},
      {"n:unknown=; s:unknown=zz;", true},  // an unknown type matches by name alone
      {"v:ascii=2;", true},                 // a later element of the same name may fit
      {"n:ascii=3;", false},                // text against non-text ends the whole match
      {"v:signed32=2;", false},
      {"s:struct={ d:ascii=5; };", true},  // children match recursively
      {"s:struct={ d:ascii=6; };", false},
      {"n:unsigned32={ d:ascii=5; };", false},
  };
  for (const auto& c : cases) EXPECT_EQ(matches(c.pattern), c.matches) << c.pattern;
}

TEST(AttribRemoveTest, TakesOutEveryEqualElementBehindTheFirst) {
  Xstring remainder;
  attrib list("h:ascii=0; v:ascii=1; w:ascii=1; v:utf8=1; v:ascii=2; v:unsigned32=1;", remainder);
  attrib pattern(attr_ascii, "v", Xstring("1"));
  EXPECT_EQ(list.remove(&pattern), 0);
  EXPECT_EQ(list.printable(), "h:ascii=0; w:ascii=1; v:ascii=2; v:unsigned32=1; ");
}

TEST(AttribRemoveTest, RefusesLongPatternsAndTheFirstElement) {
  Xstring remainder;
  attrib list("h:ascii=0; v:ascii=1;", remainder);
  attrib two("v:ascii=1; w:ascii=2;", remainder);
  attrib head(attr_ascii, "h", Xstring("0"));
  LogCapture log;
  EXPECT_EQ(list.remove(&two), -1);
  EXPECT_EQ(list.remove(&head), -1);
  std::string text = log.text();
  EXPECT_NE(text.find("remove: non-simple pattern 'v:ascii=1; w:ascii=2; '"), std::string::npos) << text;
  EXPECT_NE(text.find("remove: first element match of pattern 'h:ascii=0; '"), std::string::npos) << text;
  EXPECT_NE(list.next, nullptr);
}

TEST(AttribValueTest, WrongTypeAndBadTextGiveTheMarkers) {
  LogCapture log;
  EXPECT_EQ(attrib(attr_ascii, "n", Xstring("1")).val_s32(attr_signed32, "who"), 0x7fffffffL);
  EXPECT_EQ(attrib(attr_signed32, "n", Xstring("1x")).val_s32(attr_signed32, nullptr), 0x7fffffffL);
  EXPECT_EQ(attrib(attr_signed32, "n", Xstring("2147483648")).val_s32(attr_signed32, nullptr), 0x7fffffffL);
  EXPECT_EQ(attrib(attr_unsigned32, "n", Xstring("-1")).val_u32(attr_unsigned32, nullptr), 0xffffffffUL);
  EXPECT_EQ(attrib(attr_unsigned32, "n", Xstring("")).val_u32(attr_unsigned32, nullptr), 0xffffffffUL);
  EXPECT_EQ(attrib(attr_unsigned32, "n", Xstring(" 1")).val_u32(attr_unsigned32, nullptr), 0xffffffffUL);
  std::string text = log.text();
  EXPECT_NE(text.find("who: wrong type in 'n:ascii=1; '"), std::string::npos) << text;
  EXPECT_NE(text.find("val_s32: illegal value string in 'n:signed32=1x; '"), std::string::npos) << text;
  EXPECT_NE(text.find("val_u32: illegal value string in 'n:unsigned32=-1; '"), std::string::npos) << text;
}

}  // namespace
