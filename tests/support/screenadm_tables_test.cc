#include "support/screenadm_tables.h"

#include <gtest/gtest.h>

#include "support/fake_host_devices.h"

namespace {

enum { KEY = 0, DATA = 1, MAC = 2, COMPRESSION = 3 };

TEST(SkipAlgNameToIdTest, NoneIsExactForCompressionOtherListsIgnoreCase) {
  host_query_use(nullptr);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("NONE", 2, COMPRESSION), 0);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("none", 2, COMPRESSION), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("DES-CBC", 2, COMPRESSION), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("none", 1, KEY), 0);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("NONE", 1, MAC), 0);
}

TEST(SkipAlgNameToIdTest, ValuesDependOnVersionAndList) {
  host_query_use(nullptr);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("des-ede-k3", 1, KEY), 6);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("DES-EDE-K3", 2, DATA), 2);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("IDEA-CBC", 1, KEY), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("md5", 2, MAC), 1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("MD5", 1, MAC), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("DES-CBC", 3, KEY), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id(nullptr, 2, KEY), -1);
}

TEST(SkipAlgNameToIdTest, ProductAlgorithmsOnlyWhenTheKeyDeviceAnswered) {
  host_query_use(nullptr);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("RC4-40", 2, DATA), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("RC4-40", 1, DATA), 3);
  FakeHostDevices host;
  EXPECT_EQ(screenadm_skip_alg_name_to_id("RC4-40", 2, DATA), 240);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("RC4-128", 2, KEY), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("Safer-128SK-CBC", 2, KEY), 241);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("MD5-NAT", 2, MAC), 251);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("MD5-NAT", 1, MAC), -1);
  EXPECT_EQ(screenadm_skip_alg_name_to_id("RC2-40", 1, KEY), 2);
  host.traffic_lists_fail = true;
  host.Reinstall();
  EXPECT_EQ(screenadm_skip_alg_name_to_id("RC2-40", 2, KEY), -1);
}

}  // namespace
