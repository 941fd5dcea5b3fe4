// Lock_Entry: one line of a lock file, "<pid> <READ|WRITE> <host> <user>".
#ifndef FW_DRIVER_LOCK_ENTRY_H
#define FW_DRIVER_LOCK_ENTRY_H

#include <string>

class Lock_Entry {
 public:
  Lock_Entry() = default;
  Lock_Entry(int pid, const char* mode, const char* host, const char* user);

  // Takes the fields of `line`; false when it has no pid and mode.
  bool Read(const std::string& line);
  // Appends the line, with its line end, to descriptor `fd`.
  bool Write(int fd) const;

  int Pid() const { return pid_; }
  const char* Mode() const { return mode_; }
  const char* Host() const { return host_; }
  const char* User() const { return user_; }

 private:
  int pid_ = -1;
  char mode_[20] = "";
  char host_[20] = "";
  char user_[256] = "";
};

#endif
