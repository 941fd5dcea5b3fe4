#include "driver/lock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/test_env.h"

namespace {

std::vector<std::string> lines_of(const std::string& path) {
  std::ifstream file(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

std::string line(int pid, const char* mode, const char* host, const char* user) {
  return std::to_string(pid) + " " + mode + " " + host + " " + user;
}

// Runs `body` in a child process and returns its exit status.
template <typename Body>
int in_child(Body body) {
  pid_t child = fork();
  if (child == 0) _exit(body());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class LockTest : public testing::Test {
 protected:
  TempDir dir_;
  std::string policy_ = dir_ / "policy.7";
  std::string lock_file_ = dir_ / "policy.lock";
};

TEST_F(LockTest, AllVersionsShareOneLockFile) {
  for (const char* name : {"a/policy.12", "a/policy.", "a/policy", "a/policy.12//"}) {
    EXPECT_EQ(std::string(Lock((dir_ / name).c_str(), nullptr, nullptr).Path()), dir_ / "a/policy.lock") << name;
  }
  EXPECT_EQ(std::string(Lock((dir_.path() + "//").c_str(), nullptr, nullptr).Path()), dir_ / "lock");
}

TEST_F(LockTest, HostAndUserAreTheirFirstWordCut) {
  std::string long_user(300, 'u');
  Lock lock(policy_.c_str(), "gateway one", (long_user + " tail").c_str());
  ASSERT_EQ(lock.AcquireReadLock(), 101);
  EXPECT_EQ(lines_of(lock_file_), std::vector<std::string>{line(getpid(), "READ", "gateway", std::string(255, 'u').c_str())});
  Lock anonymous(policy_.c_str(), "", nullptr);
  anonymous.Pid(getpid() + 1);
  ASSERT_EQ(anonymous.AcquireReadLock(), 101);
  EXPECT_EQ(lines_of(lock_file_).back(), line(getpid() + 1, "READ", "unknown", "unknown"));
}

TEST_F(LockTest, OneProcessReadsThenWrites) {
  Lock lock(policy_.c_str(), "h", "u");
  EXPECT_EQ(lock.ReadLock(), 100) << "no lock file yet";
  EXPECT_EQ(lock.AcquireWriteLock(), 103);
  EXPECT_EQ(lock.AcquireReadLock(), 101);
  EXPECT_EQ(lock.AcquireReadLock(), 101);
  EXPECT_EQ(lines_of(lock_file_).size(), 1u) << "a second read lock adds no line";
  EXPECT_EQ(lock.ReadLock(), 104);
  EXPECT_EQ(lock.WriteLock(), 106);
  EXPECT_EQ(lock.AcquireWriteLock(), 102);
  EXPECT_EQ(lock.AcquireWriteLock(), 102);
  EXPECT_EQ(lock.WriteLock(), 105);
  EXPECT_EQ(lines_of(lock_file_), (std::vector<std::string>{line(getpid(), "READ", "h", "u"),
                                                             line(getpid(), "WRITE", "h", "u")}));
  testing::internal::CaptureStdout();
  EXPECT_EQ(lock.Locker(1), getpid());
  fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Lock held by u@h process id:" + std::to_string(getpid()) + "\n");
  lock.FreeReadLock();
  EXPECT_EQ(lock.ReadLock(), 104) << "read locks aren't given back";
}

TEST_F(LockTest, SecondProcessIsRefusedAndFreeWriteLockKeepsOtherReaders) {
  Lock lock(policy_.c_str(), "h", "u");
  ASSERT_EQ(lock.AcquireReadLock(), 101);
  ASSERT_EQ(lock.AcquireWriteLock(), 102);
  int child_pid = 0;
  int pipe_ends[2];
  ASSERT_EQ(pipe(pipe_ends), 0);
  int status = in_child([&] {
    Lock other(policy_.c_str(), "h2", "v");
    int pid = getpid();
    ssize_t ignored = write(pipe_ends[1], &pid, sizeof pid);
    (void)ignored;
    if (other.AcquireWriteLock() != 103) return 1;
    if (other.AcquireReadLock() != 101) return 2;
    if (other.AcquireWriteLock() != 107) return 3;
    if (other.Locker(0) != getppid()) return 4;
    return 0;
  });
  ASSERT_EQ(read(pipe_ends[0], &child_pid, sizeof child_pid), static_cast<ssize_t>(sizeof child_pid));
  close(pipe_ends[0]);
  close(pipe_ends[1]);
  EXPECT_EQ(status, 0);

  lock.FreeWriteLock(0);
  EXPECT_EQ(lines_of(lock_file_), (std::vector<std::string>{line(child_pid, "READ", "h2", "v"),
                                                             line(getpid(), "READ", "h", "u")}));
  EXPECT_EQ(lock.WriteLock(), 106);
  testing::internal::CaptureStdout();
  EXPECT_EQ(lock.Locker(1), 0);
  fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Lock available\n");

  ASSERT_EQ(lock.AcquireWriteLock(), 102);
  lock.FreeWriteLock(1);
  EXPECT_EQ(lines_of(lock_file_), std::vector<std::string>{line(getpid(), "READ", "h", "u")});
}

TEST_F(LockTest, LockFileThatCantBeOpenedIsError100) {
  Lock lock((dir_ / "missing/dir/policy").c_str(), "h", "u");
  EXPECT_EQ(lock.AcquireReadLock(), 100);
  EXPECT_EQ(lock.AcquireWriteLock(), 100);
  EXPECT_EQ(lock.Locker(0), 0);
}

TEST_F(LockTest, BlockedFileLockGivesUpAfterTenSeconds) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  pid_t holder = fork();
  if (holder == 0) {
    int fd = open(lock_file_.c_str(), O_RDWR | O_CREAT, 0600);
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    fcntl(fd, F_SETLKW, &whole);
    ssize_t ignored = write(ready[1], "x", 1);
    (void)ignored;
    sleep(30);
    _exit(0);
  }
  char byte;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  Lock lock(policy_.c_str(), "h", "u");
  auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(lock.AcquireReadLock(), 100);
  auto waited = std::chrono::steady_clock::now() - start;
  kill(holder, SIGKILL);
  waitpid(holder, nullptr, 0);
  close(ready[0]);
  close(ready[1]);
  EXPECT_GE(waited, std::chrono::seconds(9));
  EXPECT_LT(waited, std::chrono::seconds(20));
  EXPECT_EQ(lock.AcquireReadLock(), 101) << "the file lock is free again";
}

}  // namespace
