#include "output/output_file.h"

#include <cstring>
#include <iostream>

#include "support/fwi18n.h"

int OutputFile::failures_ = 0;

OutputFile::OutputFile(const std::string& name) : std::ostream(nullptr), name_(name), buffer_(name.c_str()) {
  rdbuf(&buffer_);
}

void OutputFile::Close() {
  if (closed_) return;
  closed_ = true;
  if (buffer_.Close()) return;
  ++failures_;
  Report();
}

// The wording of the key manager files' own failures.
void OutputFile::Report() const {
  const char* unable = buffer_.FailedStep() == FileBuffer::kCreate ? fwi18n_text(48, 60, "Unable to create file '")
                                                                  : fwi18n_text(48, 61, "Unable to write file '");
  std::cerr << unable << name_ << "', error: " << strerror(buffer_.Error()) << std::endl;
}
