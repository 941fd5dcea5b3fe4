// Builders of small hand-made objects shared by the output tests.
#ifndef FW_TESTS_OUTPUT_FIXTURE_H
#define FW_TESTS_OUTPUT_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include <stdlib.h>

#include "model/address.h"

inline uint32_t ip(const char* text) {
  uint32_t value = 0;
  EXPECT_EQ(parse_ipv4addr(text, &value), 0) << text;
  return value;
}

// An address of the given dotted ranges, included in the order given.
inline std::unique_ptr<Address> address_of(const char* name,
                                           std::initializer_list<std::pair<const char*, const char*>> ranges) {
  auto address = std::make_unique<Address>(name, nullptr, nullptr, ADDRESS_SINGLE);
  for (const auto& range : ranges) address->Include(Range(ip(range.first), ip(range.second), RT_ADDRESS, RS_ADDRESSES));
  return address;
}

// Runs a test in a fresh directory of its own, removed afterwards, since the
// writers make their files in the current directory.
class ScratchDirectory {
 public:
  ScratchDirectory() : previous_(std::filesystem::current_path()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "fw_output_XXXXXX").string();
    path_ = mkdtemp(pattern.data());
    std::filesystem::current_path(path_);
  }
  ~ScratchDirectory() {
    std::filesystem::current_path(previous_);
    std::filesystem::remove_all(path_);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

 private:
  std::filesystem::path previous_;
  std::filesystem::path path_;
};

inline bool exists(const char* name) { return std::filesystem::exists(name); }

// The whole text of a file; empty when it can't be read.
inline std::string contents(const std::string& name) {
  std::ifstream in(name);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

#endif
