#include "driver/lock.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>

#include "support/fwi18n.h"

namespace {

constexpr unsigned kLockWaitSeconds = 10;

bool is_directory(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// All versions of a file ("policy", "policy.", "policy.12") share one lock
// file, "policy.lock"; a directory is locked by "lock" inside it.
std::string lock_path_of(const char* path) {
  std::string lock = path != nullptr ? path : "";
  while (lock.size() > 1 && lock.back() == '/') lock.pop_back();
  if (is_directory(lock)) return lock + "/lock";
  while (!lock.empty() && isdigit(static_cast<unsigned char>(lock.back()))) lock.pop_back();
  if (!lock.empty() && lock.back() == '.') lock.pop_back();
  return lock + ".lock";
}

template <size_t N>
void first_word(char (&field)[N], const char* text) {
  size_t length = text != nullptr ? strcspn(text, " \t\r\n") : 0;
  if (length == 0) {
    text = "unknown";
    length = strlen(text);
  }
  if (length > N - 1) length = N - 1;
  memcpy(field, text, length);
  field[length] = '\0';
}

// The alarm only has to interrupt the waiting fcntl.
void on_alarm(int) {}

bool read_all(int fd, std::string& text) {
  char buffer[4096];
  off_t offset = 0;
  for (;;) {
    ssize_t got = pread(fd, buffer, sizeof buffer, offset);
    if (got < 0) return false;
    if (got == 0) return true;
    text.append(buffer, got);
    offset += got;
  }
}

}  // namespace

Lock::Lock(const char* path, const char* host, const char* user) : pid_(getpid()), path_(lock_path_of(path)) {
  first_word(host_, host);
  first_word(user_, user);
}

Lock::~Lock() { FreeLockFile(); }

void Lock::Pid(int pid) {
  if (pid != -1) pid_ = pid;
}

bool Lock::LockLockFile() {
  if (pid_ < 0) return false;
  descriptor_ = open(path_.c_str(), O_RDWR | O_CREAT, 0600);
  if (descriptor_ < 0) return false;
  struct sigaction quiet {};
  struct sigaction previous {};
  quiet.sa_handler = on_alarm;
  sigemptyset(&quiet.sa_mask);
  sigaction(SIGALRM, &quiet, &previous);
  alarm(kLockWaitSeconds);
  struct flock whole {};
  whole.l_type = F_WRLCK;
  whole.l_whence = SEEK_SET;
  int result = fcntl(descriptor_, F_SETLKW, &whole);
  alarm(0);
  sigaction(SIGALRM, &previous, nullptr);
  if (result == 0) return true;
  close(descriptor_);
  descriptor_ = -1;
  return false;
}

void Lock::FreeLockFile() {
  if (descriptor_ < 0) return;
  struct flock whole {};
  whole.l_type = F_UNLCK;
  whole.l_whence = SEEK_SET;
  fcntl(descriptor_, F_SETLK, &whole);
  close(descriptor_);
  descriptor_ = -1;
}

// Reads through the descriptor of the file lock when it is held: closing
// any other descriptor of the file would give the fcntl lock up.
bool Lock::Entries(std::vector<Lock_Entry>& entries) const {
  int fd = descriptor_ >= 0 ? descriptor_ : open(path_.c_str(), O_RDONLY);
  if (fd < 0) return false;
  std::string text;
  bool read = read_all(fd, text);
  if (fd != descriptor_) close(fd);
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    Lock_Entry entry;
    if (entry.Read(text.substr(start, end - start))) entries.push_back(entry);
    start = end + 1;
  }
  return read;
}

bool Lock::Holds(const std::vector<Lock_Entry>& entries, const char* mode) const {
  for (const Lock_Entry& entry : entries) {
    if (entry.Pid() == pid_ && strcmp(entry.Mode(), mode) == 0) return true;
  }
  return false;
}

int Lock::Find(const char* mode, int found, int missing) {
  std::vector<Lock_Entry> entries;
  if (!Entries(entries)) return 100;
  return Holds(entries, mode) ? found : missing;
}

void Lock::Append(const char* mode) {
  lseek(descriptor_, 0, SEEK_END);
  Lock_Entry(pid_, mode, host_, user_).Write(descriptor_);
}

int Lock::ReadLock() { return Find("READ", 104, 105); }

int Lock::WriteLock() { return Find("WRITE", 105, 106); }

int Lock::AcquireReadLock() {
  if (!LockLockFile()) return 100;
  std::vector<Lock_Entry> entries;
  bool read = Entries(entries);
  bool listed = false;
  for (const Lock_Entry& entry : entries) listed = listed || entry.Pid() == pid_;
  if (read && !listed) Append("READ");
  FreeLockFile();
  return read ? 101 : 100;
}

int Lock::AcquireWriteLock() {
  if (!LockLockFile()) return 100;
  std::vector<Lock_Entry> entries;
  int result = 102;
  if (!Entries(entries)) {
    result = 100;
  } else if (Holds(entries, "WRITE")) {
    result = 102;
  } else if (!Holds(entries, "READ")) {
    result = 103;
  } else {
    for (const Lock_Entry& entry : entries) {
      if (strcmp(entry.Mode(), "WRITE") == 0) result = 107;
    }
    if (result == 102) Append("WRITE");
  }
  FreeLockFile();
  return result;
}

void Lock::FreeWriteLock(int all) {
  if (!LockLockFile()) return;
  std::vector<Lock_Entry> entries;
  if (Entries(entries) && Holds(entries, "WRITE") && ftruncate(descriptor_, 0) == 0) {
    lseek(descriptor_, 0, SEEK_SET);
    for (const Lock_Entry& entry : entries) {
      if (all == 0 && entry.Pid() != pid_) entry.Write(descriptor_);
    }
    Append("READ");
  }
  FreeLockFile();
}

int Lock::Locker(int report) {
  std::vector<Lock_Entry> entries;
  if (!Entries(entries)) return 0;
  for (const Lock_Entry& entry : entries) {
    if (strcmp(entry.Mode(), "WRITE") != 0) continue;
    if (report) {
      printf("%s %s@%s %s%d\n", fwi18n_text(45, 1, "Lock held by"), entry.User(), entry.Host(),
             fwi18n_text(45, 2, "process id:"), entry.Pid());
    }
    return entry.Pid();
  }
  if (report) printf("%s\n", fwi18n_text(45, 3, "Lock available"));
  return 0;
}
