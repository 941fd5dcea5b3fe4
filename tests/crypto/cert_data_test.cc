#include "crypto/cert_data.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fake_host_devices.h"

namespace {

TEST(CertDataEqualTest, SkipIdsCompareMkidWithoutCase) {
  CertData a(IPSEC_SKIP, 1, "0xABCDEF01");
  EXPECT_TRUE(a.Equal(CertData(IPSEC_SKIP, 1, "0xabcdef01")));
  EXPECT_FALSE(a.Equal(CertData(IPSEC_SKIP, 1, "0xABCDEF02")));
  EXPECT_FALSE(a.Equal(CertData(IPSEC_SKIP, 8, "0xABCDEF01")));
}

TEST(CertDataEqualTest, KeysAreExactIdentitiesAreNot) {
  EXPECT_FALSE(CertData(IPSEC_MANUAL, 0, "Secret").Equal(CertData(IPSEC_MANUAL, 0, "secret")));
  EXPECT_TRUE(CertData(IPSEC_MANUAL, 0, "Secret").Equal(CertData(IPSEC_MANUAL, 0, "Secret")));
  EXPECT_TRUE(CertData(IPSEC_IKE, 0, "CN=Gate").Equal(CertData(IPSEC_IKE, 0, "cn=gate")));
  EXPECT_FALSE(CertData(IPSEC_IKE, 0, "same").Equal(CertData(IPSEC_MANUAL, 0, "same")));
}

TEST(CertDataLocalTest, IkeIdentityMarkedLocalNeedsNoHost) {
  FakeHostDevices host;
  EXPECT_TRUE(CertData(IPSEC_IKE, 0, "gate_local@example").IsLocal());
  EXPECT_FALSE(CertData(IPSEC_IKE, 0, "gate_LOCAL").IsLocal());
  EXPECT_FALSE(CertData(IPSEC_MANUAL, 0, "_local").IsLocal());
  EXPECT_EQ(host.local_key_requests, 0);
}

TEST(CertDataLocalTest, SkipIdIsLocalWhenTheKeyManagerHasIt) {
  FakeHostDevices host;
  host.AddLocalKey(1, {10, 0, 0, 1});
  host.AddLocalKey(2, {0, 0, 0, 5});
  EXPECT_TRUE(CertData(IPSEC_SKIP, 1, "10.0.0.1").IsLocal());
  EXPECT_TRUE(CertData(IPSEC_SKIP, 1, "0x0a000001").IsLocal());
  EXPECT_FALSE(CertData(IPSEC_SKIP, 1, "10.0.0.2").IsLocal());
  // Name space 2 forms no box id, whatever the key manager holds.
  EXPECT_FALSE(CertData(IPSEC_SKIP, 2, "5").IsLocal());
  EXPECT_FALSE(CertData(IPSEC_SKIP, 1, "not hex").IsLocal());
}

}  // namespace
