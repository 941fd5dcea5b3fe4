// Shared set-up of the support tests: a scoped environment variable, a
// temporary directory removed with everything in it, and a capture of what
// the libraries log.
#ifndef FW_TESTS_SUPPORT_TEST_ENV_H
#define FW_TESTS_SUPPORT_TEST_ENV_H

#include <ftw.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/stat.h>

#include "support/settings.h"

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
  ~TempDir() {
    if (!path_.empty()) nftw(path_.c_str(), remove_entry, 16, FTW_DEPTH | FTW_PHYS);
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

// Captures what the support libraries echo to stderr while it lives.
class LogCapture {
 public:
  LogCapture() : saved_spewit_(spewit) {
    spewit = 1;
    testing::internal::CaptureStderr();
  }
  ~LogCapture() {
    if (!taken_) testing::internal::GetCapturedStderr();
    spewit = saved_spewit_;
  }
  // Everything echoed since construction; ends the capture.
  std::string text() {
    taken_ = true;
    return testing::internal::GetCapturedStderr();
  }

 private:
  int saved_spewit_;
  bool taken_ = false;
};

#endif
