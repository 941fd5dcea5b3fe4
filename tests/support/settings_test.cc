#include "support/settings.h"

#include <gtest/gtest.h>

#include <string>

#include "test_env.h"

namespace {

class SettingsTest : public testing::Test {
 protected:
  void SetUp() override {
    debug = 0;
    spewit = 0;
  }
  TempDir etc_dir_;
  ScopedEnv etc_{"FERROWALL_ETC", etc_dir_.path().c_str()};
  ScopedEnv debug_{"FERROWALL_DEBUG", nullptr};
  ScopedEnv base_{"FERROWALL_BASE", nullptr};
};

TEST_F(SettingsTest, DebugLevels) {
  const struct {
    const char* text;
    int debug;
  } cases[] = {{"0x10", 16}, {"yes", 1}, {"-2", 0}};
  for (const auto& c : cases) {
    spewit = 0;
    ScopedEnv level("FERROWALL_DEBUG", c.text);
    set_from_env();
    EXPECT_EQ(debug, c.debug) << c.text;
    EXPECT_EQ(spewit, 1) << c.text;
  }
}

TEST_F(SettingsTest, LocationFileMovesTheBaseUnlessTheBaseVariableIsSet) {
  etc_dir_.write("location", "/opt/moved  \n");
  set_from_env();
  EXPECT_STREQ(base_path, "/opt/moved");
  EXPECT_STREQ(adm_path, "/opt/moved/fwadm");
  EXPECT_STREQ(lib_path, "/opt/moved/lib");
  ScopedEnv base("FERROWALL_BASE", "/opt/from-env");
  set_from_env();
  EXPECT_STREQ(base_path, "/opt/from-env");
  EXPECT_STREQ(lib_path, "/opt/from-env/lib");
}

}  // namespace
