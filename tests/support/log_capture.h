// Captures what the support libraries echo to stderr while a test runs, so
// that their log messages can be checked.
#ifndef FW_TESTS_SUPPORT_LOG_CAPTURE_H
#define FW_TESTS_SUPPORT_LOG_CAPTURE_H

#include <gtest/gtest.h>

#include <string>

#include "support/settings.h"

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
