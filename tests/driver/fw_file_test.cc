#include "driver/fw_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

std::string Take(char* text) {
  std::string copy = text != nullptr ? text : "(null)";
  free(text);
  return copy;
}

TEST(FWFileNamingTest, StandardInputHasNoPaths) {
  FWFile file(nullptr, nullptr);
  EXPECT_STREQ(file.Basename(), "<stdin>");
  EXPECT_EQ(file.Versname(), nullptr);
  EXPECT_EQ(file.Basepath(), nullptr);
  EXPECT_EQ(file.Verspath(), nullptr);
  EXPECT_EQ(file.Exists(), 1);
  EXPECT_EQ(file.readFILE(), stdin);
}

TEST(FWFileNamingTest, DomainsAndDirectories) {
  EXPECT_STREQ(FWFile("lab", "p").Directory(), "/etc/ferrowall/configs/lab");
  EXPECT_STREQ(FWFile("./lab", "p").Directory(), "./lab");
  EXPECT_STREQ(FWFile(".", "p").Directory(), ".");
  EXPECT_EQ(Take(FWFile("lab", "policy.7").Verspath()), "/etc/ferrowall/configs/lab/policy.7");
  EXPECT_EQ(Take(FWFile("/tmp/", "p").pathname("q")), "/tmp/q");
}

class FWFileVersionTest : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/fwfile_XXXXXX";
    directory_ = mkdtemp(pattern);
  }
  void TearDown() override { std::system(("rm -rf " + directory_).c_str()); }
  void Touch(const std::string& name) { std::ofstream(directory_ + "/" + name) << "x"; }
  std::string directory_;
};

TEST_F(FWFileVersionTest, NewVersionFollowsTheHighestStoredNumber) {
  Touch("policy.3");
  Touch("policy.12");
  Touch("policy.x");
  Touch("other.40");
  FWFile file(directory_.c_str(), "policy");
  std::ofstream* base = nullptr;
  std::ofstream* vers = nullptr;
  char* path = nullptr;
  EXPECT_EQ(file.newversion(&base, &vers, &path), 13);
  EXPECT_EQ(Take(path), directory_ + "/policy.13");
  delete base;
  delete vers;
  EXPECT_EQ(access((directory_ + "/policy.13").c_str(), F_OK), 0);
  EXPECT_EQ(access((directory_ + "/policy").c_str(), F_OK), 0);
}

TEST_F(FWFileVersionTest, WithoutVersionFileOnlyTheCounterRises) {
  FWFile file(directory_.c_str(), "policy");
  file.Version(-4);
  std::ofstream* base = nullptr;
  EXPECT_EQ(file.newversion(&base, nullptr, nullptr), 1);
  delete base;
  FWFile standard_input(nullptr, nullptr);
  EXPECT_EQ(standard_input.newversion(&base, nullptr, nullptr), -1);
}

TEST_F(FWFileVersionTest, ExistsAndReadFile) {
  Touch("present");
  FWFile present(directory_.c_str(), "present");
  FWFile missing(directory_.c_str(), "missing");
  EXPECT_EQ(present.Exists(), 1);
  EXPECT_EQ(missing.Exists(), 0);
  FILE* stream = present.readFILE();
  ASSERT_NE(stream, nullptr);
  fclose(stream);
  EXPECT_EQ(missing.readFILE(), nullptr);
}

}  // namespace
