#include "support/settings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

class SettingsTest : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/fw_settings_XXXXXX";
    etc_ = mkdtemp(pattern);
    setenv("FERROWALL_ETC", etc_.c_str(), 1);
    unsetenv("FERROWALL_DEBUG");
    unsetenv("FERROWALL_BASE");
    debug = 0;
    spewit = 0;
  }
  void TearDown() override {
    std::system(("rm -rf " + etc_).c_str());
    unsetenv("FERROWALL_ETC");
    unsetenv("FERROWALL_BASE");
    unsetenv("FERROWALL_DEBUG");
  }
  void WriteLocation(const std::string& text) { std::ofstream(etc_ + "/location") << text; }
  std::string etc_;
};

TEST_F(SettingsTest, DebugLevels) {
  setenv("FERROWALL_DEBUG", "0x10", 1);
  set_from_env();
  EXPECT_EQ(debug, 16);
  EXPECT_EQ(spewit, 1);

  setenv("FERROWALL_DEBUG", "yes", 1);
  set_from_env();
  EXPECT_EQ(debug, 1);

  spewit = 0;
  setenv("FERROWALL_DEBUG", "-2", 1);
  set_from_env();
  EXPECT_EQ(debug, 0);
  EXPECT_EQ(spewit, 1);
}

TEST_F(SettingsTest, LocationFileMovesTheBaseAndItsDirectories) {
  WriteLocation("/opt/moved  \n");
  set_from_env();
  EXPECT_STREQ(base_path, "/opt/moved");
  EXPECT_STREQ(adm_path, "/opt/moved/fwadm");
  EXPECT_STREQ(lib_path, "/opt/moved/lib");
}

TEST_F(SettingsTest, BaseVariableWinsOverTheLocationFile) {
  WriteLocation("/opt/from-file\n");
  setenv("FERROWALL_BASE", "/opt/from-env", 1);
  set_from_env();
  EXPECT_STREQ(base_path, "/opt/from-env");
  EXPECT_STREQ(lib_path, "/opt/from-env/lib");
}

TEST_F(SettingsTest, BaseVariableEqualToThePresentBaseLetsTheFileDecide) {
  setenv("FERROWALL_BASE", "/opt/same", 1);
  set_from_env();
  WriteLocation("/opt/decided\n");
  set_from_env();
  EXPECT_STREQ(base_path, "/opt/decided");
  EXPECT_STREQ(adm_path, "/opt/decided/fwadm");
}

TEST_F(SettingsTest, OverlongLocationFileIsIgnored) {
  setenv("FERROWALL_BASE", "/opt/kept", 1);
  set_from_env();
  unsetenv("FERROWALL_BASE");
  WriteLocation("/" + std::string(300, 'x'));
  set_from_env();
  EXPECT_STREQ(base_path, "/opt/kept");
}

TEST(UserNameTest, AdministeringUserFromTheEnvironment) {
  setenv("FWADM_USER", "operator7", 1);
  char* name = ferrowall_username();
  EXPECT_STREQ(name, "operator7");
  free(name);
  unsetenv("FWADM_USER");
  name = ferrowall_username();
  EXPECT_NE(std::string(name), "");
  free(name);
}

}  // namespace
