// The three kinds of security blocks, resolved against small lists: which
// end the screen is, what the reverse flow's block looks like, the tails
// of the action lines and the conflicts of manual indexes.
#include "crypto/security_parameters.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/certificate_list.h"
#include "crypto/ike_identity.h"
#include "crypto/ipsec_man_parameters.h"
#include "crypto/security_parameters_ike.h"
#include "crypto/security_parameters_man.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"
#include "screen/ferrowall.h"
#include "support/host_description.h"

namespace {

using Block = std::unique_ptr<SecurityParameters>;

const SecurityEnds kNoEnds = {nullptr, nullptr, nullptr, nullptr, false};

class SecurityParametersTest : public testing::Test {
 protected:
  void SetUp() override {
    auto host = std::make_unique<HostDescription>();
    std::string error;
    ASSERT_TRUE(host->Parse("skip-local-key 1 0a020001\nike-local-id CN=gw\n", "host", &error)) << error;
    Host::Use(std::move(host));
    screens_.Append(*gw_);
    screens_.Append(*new Ferrowall("peer"));
    addresses_.Append(*new Address("t1", 0xC0000201u, nullptr, nullptr));
    addresses_.Append(*new Address("t2", 0xC0000202u, nullptr, nullptr));
    for (auto [name, mkid] : {std::pair{"gw skip", "10.2.0.1"}, std::pair{"peer skip", "192.0.2.1"}})
      certificates_.Append(*new Certificate(name, IPSEC_SKIP, 1, mkid, nullptr, nullptr, nullptr));
    certificates_.Append(*new CertificateList("peers", IPSEC_SKIP, nullptr, nullptr, nullptr, nullptr));
    for (auto [name, identity] : {std::pair{"gw ike", "CN=gw"}, std::pair{"peer ike", "CN=peer"}})
      certificates_.Append(*new Certificate(name, IPSEC_IKE, 0, identity, nullptr, nullptr, nullptr));
    for (auto [name, text] : {std::pair{"k1", "one"}, std::pair{"k2", "two"}})
      keys_.Append(*new Certificate(name, IPSEC_MANUAL, 0, text, nullptr, nullptr, nullptr));
    AddSkipAlgorithm(key_v2_, "DES-CBC", ALG_KEY);
    AddSkipAlgorithm(data_v2_, "DES-CBC", ALG_DATA);
    AddSkipAlgorithm(mac_v2_, "MD5", ALG_MAC);
    AddSkipAlgorithm(comp_v2_, "NONE", ALG_COMPRESSION);
    AddSkipAlgorithm(comp_v2_, "LZS", ALG_COMPRESSION);
    for (const char* name : {"DES", "MD5", "SHA1", "PRE-SHARED", "RSA-SIGNATURES"}) {
      Algorithm* algorithm = new Algorithm(name);
      algorithm->GetValue();
      algorithms_.Append(*algorithm);
    }
  }
  void TearDown() override {
    Host::Use(nullptr);
    for (TList<Entity>* list : {&screens_, &addresses_, &certificates_, &keys_, &key_v2_, &data_v2_, &mac_v2_,
                                &comp_v2_, &algorithms_})
      list->Delete_Data();
  }

  void AddSkipAlgorithm(TList<Entity>& list, const char* name, screen_alg_type type) {
    Algorithm* algorithm = new Algorithm(name, type, SKIP_V2);
    algorithm->GetValue();
    list.Append(*algorithm);
  }

  // The block with every name linked, as the policy's passes leave it.
  Block Resolved(SecurityParameters* block) {
    const char* name = nullptr;
    for (auto [kind, list] : {std::pair{CO_SCREEN, &screens_}, std::pair{CO_ADDRESS, &addresses_},
                              std::pair{CO_CERTIFICATE, &certificates_}, std::pair{CO_KEY, &keys_},
                              std::pair{CO_ALGORITHM, &algorithms_}})
      EXPECT_EQ(block->Resolve(kind, *list, &name), RESOLVE_OK) << name;
    for (auto [kind, list] : {std::pair{CO_ALG_KEY, &key_v2_}, std::pair{CO_ALG_DATA, &data_v2_},
                              std::pair{CO_ALG_MAC, &mac_v2_}, std::pair{CO_ALG_COMP, &comp_v2_}})
      EXPECT_EQ(block->ResolveSKIPAlgorithms(kind, *list, SKIP_V2, &name), RESOLVE_OK) << name;
    return Block(block);
  }

