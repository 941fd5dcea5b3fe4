// The access and VPN gateway statements: which object each form appends,
// with what, the saved text that reads back to it, the listing line, and
// the texts the grammar refuses.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "crypto/acl_remote_ike.h"
#include "crypto/acl_remote_skip.h"
#include "crypto/vpn_node_ike.h"
#include "lang/parsed_configuration.h"
#include "model/registry.h"
#include "policy/policy.h"

namespace {

// The one entry a statement appended to `list`, which must hold one.
Entity& Only(OrderedEntityList& list) {
  EXPECT_EQ(list.Items().Head(), list.Items().Tail());
  return *list.Items().Head()->Data();
}

struct AccessForm {
  const char* text;
  const char* user;
  Access_Level level;
  int type;            // 0 local, 1 remote
  IPSEC_TYPE ipsec;    // of a remote entry
  bool transport;
};

class AccessFormTest : public testing::TestWithParam<AccessForm> {};

TEST_P(AccessFormTest, AppendsTheEntryOfItsForm) {
  const AccessForm& form = GetParam();
  ParsedConfiguration parsed(form.text);
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Policy& policy = *parsed.config.ThePolicy();
  OrderedEntityList& list = form.type == 0 ? policy.ACLsLocal() : policy.ACLsRemote();
  EXPECT_TRUE((form.type == 0 ? policy.ACLsRemote() : policy.ACLsLocal()).Items().Empty());
  const ACL& entry = static_cast<const ACL&>(Only(list));
  EXPECT_STREQ(entry.Use().Name(), form.user);
  EXPECT_EQ(entry.Access(), form.level);
  EXPECT_EQ(entry.Type(), form.type);
  if (form.type == 0) return;
  const ACLRemote& remote = static_cast<const ACLRemote&>(entry);
  EXPECT_EQ(remote.IPsecType(), form.ipsec);
  EXPECT_EQ(remote.TransportMode(), form.transport);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, AccessFormTest,
    testing::Values(
        AccessForm{"ACCESS alice ;", "alice", ACCESS_NONE, 0, IPSEC_UNKNOWN, false},
        AccessForm{"ACCESS alice STATUS SCREEN gw COMMENT \"desk\" ;", "alice", ACCESS_STATUS, 0, IPSEC_UNKNOWN,
                   false},
        AccessForm{"ACCESS alice READ ;", "alice", ACCESS_READ, 0, IPSEC_UNKNOWN, false},
        AccessForm{"ACCESS alice WRITE ;", "alice", ACCESS_WRITE, 0, IPSEC_UNKNOWN, false},
        AccessForm{"ACCESS alice all ;", "alice", ACCESS_ALL, 0, IPSEC_UNKNOWN, false},
        // Quoted, IKE is a user's name.
        AccessForm{"ACCESS \"IKE\" ALL ;", "IKE", ACCESS_ALL, 0, IPSEC_UNKNOWN, false},
        AccessForm{"ACCESS bob READ desk SKIP_VERSION_1 cert \"DES-CBC\" \"DES-CBC\" TUNNEL gw ;", "bob",
                   ACCESS_READ, 1, IPSEC_SKIP, false},
        AccessForm{"ACCESS bob desk SKIP_VERSION_2 cert \"DES-CBC\" \"DES-CBC\" \"MD5\" \"NONE\" SCREEN gw ;", "bob",
                   ACCESS_NONE, 1, IPSEC_SKIP, false},
        AccessForm{"ACCESS IKE carol ALL desk \"DES\" \"MD5\" 2 \"RSA-SIGNATURES\" cert ESP \"DES\" \"MD5\" AH "
                   "\"MD5\" TUNNEL gw ;",
                   "carol", ACCESS_ALL, 1, IPSEC_IKE, false},
        AccessForm{"ACCESS IKE carol desk \"DES\" \"MD5\" 2 \"RSA-SIGNATURES\" cert TRANSPORT SCREEN gw ;", "carol",
                   ACCESS_NONE, 1, IPSEC_IKE, true}));

struct GatewayForm {
  const char* text;
  const char* vpn;
  IPSEC_TYPE type;
  const char* tunnel;  // null without one
};

class GatewayFormTest : public testing::TestWithParam<GatewayForm> {};

TEST_P(GatewayFormTest, AppendsTheGatewayOfItsForm) {
  const GatewayForm& form = GetParam();
  ParsedConfiguration parsed(form.text);
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  const VPNNode& node = static_cast<const VPNNode&>(Only(parsed.config.ThePolicy()->VPNNodes()));
  EXPECT_STREQ(node.Name(), "VPNGateway");
  EXPECT_STREQ(node.Vpn().Name(), form.vpn);
  EXPECT_STREQ(node.AddressReference().Name(), "lan");
  EXPECT_STREQ(node.CertificateReference().Name(), "cert");
  EXPECT_EQ(node.Type(), form.type);
  if (form.tunnel == nullptr) EXPECT_EQ(node.TunnelReference(), nullptr);
  else EXPECT_STREQ(node.TunnelReference()->Name(), form.tunnel);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, GatewayFormTest,
    testing::Values(
        GatewayForm{"VPNGATEWAY corp lan cert KEYS \"DES-CBC\" DATAS \"DES-CBC\" MACS \"MD5\" COMPRESSIONS \"NONE\" "
                    "TUNNEL gw COMMENT \"skip\" ;",
                    "corp", IPSEC_SKIP, "gw"},
        GatewayForm{"VPNNODE corp lan cert KEYS \"DES-CBC\" DATAS \"DES-CBC\" MACS \"MD5\" COMPRESSIONS \"NONE\" ;",
                    "corp", IPSEC_SKIP, nullptr},
        GatewayForm{"VPNGATEWAY IKE corp lan \"DES\" \"MD5\" 2 \"RSA-SIGNATURES\" cert ESP \"DES\" \"MD5\" TUNNEL gw "
                    "SCREEN peer ;",
                    "corp", IPSEC_IKE, "gw"},
        // The older order: no group, and the screen before the tunnel.
        GatewayForm{"VPNGATEWAY IKE corp lan cert \"RSA-SIGNATURES\" \"DES\" \"MD5\" AH \"MD5\" SCREEN peer TUNNEL gw "
                    "COMMENT \"old\" ;",
                    "corp", IPSEC_IKE, "gw"}));

struct SavedForm {
  const char* name;
  const char* written;
  const char* saved;   // the entry's Print text
  const char* listed;  // its listing line
};

class SavedFormTest : public testing::TestWithParam<SavedForm> {};

// The text of the three lists that the statements fill, in this order.
std::string PolicyText(Policy& policy, std::string (*text)(const OrderedEntityList&)) {
  return text(policy.ACLsLocal()) + text(policy.ACLsRemote()) + text(policy.VPNNodes());
}

TEST_P(SavedFormTest, SavedTextReadsBackUnchanged) {
  const SavedForm& form = GetParam();
  ParsedConfiguration parsed(form.written);
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  std::string saved = PolicyText(*parsed.config.ThePolicy(), PrintedEntries);
  EXPECT_EQ(saved, std::string(form.saved) + "\n");
  EXPECT_EQ(PolicyText(*parsed.config.ThePolicy(), ListedEntries), form.listed);
  ParsedConfiguration again(saved + " ;\n");
  ASSERT_EQ(again.result, 0) << again.err;
  EXPECT_EQ(PolicyText(*again.config.ThePolicy(), PrintedEntries), saved);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, SavedFormTest,
    testing::Values(
        SavedForm{"LocalWithScreenAndComment", "ACCESS alice all SCREEN gw COMMENT \"a \\\"desk\\\"\" ;",
                  "ACCESS \"alice\"\tALL\tSCREEN\t\"gw\"\tCOMMENT\t\"a \\\"desk\\\"\"",
                  "SCREEN \"gw\" USER \"alice\" PERMISSION ALL COMMENT \"a \\\"desk\\\"\"\n"},
        SavedForm{"LocalWithoutLevel", "ACCESS \"IKE\" ;", "ACCESS \"IKE\"\t", "USER \"IKE\" PERMISSION \n"},
        SavedForm{"SkipVersion1WithTunnel", "ACCESS bob READ desk SKIP_VERSION_1 cert k d TUNNEL gw ;",
                  "ACCESS \"bob\"\tREAD \"desk\"\tSKIP_VERSION_1 \"cert\" \"k\" \"d\" TUNNEL \"gw\"",
                  "USER \"bob\" \"desk\" SKIP_VERSION_1 \"cert\" \"k\" \"d\" PERMISSION READ TUNNEL \"gw\"\n"},
        SavedForm{"SkipVersion2", "ACCESS bob desk SKIP_VERSION_2 cert k d m c SCREEN gw COMMENT \"x\" ;",
                  "ACCESS \"bob\"\t \"desk\"\tSKIP_VERSION_2 \"cert\" \"k\" \"d\" \"m\" \"c\""
                  "\tSCREEN\t\"gw\"\tCOMMENT\t\"x\"",
                  "SCREEN \"gw\" USER \"bob\" \"desk\" SKIP_VERSION_2 \"cert\" \"k\" \"d\" \"m\" \"c\" "
                  "PERMISSION  COMMENT \"x\"\n"},
        SavedForm{"IkeTunnel",
                  "ACCESS IKE carol ALL desk DES MD5 2 RSA-SIGNATURES cert ESP DES MD5 AH SHA TUNNEL gw ;",
                  "ACCESS IKE \"carol\" ALL \"desk\" \"DES\" \"MD5\" 2 RSA-SIGNATURES \"cert\" "
                  "ESP \"DES\" \"MD5\" AH \"SHA\"  TUNNEL \"gw\"",
                  "USER \"carol\" \"desk\" IPSEC ESP(\"DES\", \"MD5\") AH(\"SHA\") "
                  "IKE(\"DES\", \"MD5\", 2, RSA-SIGNATURES, \"cert\") TUNNEL \"gw\" PERMISSION ALL\n"},
        SavedForm{"IkeTransportWithoutAuthentication",
                  "ACCESS IKE carol desk DES MD5 2 \"PRE-SHARED\" key ESP DES \"NONE\" TRANSPORT SCREEN gw ;",
                  "ACCESS IKE \"carol\"  \"desk\" \"DES\" \"MD5\" 2 PRE-SHARED \"key\" ESP \"DES\" \"\"  "
                  "TRANSPORT\tSCREEN\t\"gw\"",
                  "SCREEN \"gw\" USER \"carol\" \"desk\" IPSEC ESP(\"DES\") "
                  "IKE(\"DES\", \"MD5\", 2, PRE-SHARED, \"key\") TRANSPORT PERMISSION \n"},
        SavedForm{"SkipGatewayWrittenAsNode",
                  "VPNNODE corp lan cert KEYS k DATAS d MACS m COMPRESSIONS c TUNNEL gw COMMENT \"skip\" ;",
                  "VPNGATEWAY \"corp\" \"lan\" \"cert\" KEYS \"k\" DATAS \"d\" MACS \"m\" COMPRESSIONS \"c\" "
                  "TUNNEL \"gw\" COMMENT\t\"skip\"",
                  "\"corp\" \"lan\" SKIP \"cert\" KEY \"k\" DATA \"d\" MAC \"m\" COMPRESSION \"c\" "
                  "TUNNEL \"gw\" COMMENT \"skip\"\n"},
        SavedForm{"IkeGatewayInTheOlderOrder",
                  "VPNGATEWAY IKE corp lan cert RSA-SIGNATURES DES MD5 ESP DES MD5 AH SHA SCREEN peer TUNNEL gw "
                  "COMMENT \"old\" ;",
                  "VPNGATEWAY IKE \"corp\" \"lan\" \"DES\" \"MD5\" 1 RSA-SIGNATURES \"cert\" "
                  "ESP \"DES\" \"MD5\"  AH \"SHA\"  TUNNEL \"gw\" SCREEN \"peer\" COMMENT\t\"old\"",
                  "\"corp\" \"lan\" IPSEC ESP(\"DES\", \"MD5\")  AH(\"SHA\")  IKE(\"DES\", \"MD5\", 1, RSA-SIGNATURES, "
                  "\"cert\") SCREEN \"peer\" TUNNEL \"gw\" COMMENT \"old\"\n"},
        SavedForm{"IkeGatewayPlain", "VPNGATEWAY IKE corp lan DES MD5 2 RSA-SIGNATURES cert ;",
                  "VPNGATEWAY IKE \"corp\" \"lan\" \"DES\" \"MD5\" 2 RSA-SIGNATURES \"cert\"",
                  "\"corp\" \"lan\" IPSEC IKE(\"DES\", \"MD5\", 2, RSA-SIGNATURES, \"cert\")\n"}),
    [](const testing::TestParamInfo<SavedForm>& info) { return std::string(info.param.name); });

// Entries made without some values, which no statement leaves out, write
// "NONE" there, and that text reads back.
TEST(AccessVpnGrammarTest, MissingValuesAreSavedAsNone) {
  const char* algorithms[4] = {"k", "d", nullptr, nullptr};
  ACLRemoteSkip entry("bob", ACCESS_READ, "desk", SKIP_V2, "cert", algorithms, nullptr, nullptr, nullptr);
  VPNNodeIKE gateway(nullptr, "lan", {nullptr, nullptr, 1, nullptr}, "cert", nullptr, nullptr, nullptr, nullptr,
                     nullptr);
  std::ostringstream statements;
  statements << entry << gateway;
  ParsedConfiguration again(statements.str());
  ASSERT_EQ(again.result, 0) << again.err;
  EXPECT_EQ(PolicyText(*again.config.ThePolicy(), PrintedEntries),
            "ACCESS \"bob\"\tREAD \"desk\"\tSKIP_VERSION_2 \"cert\" \"k\" \"d\" \"NONE\" \"NONE\"\n"
            "VPNGATEWAY IKE \"*\" \"lan\" \"NONE\" \"NONE\" 1 NONE \"cert\"\n");
}

// A search for what refers to a name lists each entry by its position,
// its list and its listing line.
TEST(AccessVpnGrammarTest, ReferencesAreListedWithTheEntriesListingLines) {
  ParsedConfiguration parsed(
      "ACCESS alice READ SCREEN gw ;\n"
      "ACCESS bob desk SKIP_VERSION_1 cert k d SCREEN other ;\n"
      "ACCESS IKE carol WRITE desk DES MD5 2 RSA-SIGNATURES cert TRANSPORT SCREEN gw ;\n"
      "VPNGATEWAY IKE corp lan DES MD5 2 RSA-SIGNATURES cert SCREEN gw ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  testing::internal::CaptureStdout();
  EXPECT_EQ(parsed.config.ThePolicy()->IsReferenced(CO_SCREEN, "gw", 1), 3);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "1\tACLLocal\tSCREEN \"gw\" USER \"alice\" PERMISSION READ\n"
            "2\tACLRemote\tSCREEN \"gw\" USER \"carol\" \"desk\" "
            "IPSEC IKE(\"DES\", \"MD5\", 2, RSA-SIGNATURES, \"cert\") TRANSPORT PERMISSION WRITE\n"
            "1\tVPNGateway\t\"corp\" \"lan\" IPSEC IKE(\"DES\", \"MD5\", 2, RSA-SIGNATURES, \"cert\") SCREEN \"gw\"\n");
}

TEST(AccessVpnGrammarTest, RefusesWhatNoFormTakes) {
  // An unquoted IKE starts the IKE form, which needs its addresses.
  ExpectSyntaxError("ACCESS IKE ALL ;", "ALL");
  ExpectSyntaxError("ACCESS bob desk MANUAL ;", "MANUAL");
  ExpectSyntaxError("ACCESS IKE carol desk \"DES\" \"MD5\" 2 \"RSA-SIGNATURES\" cert TRANSPORT TUNNEL gw ;", "TUNNEL");
  // A SKIP gateway has no screen clause.
  ExpectSyntaxError("VPNGATEWAY corp lan cert KEYS a DATAS b MACS c COMPRESSIONS d SCREEN gw ;", "SCREEN");
  // The older IKE order puts the screen clause first.
  ExpectSyntaxError("VPNGATEWAY IKE corp lan cert \"RSA\" \"DES\" \"MD5\" TUNNEL gw SCREEN peer ;", "SCREEN");
}

}  // namespace
