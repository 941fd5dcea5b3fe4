// The statements that fill the registry: what each builds, where it is
// stored, and which token the first syntax error names (for every kind of
// statement).
#include <gtest/gtest.h>

#include <sstream>

#include "crypto/certificate_list.h"
#include "lang/parsed_configuration.h"
#include "model/address_list.h"
#include "model/time.h"

namespace {

TEST(RegistryGrammarTest, SingleAddressesKeepTheirValueAndClauses) {
  ParsedConfiguration parsed(
      "host ADDRESS 10.0.0.1 ;\n"
      "\"net\" ADDRESS 10.1.2.3/16 SCREEN gate COMMENT \"lab net\" ;\n"
      "span ADDRESS 10.0.0.9 - 10.0.0.1 ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(parsed.Find<Address>(parsed.registry().Addresses(), "host")->Type(), ADDRESS_SINGLE);
  Address* net = parsed.Find<Address>(parsed.registry().Addresses(), "net", "gate");
  ASSERT_NE(net, nullptr);
  EXPECT_STREQ(net->Description(), "lab net");
  EXPECT_EQ(net->Ranges().Head()->Data()->Style(), RS_PREFIX);
  EXPECT_EQ(net->Ranges().Head()->Data()->End(), 0x0A01FFFFu);
  Address* span = parsed.Find<Address>(parsed.registry().Addresses(), "span");
  EXPECT_EQ(span->Ranges().Head()->Data()->Start(), 0x0A000001u);
  EXPECT_EQ(span->Ranges().Head()->Data()->End(), 0x0A000009u);
}

TEST(RegistryGrammarTest, GroupsKeepIncludesAndExcludesInTextOrder) {
  ParsedConfiguration parsed("g ADDRESS a ! b c ! \"d e\" ;\nempty ADDRESS ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  AddressList* group = parsed.Find<AddressList>(parsed.registry().Addresses(), "g");
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(Names(group->IncludeNames()), "a c ");
  EXPECT_EQ(Names(group->ExcludeNames()), "b d e ");
  EXPECT_NE(parsed.Find<AddressList>(parsed.registry().Addresses(), "empty"), nullptr);
}

TEST(RegistryGrammarTest, FirstDefinitionWinsAndScreensMakeTwoObjects) {
  ParsedConfiguration parsed(
      "a ADDRESS 1.1.1.1 ;\na ADDRESS 2.2.2.2 ;\na ADDRESS 3.3.3.3 SCREEN s1 ;\na ADDRESS 4.4.4.4 SCREEN s2 ;\n");
  ASSERT_EQ(parsed.result, 0);
  EXPECT_EQ(parsed.err, "");
  // The built-ins come first.
  EXPECT_EQ(Names(parsed.registry().Addresses()), "* localhost a a a ");
  Address* first = parsed.Find<Address>(parsed.registry().Addresses(), "a");
  EXPECT_EQ(first->Ranges().Head()->Data()->Start(), 0x01010101u);
}

TEST(RegistryGrammarTest, TimesBuildDaysWithMergedHours) {
  ParsedConfiguration parsed(
      "office TIME MONDAY 8 0 9 0 8 30 10 7 FRIDAY EVERYDAY 0 0 1 0 SCREEN gate COMMENT \"work\" ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Time* time = parsed.Find<Time>(parsed.registry().Times(), "office", "gate");
  ASSERT_NE(time, nullptr);
  ASSERT_EQ(time->Days().Length(), 3);
  const DayOfWeek& monday = *time->Days().Head()->Data();
  EXPECT_EQ(monday.Day(), MONDAY);
  std::ostringstream hours;
  monday.Enumerate(hours);
  EXPECT_EQ(hours.str(), "MONDAY { 08:00 10:05 }");
  EXPECT_EQ(time->Days().Head()->Next()->Data()->Times().Length(), 0);
  EXPECT_EQ(time->Days().Tail()->Data()->Day(), EVERYDAY);
}

TEST(RegistryGrammarTest, CertificatesAndKeysGoToTheirLists) {
  ParsedConfiguration parsed(
      "skipcert CERTIFICATE NSID 1 MKID \"10.0.0.1\" G 2 P 3 KEY_LENGTH 1024 MASTER gate ;\n"
      "ikecert CERTIFICATE IKE \"CN=gate\" COMMENT \"ours\" ;\n"
      "ignored CERTIFICATE IKE 5 ;\n"
      "manual CERTIFICATE MANUAL \"0x1234\" ;\n"
      "key KEY \"0x99\" SCREEN gate ;\n"
      "group CERTIFICATE ikecert ! skipcert ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(Names(parsed.registry().Certificates()), "skipcert ikecert group ");
  EXPECT_EQ(Names(parsed.registry().Keys()), "manual key ");
  EXPECT_EQ(parsed.Find<Certificate>(parsed.registry().Keys(), "manual")->IPsecType(), IPSEC_MANUAL);
  CertificateList* group = parsed.Find<CertificateList>(parsed.registry().Certificates(), "group");
  EXPECT_EQ(Names(group->Includes()), "ikecert ");
  EXPECT_EQ(Names(group->Excludes()), "skipcert ");
  EXPECT_EQ(parsed.registry().IKEInUse(), 1);
}

TEST(RegistryGrammarTest, SpecialCertificateNamesSetTheirMarks) {
  ParsedConfiguration parsed(
      "\"IKE root CA certificates\" CERTIFICATE a ;\n"
      "\"IKE manually verified certificates\" CERTIFICATE NSID 1 MKID x ;\n");
  ASSERT_EQ(parsed.result, 0);
  EXPECT_EQ(parsed.registry().IKERootCertificates(), 1);
  EXPECT_EQ(parsed.registry().IKETrustedCertificates(), 0);
  EXPECT_EQ(parsed.err, "");
}

TEST(RegistryGrammarTest, AlienLinesAreKeptInOrder) {
  ParsedConfiguration parsed("@first line\na ADDRESS ;\n@ second\n");
  ASSERT_EQ(parsed.result, 0);
  ASSERT_EQ(parsed.registry().AlienData().Length(), 2);
  EXPECT_STREQ(parsed.registry().AlienData().Head()->Data(), "first line");
  EXPECT_STREQ(parsed.registry().AlienData().Tail()->Data(), " second");
}

TEST(RegistryGrammarTest, SyntaxErrorsNameTheFirstWrongToken) {
  ExpectSyntaxError("a ADDRESS 1.1.1.1 2.2.2.2 ;", "2.2.2.2");
  ExpectSyntaxError("a ADDRESS b COMMENT x SCREEN s ;", "SCREEN");
  ExpectSyntaxError("a ADDRESS b ;;", ";");
  ExpectSyntaxError("a ADDRESS ! ;", ";");
  ExpectSyntaxError("a ADDRESS b ADDRESS ;", "ADDRESS");
  ExpectSyntaxError("a ADDRESS b", "");
  ExpectSyntaxError("a ADDRESS \"b\" \"c ;", "\"");
  ExpectSyntaxError("t TIME MONDAY 8 0 9 TUESDAY ;", "TUESDAY");
  ExpectSyntaxError("t TIME 8 0 9 0 ;", "8");
  ExpectSyntaxError("c CERTIFICATE NSID 1 ;", ";");
  ExpectSyntaxError("c CERTIFICATE NSID 1 MKID x P 1 G 2 ;", "G");
  ExpectSyntaxError("; a ADDRESS ;", ";");
  ExpectSyntaxError("  @indented\n", "@");
  ExpectSyntaxError("a NETMASK ;", "NETMASK");
  ExpectSyntaxError("e STATE_ENGINE i l 1 2 3 4 ;", "1");
  ExpectSyntaxError("e STATE_ENGINE SCREEN s ;", "SCREEN");
  ExpectSyntaxError("i INTERFACE ADMIN a LOG ;", ";");
  ExpectSyntaxError("i INTERFACE ADMIN a LOG NONE ;", "NONE");
  ExpectSyntaxError("i INTERFACE ADMIN a SNMP LOG_DETAIL ;", "LOG_DETAIL");
  ExpectSyntaxError("i INTERFACE ADMIN a COMPLETE ;", "COMPLETE");
  ExpectSyntaxError("i INTERFACE DISABLED a LOG_DETAIL ;", "LOG_DETAIL");
  ExpectSyntaxError("i INTERFACE ROUTING a ;", "ROUTING");
  ExpectSyntaxError("s SCREEN DNS ROUTING ;", "ROUTING");
  ExpectSyntaxError("s SCREEN SCREEN x ;", "SCREEN");
  ExpectSyntaxError("s SCREEN COMMENT c 10.0.0.1 ;", "10.0.0.1");
  ExpectSyntaxError("s SCREEN 10.0.0.1 HA_ADMIN_IP 10.0.0.2 ;", "HA_ADMIN_IP");
  ExpectSyntaxError("s SCREEN HA_ADMIN_IP x ;", "x");
}

// Each field refuses, by name, the first number it can't hold.
TEST(RegistryGrammarTest, NumbersOutOfRangeAreNamed) {
  const struct {
    const char* text;
    const char* token;
  } cases[] = {
      {"t TIME MONDAY 35791395 0 0 0 ;", "35791395"},
      {"t TIME MONDAY 7 2147483647 0 0 ;", "2147483647"},
      {"t TIME MONDAY 8 60 9 0 ;", "60"},
      {"t TIME MONDAY 8 0 24 5 ;", "5"},
      {"t TIME MONDAY -1 0 9 0 ;", "-1"},
      {"POLICY_VERSION 2147483647", "2147483647"},
      {"REGISTRY_VERSION 99999999999", "99999999999"},
  };
  for (const auto& c : cases) ExpectSyntaxError(c.text, c.token, "number out of range");
  ParsedConfiguration edges("t TIME EVERYDAY 0 0 24 0 ; POLICY_VERSION 2147483646");
  EXPECT_EQ(edges.result, 0) << edges.err;
}

TEST(RegistryGrammarTest, ObjectsBeforeTheErrorStay) {
  ParsedConfiguration parsed("a ADDRESS 1.1.1.1 ; b ADDRESS 2.2.2.2 3 ; c ADDRESS 3.3.3.3 ;");
  EXPECT_EQ(parsed.result, 1);
  EXPECT_EQ(Names(parsed.registry().Addresses()), "* localhost a ");
}

}  // namespace
