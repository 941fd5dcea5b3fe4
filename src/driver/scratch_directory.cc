#include "driver/scratch_directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

ScratchDirectory::ScratchDirectory() : before_(open(".", O_RDONLY | O_DIRECTORY)) {
  const char* base = getenv("TMPDIR");
  std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/fw_config.XXXXXX";
  if (before_ < 0 || mkdtemp(pattern.data()) == nullptr || chdir(pattern.c_str()) != 0) {
    int status = errno;
    std::cerr << "fw_config: no scratch directory: " << strerror(status) << std::endl;
    exit(status);
  }
  path_ = pattern;
}

// The compile makes plain files only, so one level is all there is.
ScratchDirectory::~ScratchDirectory() {
  if (DIR* directory = opendir(".")) {
    while (dirent* entry = readdir(directory))
      if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) unlink(entry->d_name);
    closedir(directory);
  }
  // The directory goes by its full path even if the way back is lost.
  int ignored = fchdir(before_);
  (void)ignored;
  close(before_);
  rmdir(path_.c_str());
}
