// Lock guards a stored file against concurrent editing with a plain text
// lock file: one line for each holder, "<pid> READ|WRITE <host> <user>".
// A writer holds a READ and a WRITE line.  All versions of a file share one
// lock file: the path without its version number and with ".lock" (a
// directory gets "lock" inside it).  Changes to the lock file are made
// under an exclusive fcntl lock, waited for at most 10 seconds.
//
// Result codes: 100 error (lock file can't be opened or locked), 101 read
// lock acquired, 102 write lock acquired, 103 write lock refused without a
// read lock, 104 ReadLock: held, 105 WriteLock: held / ReadLock: not held,
// 106 WriteLock: not held, 107 write lock refused: another process has it.
#ifndef FW_DRIVER_LOCK_H
#define FW_DRIVER_LOCK_H

#include <string>
#include <vector>

#include "driver/lock_entry.h"

class Lock {
 public:
  // `host` and `user` are cut to their first word; null gives "unknown".
  Lock(const char* path, const char* host, const char* user);
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  ~Lock();

  int AcquireReadLock();
  int AcquireWriteLock();
  int ReadLock();
  int WriteLock();
  // Read locks are dropped only when a writer rewrites the file.
  void FreeReadLock() {}
  // Gives the write lock up and keeps a read lock.  With `all` 0 the other
  // processes' lines stay; otherwise they are dropped too.
  void FreeWriteLock(int all);
  // The pid holding the write lock, or 0.  With `report`, says on stdout
  // who holds it or that it is available.
  int Locker(int report);

  // Replaces the holder's pid, unless `pid` is -1.
  void Pid(int pid);
  int Pid() const { return pid_; }
  const char* Path() const { return path_.c_str(); }

 private:
  bool LockLockFile();
  void FreeLockFile();
  // The lines of the lock file; false when it can't be read.
  bool Entries(std::vector<Lock_Entry>& entries) const;
  bool Holds(const std::vector<Lock_Entry>& entries, const char* mode) const;
  int Find(const char* mode, int found, int missing);
  void Append(const char* mode);

  int pid_;
  int descriptor_ = -1;
  std::string path_;
  char host_[20];
  char user_[256];
};

#endif
