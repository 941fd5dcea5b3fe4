#include "support/box_id.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fake_host_devices.h"

namespace {

std::string hex(const skip_keyid& keyid) {
  static const char digits[] = "0123456789abcdef";
  std::string text;
  for (int i = 0; i < keyid.length; ++i) {
    text += digits[keyid.bytes[i] >> 4];
    text += digits[keyid.bytes[i] & 15];
  }
  return text;
}

TEST(SkipKeyIdTest, HostNameOnlyInIpv4NameSpacesAndNotForHexText) {
  FakeHostDevices host;
  host.hosts["gw"] = {192, 168, 1, 2};
  host.hosts["0x01020304"] = {9, 9, 9, 9};
  skip_keyid keyid;
  // Two characters are too short to be taken for a host name.
  EXPECT_EQ(skip_s_to_keyid("gw", 0, &keyid), -1);
  host.hosts["gateway"] = {192, 168, 1, 2};
  ASSERT_EQ(skip_s_to_keyid("gateway", 0, &keyid), 0);
  EXPECT_EQ(hex(keyid), "c0a80102");
  ASSERT_EQ(skip_s_to_keyid("0x01020304", 1, &keyid), 0);
  EXPECT_EQ(hex(keyid), "01020304");
  EXPECT_EQ(skip_s_to_keyid("gateway", 2, &keyid), -1);
}

TEST(SkipKeyIdTest, AcceptedTextsAndTheirKeyBytes) {
  FakeHostDevices host;
  const struct {
    const char* text;
    int name_space;
    const char* key;
  } cases[] = {
      {"10.0.0.1", 1, "0a000001"},  // a dotted address needs no lookup
      {"0xABC", 8, "00000000000000000000000000000abc"},  // short hex is right aligned
      {"5", 2, "00000005"},
      {"0Xa0b0c0d0e0f0", 7, "a0b0c0d0e0f0"},
      {"ff zz", 2, "000000ff"},  // only the first word counts
  };
  for (const auto& c : cases) {
    skip_keyid keyid;
    ASSERT_EQ(skip_s_to_keyid(c.text, c.name_space, &keyid), 0) << c.text;
    EXPECT_EQ(hex(keyid), c.key) << c.text;
  }
  skip_keyid keyid;
  EXPECT_EQ(skip_s_to_keyid("1.2.3.999", 1, &keyid), -1);
}

TEST(SkipKeyIdTest, RejectsTooLongBadDigitsAndBadNameSpaces) {
  skip_keyid keyid;
  EXPECT_EQ(skip_s_to_keyid(std::string(32, 'f').c_str(), 8, &keyid), 0);
  EXPECT_EQ(skip_s_to_keyid(std::string(33, 'f').c_str(), 8, &keyid), -1);
  EXPECT_EQ(skip_s_to_keyid(("0x" + std::string(32, 'f')).c_str(), 8, &keyid), 0);
  EXPECT_EQ(skip_s_to_keyid("12g4", 8, &keyid), -1);
  // "0x" alone keeps its x, which is no digit.
  EXPECT_EQ(skip_s_to_keyid("0x", 8, &keyid), -1);
  EXPECT_EQ(skip_s_to_keyid("ab", 12, &keyid), -1);
  EXPECT_EQ(skip_s_to_keyid("ab", -1, &keyid), -1);
  EXPECT_EQ(skip_s_to_keyid(nullptr, 8, &keyid), -1);
}

TEST(ScreenBoxIdTest, NameSpaceByNameOrNumber) {
  screen_box_id box;
  ASSERT_EQ(screen_box_id_internalize(&box, "1 10.1.2.3"), 1);
  EXPECT_EQ(box.nsid, 1);
  EXPECT_EQ(hex(box.keyid), "0a010203");
  ASSERT_EQ(screen_box_id_internalize(&box, " \tDH_PUB\t0xff\n"), 1);
  EXPECT_EQ(box.nsid, 8);
  EXPECT_EQ(box.keyid.length, 16);
  ASSERT_EQ(screen_box_id_internalize(&box, "IPV4 0x0a000001"), 1);
  EXPECT_EQ(box.nsid, 1);
  ASSERT_EQ(screen_box_id_internalize(&box, "NONE 1"), 1);
  EXPECT_EQ(box.nsid, 0);
}

}  // namespace
