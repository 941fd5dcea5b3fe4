// OutputFile is one file of the generated set, made in the current
// directory: an output stream whose failures don't go unnoticed.  When it
// is closed, the first failure to create, write or close the file is
// written to stderr as one line naming the file and the system's reason,
// and counted, so that the compile can end with the status of a lost file.
#ifndef FW_OUTPUT_OUTPUT_FILE_H
#define FW_OUTPUT_OUTPUT_FILE_H

#include <ostream>
#include <string>

#include "support/file_buffer.h"

class OutputFile : public std::ostream {
 public:
  explicit OutputFile(const std::string& name);
  ~OutputFile() override { Close(); }

  // Ends the file and reports its failure, once.
  void Close();
  // False when the file couldn't be made; the report follows at Close.
  bool Created() const { return buffer_.FailedStep() != FileBuffer::kCreate; }

  // The files lost since the count was last reset.
  static int Failures() { return failures_; }
  static void ResetFailures() { failures_ = 0; }

 private:
  void Report() const;

  std::string name_;
  FileBuffer buffer_;
  bool closed_ = false;
  static int failures_;
};

#endif
