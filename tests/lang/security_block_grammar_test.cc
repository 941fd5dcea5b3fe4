// The security blocks of a rule: every form builds a block whose saved
// text reads back to the same block, the words a form takes or only
// registers, and the texts the grammar refuses.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "lang/parsed_configuration.h"
#include "policy/policy.h"
#include "policy/rule.h"

namespace {

// The saved text of each rule, one a line.
std::string Printed(ParsedConfiguration& parsed) {
  std::ostringstream out;
  for (TList_Cell<Entity>* cell = parsed.config.ThePolicy()->Rules().Items().Head(); cell != nullptr;
       cell = cell->Next())
    cell->Data()->Print(out) << '\n';
  return out.str();
}

struct Form {
  const char* name;
  const char* block;   // written between the addresses and ALLOW
  const char* saved;   // the rule's saved text
};

class SecurityBlockFormTest : public testing::TestWithParam<Form> {};

TEST_P(SecurityBlockFormTest, SavedTextReadsBackUnchanged) {
  ParsedConfiguration parsed(std::string("RULE www a b ") + GetParam().block + " ALLOW ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  std::string saved = Printed(parsed);
  EXPECT_EQ(saved, std::string(GetParam().saved) + "\n");
  ParsedConfiguration again(saved + " ;\n");
  ASSERT_EQ(again.result, 0) << again.err;
  EXPECT_EQ(Printed(again), saved);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, SecurityBlockFormTest,
    testing::Values(
        Form{"Skip1", "SKIP_VERSION_1 s d k dt",
             "RULE\t\"www\"  \"a\"  \"b\"  SKIP_VERSION_1  \"s\"  \"d\"  \"k\"  \"dt\"    ALLOW"},
        Form{"Skip2WithEnds", "SKIP_VERSION_2 s d k dt m c SOURCE_TUNNEL t DESTINATION_SCREEN g",
             "RULE\t\"www\"  \"a\"  \"b\"  SKIP_VERSION_2  \"s\"  \"d\"  \"k\"  \"dt\"  \"m\"  \"c\" SOURCE_TUNNEL \"t\" "
             "DESTINATION_SCREEN \"g\"  ALLOW"},
        Form{"ManualBothWaysInTransport", "MANUAL ESP 1000 des KEYS k1 md5 KEYS k2 AH 2000 sha KEYS k3 TRANSPORT SOURCE_SCREEN g",
             "RULE\t\"www\"  \"a\"  \"b\"  MANUAL ESP 1000 \"des\" KEYS \"k1\" \"md5\" KEYS\"k2\" AH 2000 \"sha\" KEYS "
             "\"k3\"  TRANSPORT SOURCE_SCREEN \"g\"  ALLOW"},
        Form{"ManualUnkeyedForwardAndReverse", "MANUAL FORWARD ESP 1 x y REVERSE AH 2 z",
             "RULE\t\"www\"  \"a\"  \"b\"  MANUAL FORWARD ESP 1 \"NONE\" \"NONE\" REVERSE AH 2 \"NONE\"   ALLOW"},
        Form{"ManualReverseOnlyLosesAnUnkeyedAh", "MANUAL REVERSE ESP 5 des KEYS k1 AH 6 z",
             "RULE\t\"www\"  \"a\"  \"b\"  MANUAL REVERSE ESP 5 \"des\" KEYS \"k1\"   ALLOW"},
        Form{"ManualKeyedAuthenticationOnly", "MANUAL ESP 3 x md5 KEYS k2 DESTINATION_SCREEN g",
             "RULE\t\"www\"  \"a\"  \"b\"  MANUAL ESP 3 \"NONE\" \"md5\" KEYS\"k2\"  DESTINATION_SCREEN \"g\"  ALLOW"},
        Form{"ManualKeyedEncryptionWithoutAuthentication", "MANUAL ESP 4 des KEYS k1 y",
             "RULE\t\"www\"  \"a\"  \"b\"  MANUAL ESP 4 \"des\" KEYS \"k1\" \"NONE\"   ALLOW"},
        Form{"IkePreShared", "IKE des md5 \"PRE-SHARED\" k1 \"\" ESP des \"\" AH sha SOURCE_SCREEN g",
             "RULE\t\"www\"  \"a\"  \"b\"  IKE \"des\" \"md5\" 1 \"PRE-SHARED\" \"k1\" \"\" ESP \"des\" \"\" AH \"sha\"  "
             "SOURCE_SCREEN \"g\"  ALLOW"},
        Form{"IkeCertificatesWithGroup", "IKE \"3des\" sha1 2 \"RSA-SIGNATURES\" c1 c2 DESTINATION_TUNNEL t",
             "RULE\t\"www\"  \"a\"  \"b\"  IKE \"3des\" \"sha1\" 2 \"RSA-SIGNATURES\" \"c1\" \"c2\"  DESTINATION_TUNNEL "
             "\"t\"  ALLOW"},
        Form{"DecryptionThenEncryption", "MANUAL AH 1 sha KEYS k3 IKE des md5 \"PRE-SHARED\" k1 \"\" TRANSPORT",
             "RULE\t\"www\"  \"a\"  \"b\"  MANUAL AH 1 \"sha\" KEYS \"k3\"   IKE \"des\" \"md5\" 1 \"PRE-SHARED\" \"k1\" "
             "\"\"  TRANSPORT  ALLOW"}),
    [](const testing::TestParamInfo<Form>& info) { return std::string(info.param.name); });

TEST(SecurityBlockGrammarTest, AlgorithmsAreRegisteredAsTheFormsSay) {
  ParsedConfiguration parsed(
      "RULE www a b SKIP_VERSION_1 s d k1v1 d1v1 ALLOW ;\n"
      "RULE www a b SKIP_VERSION_2 s d k2 d2 m2 c2 ALLOW ;\n"
      "RULE www a b MANUAL ESP 1 x y AH 2 z ALLOW ;\n"
      "RULE www a b MANUAL AH 2 lone ALLOW ;\n"
      "RULE www a b MANUAL ESP 5 des KEYS k1 AH 6 kept ALLOW ;\n"
      "RULE www a b MANUAL ESP 3 unused md5 KEYS k2 ALLOW ;\n"
      "RULE www a b IKE enc hash auth c \"\" ALLOW ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Registry& registry = parsed.registry();
  EXPECT_EQ(Names(registry.AlgorithmKeyV1()), "k1v1 ");
  EXPECT_EQ(Names(registry.AlgorithmDataV1()), "d1v1 ");
  EXPECT_EQ(Names(registry.AlgorithmKeyV2()) + Names(registry.AlgorithmDataV2()) +
                Names(registry.AlgorithmMacV2()) + Names(registry.AlgorithmCompV2()),
            "k2 d2 m2 c2 ");
  EXPECT_EQ(Names(registry.Algorithms()), "NONE des kept unused md5 enc hash auth ");
}

TEST(SecurityBlockGrammarTest, TextsTheFormsRefuse) {
  ExpectSyntaxError("RULE s a b SKIP_VERSION_2 c d k e m n TRANSPORT ALLOW ;", "TRANSPORT");
  ExpectSyntaxError("RULE s a b USER u MANUAL AH 1 z ALLOW ;", "MANUAL");
  ExpectSyntaxError("RULE s a b MANUAL AH 1 z DENY ;", "DENY");
  ExpectSyntaxError("RULE s a b MANUAL AH 1 z MANUAL AH 1 z MANUAL AH 1 z ALLOW ;", "MANUAL");
  ExpectSyntaxError("RULE s a b MANUAL ALLOW ;", "ALLOW");
  ExpectSyntaxError("RULE s a b MANUAL ESP 1 x ALLOW ;", "ALLOW");
  ExpectSyntaxError("RULE s a b MANUAL AH 1 z REVERSE AH 2 z ALLOW ;", "REVERSE");
  ExpectSyntaxError("RULE s a b IKE e h a c ALLOW ;", "ALLOW");
  ExpectSyntaxError("RULE s a b IKE e h a c p ALLOW PROXY_Telnet ;", "PROXY_Telnet");
}

}  // namespace