  Block Skip(const char* source, const char* destination, const char* mac = "MD5", const char* compression = "NONE",
             const SecurityEnds& ends = kNoEnds) {
    return Resolved(new SkipParameter(SKIP_V2, {source, destination, "DES-CBC", "DES-CBC", mac, compression}, ends));
  }
  Block Ike(const char* method, const char* certificate, const char* peer, const SecurityEnds& ends) {
    return Resolved(new SecurityParametersIKE({"DES", "MD5", 1, method, certificate, peer}, nullptr, nullptr, ends));
  }
  Block Manual(IPsecManParameters* forward, IPsecManParameters* reverse, const SecurityEnds& ends) {
    return Resolved(new SecurityParametersMan(forward, reverse, ends));
  }
  static IPsecManParameters* Esp(uint32_t spi, const char* key) {
    return new IPsecManParameters(spi, 0, {"DES", nullptr, nullptr, key, nullptr, nullptr});
  }

  static std::string Tail(SecurityParameters& block, SecurityParameters* other, unsigned label = 0) {
    std::ostringstream out;
    block.GenerateOutput(out, other, label);
    return out.str();
  }

  Ferrowall* gw_ = new Ferrowall("gw");
  TList<Entity> screens_, addresses_, certificates_, keys_, key_v2_, data_v2_, mac_v2_, comp_v2_, algorithms_;
};

struct SkipCase {
  const char* source;
  const char* destination;
  const char* mac;
  const char* compression;
  Security_Direction expected;
};

TEST_F(SecurityParametersTest, SkipDirectionComesFromTheLocalCertificate) {
  const SkipCase cases[] = {
      {"gw skip", "peer skip", "MD5", "NONE", DIRECTION_ENCRYPT},
      {"peer skip", "gw skip", "MD5", "NONE", DIRECTION_DECRYPT},
      {"gw skip", "gw skip", "MD5", "NONE", DIRECTION_UNDECIDED},
      {"peer skip", "peer skip", "MD5", "NONE", DIRECTION_UNDECIDED},
      // Only the decrypting end may name a group.
      {"peers", "gw skip", "MD5", "NONE", DIRECTION_DECRYPT},
      {"gw skip", "peers", "MD5", "NONE", DIRECTION_UNDECIDED},
      // Version 2 needs a MAC and no compression.
      {"gw skip", "peer skip", nullptr, "NONE", DIRECTION_UNDECIDED},
      {"gw skip", "peer skip", "MD5", "LZS", DIRECTION_UNDECIDED},
  };
  for (const SkipCase& c : cases) {
    Block block = Skip(c.source, c.destination, c.mac, c.compression);
    EXPECT_EQ(block->SetDirection(*gw_), c.expected) << c.source << " " << c.destination;
    EXPECT_EQ(block->Direction(), c.expected);
  }
}

struct IkeCase {
  const char* method;
  const char* certificate;
  const char* peer;
  const char* source_screen;
  const char* destination_screen;
  Security_Direction expected;
};

TEST_F(SecurityParametersTest, IkeDirectionComesFromScreensThenLocality) {
  const IkeCase cases[] = {
      {"PRE-SHARED", "k1", nullptr, "gw", nullptr, DIRECTION_ENCRYPT},
      {"PRE-SHARED", "k1", nullptr, nullptr, "gw", DIRECTION_DECRYPT},
      {"PRE-SHARED", "k1", nullptr, "peer", nullptr, DIRECTION_DECRYPT},
      {"PRE-SHARED", "k1", nullptr, "gw", "gw", DIRECTION_UNDECIDED},
      {"PRE-SHARED", "k1", nullptr, nullptr, nullptr, DIRECTION_UNDECIDED},
      {"RSA-SIGNATURES", "gw ike", "peer ike", nullptr, nullptr, DIRECTION_ENCRYPT},
      {"RSA-SIGNATURES", "peer ike", "gw ike", nullptr, nullptr, DIRECTION_DECRYPT},
      {"RSA-SIGNATURES", "gw ike", "gw ike", nullptr, nullptr, DIRECTION_UNDECIDED},
      {"RSA-SIGNATURES", "peer ike", "peer ike", nullptr, nullptr, DIRECTION_UNDECIDED},
      {"RSA-SIGNATURES", "gw ike", "peer ike", "gw", "peer", DIRECTION_ENCRYPT},
      {"RSA-SIGNATURES", "peer ike", "gw ike", "gw", nullptr, DIRECTION_UNDECIDED},
      {"RSA-SIGNATURES", "peer ike", "gw ike", nullptr, "gw", DIRECTION_DECRYPT},
      {"RSA-SIGNATURES", "gw ike", "gw ike", "peer", "peer", DIRECTION_UNDECIDED},
  };
  for (const IkeCase& c : cases) {
    Block block = Ike(c.method, c.certificate, c.peer, {nullptr, nullptr, c.source_screen, c.destination_screen, false});
    EXPECT_EQ(block->SetDirection(*gw_), c.expected)
        << c.certificate << " " << (c.source_screen ? c.source_screen : "-") << " "
        << (c.destination_screen ? c.destination_screen : "-");
  }
}

TEST_F(SecurityParametersTest, ManualDirectionComesFromTheScreensAlone) {
  const struct {
    const char* source_screen;
    const char* destination_screen;
    Security_Direction expected;
  } cases[] = {{"gw", "peer", DIRECTION_ENCRYPT},
               {"peer", "gw", DIRECTION_DECRYPT},
               {"gw", "gw", DIRECTION_UNDECIDED},
               {nullptr, "peer", DIRECTION_UNDECIDED}};
  for (const auto& c : cases) {
    Block block = Manual(Esp(1, "k1"), nullptr, {nullptr, nullptr, c.source_screen, c.destination_screen, false});
    EXPECT_EQ(block->SetDirection(*gw_), c.expected);
  }
}

// The reverse flow's block: each kind swaps the roles, the tunnels, the
// screens and what belongs to one end.
TEST_F(SecurityParametersTest, ReversedBlocksSwapTheirEnds) {
  const SecurityEnds ends = {"t1", "t2", "gw", "peer", false};
  Block skip = Skip("gw skip", "peer skip", "MD5", "NONE", ends);
  Block ike = Ike("RSA-SIGNATURES", "gw ike", "peer ike", ends);
  Block pre_shared = Ike("PRE-SHARED", "k1", nullptr, ends);
  IPsecManParameters* forward = Esp(1, "k1");
  Block manual = Manual(forward, nullptr, ends);
  for (SecurityParameters* block : {skip.get(), ike.get(), pre_shared.get(), manual.get()}) {
    block->SetDirection(*gw_);
    ASSERT_EQ(block->Direction(), DIRECTION_ENCRYPT);
    Block reversed(SecurityParameters::Reversed(block));
    EXPECT_EQ(reversed->Direction(), DIRECTION_DECRYPT);
    EXPECT_STREQ(reversed->SourceTunnel()->Name(), "t2");
    EXPECT_STREQ(reversed->DestinationTunnelResolved()->Name(), "t1");
    EXPECT_STREQ(reversed->SourceScreen()->Name(), "peer");
    EXPECT_STREQ(reversed->DestinationFerrowallResolved()->Name(), "gw");
    EXPECT_EQ(block->Direction(), DIRECTION_ENCRYPT) << "the original stays as it was";
  }
  Block skip_back(SecurityParameters::Reversed(skip.get()));
  EXPECT_STREQ(static_cast<SkipParameter&>(*skip_back).SourceCertificateResolved()->Name(), "peer skip");
  Block ike_back(SecurityParameters::Reversed(ike.get()));
  EXPECT_STREQ(static_cast<SecurityParametersIKE&>(*ike_back).SourceCertificateResolved()->Name(), "peer ike");
  Block key_back(SecurityParameters::Reversed(pre_shared.get()));
  EXPECT_STREQ(static_cast<SecurityParametersIKE&>(*key_back).SourceCertificateResolved()->Name(), "k1");
  Block manual_back(SecurityParameters::Reversed(manual.get()));
  EXPECT_EQ(static_cast<SecurityParametersMan&>(*manual_back).Forward(), nullptr);
  EXPECT_EQ(static_cast<SecurityParametersMan&>(*manual_back).Reverse()->EspSpi(), 1u);
  EXPECT_EQ(SecurityParameters::Reversed(nullptr), nullptr);
}

TEST_F(SecurityParametersTest, OnlySkipAndIkeEndsCanBeGroups) {
  EXPECT_TRUE(Skip("peers", "gw skip")->UsesCertificateGroup());
  EXPECT_FALSE(Skip("peer skip", "gw skip")->UsesCertificateGroup());
  EXPECT_FALSE(Ike("PRE-SHARED", "k1", nullptr, kNoEnds)->UsesCertificateGroup());
  EXPECT_FALSE(Manual(Esp(1, "k1"), nullptr, kNoEnds)->UsesCertificateGroup());
}

TEST_F(SecurityParametersTest, SkipTailPutsTheDecryptingHalfFirst) {
  const std::string kEmptyHalf = "0\t\"NONE\"\t0\t\"0\"\t\"NONE\"\t0\t\"0\"\t0\t0\t0\t0\t\"NONE\"\t\"NONE\"\t";
  const std::string kEncryptingHalf =
      "2\t \"gw skip\"  1 \"10.2.0.1\" \t \"peer skip\"  1 \"192.0.2.1\" \t1\t1\t1\t0\t\"NONE\"\t\"NONE\"\t";
  Block encrypting = Skip("gw skip", "peer skip");
  encrypting->SetDirection(*gw_);
  EXPECT_EQ(Tail(*encrypting, nullptr), "SKIP\t" + kEmptyHalf + kEncryptingHalf);
  Block decrypting = Skip("peer skip", "gw skip");
  decrypting->SetDirection(*gw_);
  EXPECT_EQ(Tail(*decrypting, encrypting.get()),
            "SKIP\t2\t \"peer skip\"  1 \"192.0.2.1\" \t \"gw skip\"  1 \"10.2.0.1\" \t1\t1\t1\t0\t\"NONE\"\t\"NONE\"\t" +
                kEncryptingHalf);
}

TEST_F(SecurityParametersTest, ManualTailWithOneFlowAndTransport) {
  Block block = Manual(Esp(4096, "k1"), nullptr, {nullptr, nullptr, "peer", "gw", true});
  block->SetDirection(*gw_);
  EXPECT_EQ(Tail(*block, nullptr), "IPSEC\t1 2 0 0 4096 0 \"k1\" \"NONE\" \"NONE\" 0 0 0 0 0 \"NONE\" \"NONE\" \"NONE\" \tTRANSPORT\t");
  std::ostringstream keys;
  block->DumpKeys(keys);
  block->DumpKeys(keys);
  EXPECT_EQ(keys.str(), "IPSEC  \"k1\"  \"one\" \n") << "a key is written once until the marks are cleared";
}

TEST_F(SecurityParametersTest, IkeTailEndsWithTheLabel) {
  Block block = Ike("PRE-SHARED", "k1", nullptr, {nullptr, "t2", "gw", nullptr, false});
  block->SetDirection(*gw_);
  EXPECT_EQ(Tail(*block, nullptr, 5), "IKE\t0 1 2 2 \"k1\" \"None\" 0 0 0 \t\"NONE\"\t\"addr_" +
                                           std::to_string(block->DestinationTunnelResolved()->UniqueID()) + "\"\t5 ");
  std::ostringstream xform;
  static_cast<SecurityParametersIKE&>(*block).GenerateIKEXform(xform);
  EXPECT_EQ(xform.str(), "p1_xform {  auth_method preshared oakley_group 1 auth_alg md5 encr_alg des-cbc  }");
}

TEST_F(SecurityParametersTest, ManualIndexesConflictOnlyWithOtherMaterial) {
  Block mine = Manual(Esp(7, "k1"), nullptr, kNoEnds);
  EXPECT_EQ(mine->Conflicts(*Manual(Esp(7, "k2"), nullptr, kNoEnds)), 1);
  EXPECT_EQ(mine->Conflicts(*Manual(Esp(7, "k1"), nullptr, kNoEnds)), 0);
  EXPECT_EQ(mine->Conflicts(*Manual(Esp(8, "k2"), nullptr, kNoEnds)), 0);
  EXPECT_EQ(mine->Conflicts(*Manual(nullptr, Esp(7, "k2"), kNoEnds)), 0) << "only forward flows are compared";
  EXPECT_EQ(mine->Conflicts(*Skip("gw skip", "peer skip")), 0);
  Block unkeyed_index = Manual(Esp(0, "k1"), nullptr, kNoEnds);
  EXPECT_EQ(unkeyed_index->Conflicts(*Manual(Esp(0, "k2"), nullptr, kNoEnds)), 0) << "index 0 is no index";
}

TEST(EscapismTest, BackslashesKeepTheCharacterBehind) {
  EXPECT_EQ(Escapism("CN=a\\,b"), "CN=a,b");
  EXPECT_EQ(Escapism("a\\\\b"), "a\\b");
  EXPECT_EQ(Escapism("end\\"), "end");
  EXPECT_EQ(Escapism(""), "");
}

}  // namespace
