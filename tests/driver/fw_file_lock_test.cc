#include "driver/fw_file.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "support/test_env.h"

namespace {

int entries_in(const std::string& directory) {
  int count = 0;
  DIR* dir = opendir(directory.c_str());
  while (struct dirent* entry = readdir(dir)) count += entry->d_name[0] != '.';
  closedir(dir);
  return count;
}

TEST(FWFileLockTest, WithoutLockEverythingSucceedsAndNothingIsWritten) {
  TempDir dir;
  FWFile file(dir.path().c_str(), "policy.3");
  EXPECT_EQ(file.getlock(), nullptr);
  EXPECT_EQ(file.AcquireReadLock(), 101);
  EXPECT_EQ(file.AcquireWriteLock(), 102);
  EXPECT_EQ(file.ReadLock(), 104);
  EXPECT_EQ(file.WriteLock(), 106);
  file.FreeReadLock();
  file.FreeWriteLock(1);
  EXPECT_EQ(entries_in(dir.path()), 0);
}

TEST(FWFileLockTest, SetlockLocksTheFileForTheAdministeringUser) {
  TempDir dir;
  ScopedEnv user("FWADM_USER", "admin");
  FWFile file(dir.path().c_str(), "policy.3");
  file.setlock();
  ASSERT_NE(file.getlock(), nullptr);
  EXPECT_EQ(std::string(file.getlock()->Path()), dir / "policy.lock");
  EXPECT_EQ(file.ReadLock(), 100);
  EXPECT_EQ(file.AcquireReadLock(), 101);
  EXPECT_EQ(file.ReadLock(), 104);
  EXPECT_EQ(file.AcquireWriteLock(), 102);
  EXPECT_EQ(file.WriteLock(), 105);
  file.FreeWriteLock(0);
  EXPECT_EQ(file.WriteLock(), 106);
  std::ifstream lock_file(dir / "policy.lock");
  std::string line;
  std::getline(lock_file, line);
  EXPECT_EQ(line, std::to_string(getpid()) + " READ unknown admin");
}

TEST(FWFileLockTest, SetlockTakesAGivenLockAndStdinGetsNone) {
  TempDir dir;
  FWFile file(dir.path().c_str(), "registry");
  Lock* lock = new Lock((dir / "other").c_str(), "h", "u");
  file.setlock(lock);
  EXPECT_EQ(file.getlock(), lock);
  file.setlock(new Lock((dir / "third").c_str(), "h", "u"));
  EXPECT_EQ(std::string(file.getlock()->Path()), dir / "third.lock");
  FWFile input(nullptr, nullptr);
  input.setlock();
  EXPECT_EQ(input.getlock(), nullptr);
  EXPECT_EQ(input.AcquireReadLock(), 101);
}

}  // namespace
