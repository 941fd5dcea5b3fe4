#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <string>

#include "support/host_description.h"
#include "support/linux_host.h"

namespace {

uint32_t Ip(const char* text) { return inet_addr(text); }

class HostDescriptionTest : public testing::Test {
 protected:
  bool Parse(const std::string& text) { return host.Parse(text, "site.host", &error); }
  HostDescription host;
  std::string error;
};

TEST_F(HostDescriptionTest, InterfacesWithLogicalUnitsInTheirOrder) {
  ASSERT_TRUE(Parse("# a screen\n\ninterface qfe0 10.0.0.1/24   # first\n"
                    "interface qfe1\n"
                    "interface qfe0:1 10.0.1.1/16 127.0.0.2/8\n"));
  EXPECT_TRUE(host.InterfaceExists("qfe0"));
  EXPECT_TRUE(host.InterfaceExists("qfe0:1"));
  EXPECT_TRUE(host.InterfaceExists("qfe0:7"));
  EXPECT_TRUE(host.InterfaceExists("qfe1"));
  EXPECT_FALSE(host.InterfaceExists("qfe2"));
  std::vector<HostAddress> addresses = host.InterfaceAddresses("qfe0");
  ASSERT_EQ(addresses.size(), 2u);
  EXPECT_EQ(addresses[0].address, Ip("10.0.0.1"));
  EXPECT_EQ(addresses[0].netmask, Ip("255.255.255.0"));
  EXPECT_EQ(addresses[1].address, Ip("10.0.1.1"));
  EXPECT_EQ(addresses[1].netmask, Ip("255.255.0.0"));
  EXPECT_TRUE(host.InterfaceAddresses("qfe1").empty());
}

TEST_F(HostDescriptionTest, NamesThatCantBeDevicesNeverExist) {
  ASSERT_TRUE(Parse("interface le0\n"));
  for (const char* name : {"", ".", "..", "a/b", "le0.1"}) EXPECT_FALSE(host.InterfaceExists(name)) << name;
  EXPECT_FALSE(Parse("interface ../etc\n"));
  EXPECT_EQ(error, "site.host:1: \"../etc\" can't be a device name");
}

TEST_F(HostDescriptionTest, EveryOtherStatement) {
  ASSERT_TRUE(Parse("release 8\nwide\nskip-local-key 1 0a0B\n"
                    "ike-local-id C=DE, O=Site, CN=gate  # the screen's own\n"
                    "ipsec-unavailable AES\nskip-unavailable RC4-40\n"));
  EXPECT_EQ(host.Release(), 8);
  EXPECT_TRUE(host.Wide());
  EXPECT_EQ(host.SkipLocalKeys(1), (std::vector<std::vector<unsigned char>>{{0x0a, 0x0b}}));
  EXPECT_TRUE(host.SkipLocalKeys(2).empty());
  EXPECT_TRUE(host.IpsecUnavailable("AES"));
  EXPECT_TRUE(host.SkipUnavailable("RC4-40"));
}

// Every byte that separates words also trims the identity.
TEST_F(HostDescriptionTest, IdentityBehindAnyWhiteSpace) {
  ASSERT_TRUE(Parse("\fike-local-id CN=gate\n\vike-local-id\tCN=peer \f\n"));
  EXPECT_EQ(host.LocalIdentity({"CN=gate"}, {}), 1);
  EXPECT_EQ(host.LocalIdentity({"CN=peer"}, {}), 1);
}

TEST_F(HostDescriptionTest, MalformedLinesNameTheirNumber) {
  struct Case {
    const char* text;
    const char* error;
  };
  const Case cases[] = {
      {"\ninterface\n", "site.host:2: \"interface\" needs a device name"},
      {"interface e0 10.0.0.1\n", "site.host:1: \"10.0.0.1\" isn't an address A.B.C.D/N"},
      {"interface e0 10.0.0.1/33\n", "site.host:1: \"10.0.0.1/33\" isn't an address A.B.C.D/N"},
      {"interface e0 10.0.0.256/8\n", "site.host:1: \"10.0.0.256/8\" isn't an address A.B.C.D/N"},
      {"release eight\n", "site.host:1: \"release\" needs a number"},
      {"wide open\n", "site.host:1: \"wide\" takes no words"},
      {"skip-local-key 1 abc\n", "site.host:1: \"skip-local-key\" needs a name space id and a key id in hexadecimal"},
      {"ike-local-id   # nothing\n", "site.host:1: \"ike-local-id\" needs an identity"},
      {"ipsec-unavailable\n", "site.host:1: \"ipsec-unavailable\" takes one word"},
      {"# ok\nroute 1\n", "site.host:2: unknown statement \"route\""},
  };
  for (const Case& c : cases) {
    HostDescription fresh;
    EXPECT_FALSE(fresh.Parse(c.text, "site.host", &error)) << c.text;
    EXPECT_EQ(error, c.error);
  }
}

TEST(LinuxHostTest, ReleaseTextRule) {
  EXPECT_EQ(LinuxHost::ReleaseOf("5.8"), 8);
  EXPECT_EQ(LinuxHost::ReleaseOf("5.6"), 6);
  EXPECT_EQ(LinuxHost::ReleaseOf("5.10"), 0);
  EXPECT_EQ(LinuxHost::ReleaseOf("5.5"), 0);
  EXPECT_EQ(LinuxHost::ReleaseOf("6.1.0-18-amd64"), 0);
  EXPECT_EQ(LinuxHost::ReleaseOf("7"), 0);
}

}  // namespace

#include "support/box_id.h"
#include "support/host_query.h"
#include "support/screenadm_tables.h"

namespace {

// The encryption questions of the host queries follow the chosen host.
class DescribedEncryptionTest : public testing::Test {
 protected:
  void Describe(const std::string& text) {
    auto host = std::make_unique<HostDescription>();
    std::string error;
    ASSERT_TRUE(host->Parse(text, "site.host", &error)) << error;
    Host::Use(std::move(host));
  }
  void TearDown() override { Host::Use(nullptr); }
};

TEST_F(DescribedEncryptionTest, UnavailableAlgorithmsByNameAndKind) {
  Describe("ipsec-unavailable aes\nipsec-unavailable SHA1\nskip-unavailable RC4-40\nwide\n");
  EXPECT_EQ(screenadm_is64(), 1);
  EXPECT_EQ(screenadm_is_module_loaded(12, "IPsec", 4, 0), 0);
  EXPECT_EQ(screenadm_is_module_loaded(3, "IPsec", 4, 0), 1);
  EXPECT_EQ(screenadm_is_module_loaded(3, "IPsec", 5, 0), 0);
  EXPECT_EQ(screenadm_is_module_loaded(3, "SKIP", 1, 1), 0);
  EXPECT_EQ(screenadm_is_module_loaded(240, "SKIP", 1, 2), 0);
  EXPECT_EQ(screenadm_is_module_loaded(241, "SKIP", 1, 2), 1);
  EXPECT_EQ(screenadm_skip_lists_read(), 1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("Safer-128SK-CBC", 2, 0), 241);
}

TEST(HostDescriptionFileTest, UnreadableFileNamesThePath) {
  HostDescription host;
  std::string error;
  EXPECT_FALSE(host.Read("/nonexistent/site.host", &error));
  EXPECT_EQ(error, "/nonexistent/site.host: No such file or directory");
}

}  // namespace
