#include "driver/lock_entry.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

Lock_Entry::Lock_Entry(int pid, const char* mode, const char* host, const char* user) : pid_(pid) {
  snprintf(mode_, sizeof mode_, "%s", mode);
  snprintf(host_, sizeof host_, "%s", host);
  snprintf(user_, sizeof user_, "%s", user);
}

bool Lock_Entry::Read(const std::string& line) {
  host_[0] = '\0';
  user_[0] = '\0';
  return sscanf(line.c_str(), "%d %19s %19s %255s", &pid_, mode_, host_, user_) >= 2;
}

bool Lock_Entry::Write(int fd) const {
  char line[sizeof mode_ + sizeof host_ + sizeof user_ + 32];
  int length = snprintf(line, sizeof line, "%d %s %s %s\n", pid_, mode_, host_, user_);
  return length > 0 && write(fd, line, length) == length;
}
