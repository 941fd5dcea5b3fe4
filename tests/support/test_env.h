// Helpers for tests that touch the process environment and the disk: a
// scoped environment variable and a temporary directory that is removed
// with everything in it.
#ifndef FW_TESTS_SUPPORT_TEST_ENV_H
#define FW_TESTS_SUPPORT_TEST_ENV_H

#include <ftw.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/stat.h>

// Sets (or, with null, unsets) an environment variable for one scope.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value) : name_(name) {
    const char* old = getenv(name);
    had_value_ = old != nullptr;
    if (had_value_) old_ = old;
    if (value != nullptr) setenv(name, value, 1); else unsetenv(name);
  }
  ~ScopedEnv() {
    if (had_value_) setenv(name_.c_str(), old_.c_str(), 1); else unsetenv(name_.c_str());
  }

 private:
  std::string name_;
  std::string old_;
  bool had_value_;
};

// A fresh directory below $TMPDIR (or /tmp), removed at the end of scope.
class TempDir {
 public:
  TempDir() {
    const char* base = getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr ? base : "/tmp") + "/fwtest.XXXXXX";
    char* made = mkdtemp(&pattern[0]);
    path_ = made != nullptr ? made : "";
  }
  ~TempDir() { remove(); }
  // Removes the directory now, for a process that ends without unwinding.
  void remove() {
    if (!path_.empty()) nftw(path_.c_str(), remove_entry, 16, FTW_DEPTH | FTW_PHYS);
    path_.clear();
  }
  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  // Writes `text` to `relative`, making the directories on the way.
  void write(const std::string& relative, const std::string& text) const {
    std::string full = path_ + "/" + relative;
    for (size_t slash = full.find('/', path_.size() + 1); slash != std::string::npos;
         slash = full.find('/', slash + 1)) {
      mkdir(full.substr(0, slash).c_str(), 0777);
    }
    std::ofstream(full) << text;
  }

 private:
  static int remove_entry(const char* path, const struct stat*, int, struct FTW*) { return ::remove(path); }
  std::string path_;
};

#endif
