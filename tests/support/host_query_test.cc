#include "support/host_query.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fake_host_devices.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

enum { KEY = 0, DATA = 1, MAC = 2, COMPRESSION = 3, ENCRYPTION = 4, AUTHENTICATION = 5 };

TEST(HostQueryTest, IpsecModuleThatCannotBeAskedLetsTheAlgorithmPass) {
  host_query_use(nullptr);
  CaptureStderr();
  EXPECT_EQ(screenadm_is_module_loaded(2, "IPsec", ENCRYPTION, 0), 1);
  EXPECT_EQ(GetCapturedStderr().rfind("/dev/screen_ipsec: ", 0), 0u);
}

TEST(HostQueryTest, IpsecAsksEncryptionAndAuthenticationOperations) {
  FakeHostDevices host;
  host.ipsec[{15, 3}] = 1;
  host.ipsec[{14, 3}] = 0;
  EXPECT_EQ(screenadm_is_module_loaded(3, "IPsec", ENCRYPTION, 0), 1);
  EXPECT_EQ(screenadm_is_module_loaded(3, "IPsec", AUTHENTICATION, 0), 0);
  // Compression and the SKIP types are no questions for the IPsec module.
  host.ipsec_fails = true;
  EXPECT_EQ(screenadm_is_module_loaded(3, "IPsec", COMPRESSION, 0), 0);
  EXPECT_EQ(screenadm_is_module_loaded(3, "anything", KEY, 0), 0);
}

TEST(HostQueryTest, SkipListsAreReadOnceAndSelectedByVersion) {
  FakeHostDevices host;
  host.key_lists[0][2] = 1;   // version 2 key list
  host.key_lists[1][6] = 1;   // version 1 key list
  host.traffic_lists[1][4] = 1;
  host.traffic_lists[2][3] = 1;
  EXPECT_EQ(screenadm_is_module_loaded(2, "SKIP", KEY, 2), 1);
  EXPECT_EQ(screenadm_is_module_loaded(6, "SKIP", KEY, 2), 0);
  EXPECT_EQ(screenadm_is_module_loaded(6, "SKIP", KEY, 1), 1);
  EXPECT_EQ(screenadm_is_module_loaded(6, "SKIP", KEY, 7), 1);
  EXPECT_EQ(screenadm_is_module_loaded(4, "SKIP", DATA, 1), 1);
  EXPECT_EQ(screenadm_is_module_loaded(4, "SKIP", DATA, 7), 0);
  EXPECT_EQ(screenadm_is_module_loaded(3, "SKIP", MAC, 2), 1);
  EXPECT_EQ(screenadm_is_module_loaded(3, "SKIP", MAC, 1), 0);
  EXPECT_EQ(screenadm_is_module_loaded(0, "SKIP", COMPRESSION, 2), 0);
  EXPECT_EQ(screenadm_is_module_loaded(256, "SKIP", KEY, 2), 0);
  EXPECT_EQ(screenadm_is_module_loaded(-1, "SKIP", MAC, 2), 0);
  EXPECT_EQ(host.skip_list_reads, 2);
}

TEST(HostQueryTest, LocalKeyFoundOnALaterPage) {
  FakeHostDevices host;
  for (int i = 0; i < 250; ++i) host.AddLocalKey(8, std::vector<unsigned char>(16, i));
  screen_box_id box = {};
  box.nsid = 8;
  box.keyid.length = 16;
  memset(box.keyid.bytes, 230, 16);
  EXPECT_EQ(screenadm_skip_local_id(box), 1);
  EXPECT_EQ(host.local_key_requests, 2);
  memset(box.keyid.bytes, 251, 16);
  EXPECT_EQ(screenadm_skip_local_id(box), 0);
}

}  // namespace
