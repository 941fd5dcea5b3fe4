#include "driver/fw_file.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "support/test_env.h"

namespace {

std::string Take(char* text) {
  std::string copy = text != nullptr ? text : "(null)";
  free(text);
  return copy;
}

int EntriesIn(const std::string& directory) {
  int count = 0;
  DIR* dir = opendir(directory.c_str());
  while (struct dirent* entry = readdir(dir)) count += entry->d_name[0] != '.';
  closedir(dir);
  return count;
}

TEST(FWFileNamingTest, DomainsAndDirectories) {
  EXPECT_STREQ(FWFile("lab", "p").Directory(), "/etc/ferrowall/configs/lab");
  EXPECT_STREQ(FWFile("./lab", "p").Directory(), "./lab");
  EXPECT_STREQ(FWFile(".", "p").Directory(), ".");
  EXPECT_EQ(Take(FWFile("lab", "policy.7").Verspath()), "/etc/ferrowall/configs/lab/policy.7");
  EXPECT_EQ(Take(FWFile("/tmp/", "p").pathname("q")), "/tmp/q");
}

TEST(FWFileVersionTest, NewVersionFollowsTheHighestStoredNumber) {
  TempDir dir;
  for (const char* name : {"policy.3", "policy.12", "policy.x", "other.40"}) dir.write(name, "x");
  FWFile file(dir.path().c_str(), "policy");
  std::ofstream* base = nullptr;
  std::ofstream* vers = nullptr;
  char* path = nullptr;
  EXPECT_EQ(file.newversion(&base, &vers, &path), 13);
  EXPECT_EQ(Take(path), dir / "policy.13");
  delete base;
  delete vers;
  EXPECT_EQ(access((dir / "policy.13").c_str(), F_OK), 0);
  EXPECT_EQ(access((dir / "policy").c_str(), F_OK), 0);
}

TEST(FWFileVersionTest, WithoutVersionFileOnlyTheCounterRises) {
  TempDir dir;
  FWFile file(dir.path().c_str(), "policy");
  file.Version(-4);
  std::ofstream* base = nullptr;
  EXPECT_EQ(file.newversion(&base, nullptr, nullptr), 1);
  delete base;
  FWFile standard_input(nullptr, nullptr);
  EXPECT_EQ(standard_input.newversion(&base, nullptr, nullptr), -1);
}

TEST(FWFileLockTest, WithoutLockEverythingSucceedsAndNothingIsWritten) {
  TempDir dir;
  FWFile file(dir.path().c_str(), "policy.3");
  EXPECT_EQ(file.AcquireReadLock(), 101);
  EXPECT_EQ(file.AcquireWriteLock(), 102);
  EXPECT_EQ(file.ReadLock(), 104);
  EXPECT_EQ(file.WriteLock(), 106);
  file.FreeReadLock();
  file.FreeWriteLock(1);
  EXPECT_EQ(EntriesIn(dir.path()), 0);
}

TEST(FWFileLockTest, SetlockLocksTheFileForTheAdministeringUser) {
  TempDir dir;
  ScopedEnv user("FWADM_USER", "admin");
  FWFile file(dir.path().c_str(), "policy.3");
  file.setlock();
  ASSERT_NE(file.getlock(), nullptr);
  EXPECT_EQ(std::string(file.getlock()->Path()), dir / "policy.lock");
  EXPECT_EQ(file.AcquireReadLock(), 101);
  std::ifstream lock_file(dir / "policy.lock");
  std::string line;
  std::getline(lock_file, line);
  EXPECT_EQ(line, std::to_string(getpid()) + " READ unknown admin");
  FWFile input(nullptr, nullptr);
  input.setlock();
  EXPECT_EQ(input.getlock(), nullptr) << "standard input has no lock";
}

}  // namespace
