// FWFile names one versioned configuration file: its domain and directory,
// its base name without a version and the name it was given.  The base name
// always holds the newest text and each save leaves a numbered copy beside
// it.  A file without a name stands for the standard input.  A file may
// carry a Lock; one without answers every lock request as if it succeeded.
#ifndef FW_DRIVER_FW_FILE_H
#define FW_DRIVER_FW_FILE_H

#include <cstdio>
#include <fstream>

#include "driver/lock.h"

class FWFile {
 public:
  // A null domain means no directory, a domain that is "." or holds a "/"
  // is the directory itself, any other names a directory of the store.
  FWFile(const char* domain, const char* file);
  FWFile(const FWFile&) = delete;
  FWFile& operator=(const FWFile&) = delete;
  ~FWFile();

  const char* Domain() const { return domain_; }
  const char* Directory() const { return directory_; }
  const char* Basename() const { return basename_; }
  const char* Versname() const { return versname_; }
  int Version() const { return version_; }
  void Version(int version) { version_ = version; }

  // `name` inside the directory; the caller frees the result.
  char* pathname(const char* name) const;
  // The paths of the base name and of the given name; null without a name.
  char* Basepath() const;
  char* Verspath() const;
  // 1 when there is no name or the named file exists.
  int Exists() const;
  // The standard input without a name, else the file opened for reading;
  // null on failure.
  FILE* readFILE() const;
  // Truncates the base file into `*base` and, with `vers`, opens the next
  // numbered version into `*vers` (its path into `*path` when given).
  // Returns the new version, -1 without a name.
  int newversion(std::ofstream** base, std::ofstream** vers, char** path);

  // Gives the file a new lock on its path for the administering user; a
  // file without a name (the standard input) stays without one.
  void setlock();
  // Gives the file `lock`, which it owns from now on.
  void setlock(Lock* lock);
  Lock* getlock() const { return lock_; }

  // The lock protocol of Lock; without a lock the answers are 101, 102,
  // 104 and 106, and the Free operations do nothing.
  int AcquireReadLock();
  int AcquireWriteLock();
  int ReadLock();
  int WriteLock();
  void FreeReadLock();
  void FreeWriteLock(int all);

 private:
  int HighestStoredVersion() const;

  char* domain_;
  char* directory_;
  char* basename_;
  char* versname_;
  int version_ = 0;
  Lock* lock_ = nullptr;
};

#endif
