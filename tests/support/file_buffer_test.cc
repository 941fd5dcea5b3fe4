#include "support/file_buffer.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>

#include "test_env.h"

namespace {

struct Outcome {
  bool closed;
  FileBuffer::Step step;
  int error;
};

Outcome WriteThrough(const std::string& path, const std::string& text) {
  FileBuffer buffer(path.c_str());
  std::ostream(&buffer) << text;
  bool closed = buffer.Close();
  return {closed, buffer.FailedStep(), buffer.Error()};
}

TEST(FileBufferTest, FailuresKeepTheirStepAndReason) {
  TempDir dir;
  const struct {
    std::string path;
    FileBuffer::Step step;
    int error;
  } cases[] = {
      {dir / "missing/file", FileBuffer::kCreate, ENOENT},
      {dir / std::string(300, 'x'), FileBuffer::kCreate, ENAMETOOLONG},
      {dir.path(), FileBuffer::kCreate, EISDIR},
      {"/dev/full", FileBuffer::kWrite, ENOSPC},
  };
  for (const auto& c : cases) {
    Outcome outcome = WriteThrough(c.path, "text\n");
    EXPECT_FALSE(outcome.closed) << c.path;
    EXPECT_EQ(outcome.step, c.step) << c.path;
    EXPECT_EQ(outcome.error, c.error) << c.path;
  }
}

TEST(FileBufferTest, TextLongerThanTheBufferArrivesWhole) {
  TempDir dir;
  std::string text;
  for (int line = 0; line < 3000; ++line) text += std::to_string(line) + "\n";
  dir.write("file", "old content that must go");
  EXPECT_TRUE(WriteThrough(dir / "file", text).closed);
  std::ifstream file(dir / "file");
  std::ostringstream written;
  written << file.rdbuf();
  EXPECT_EQ(written.str(), text);
}

}  // namespace
