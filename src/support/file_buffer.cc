#include "support/file_buffer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

FileBuffer::FileBuffer(const char* path)
    : descriptor_(open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)), buffer_(new char[kBufferSize]) {
  if (descriptor_ < 0) Fail(kCreate);
  setp(buffer_.get(), buffer_.get() + kBufferSize);
}

FileBuffer::~FileBuffer() { Close(); }

bool FileBuffer::Close() {
  if (descriptor_ >= 0) {
    Flush();
    if (close(descriptor_) != 0) Fail(kClose);
    descriptor_ = -1;
  }
  return failed_step_ == kNone;
}

FileBuffer::int_type FileBuffer::overflow(int_type byte) {
  if (!Flush()) return traits_type::eof();
  if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
  *pptr() = traits_type::to_char_type(byte);
  pbump(1);
  return byte;
}

int FileBuffer::sync() { return Flush() ? 0 : -1; }

bool FileBuffer::Flush() {
  const char* at = pbase();
  while (failed_step_ == kNone && at < pptr()) {
    ssize_t written = write(descriptor_, at, pptr() - at);
    if (written >= 0) at += written;
    else if (errno != EINTR) Fail(kWrite);
  }
  setp(buffer_.get(), buffer_.get() + kBufferSize);
  return failed_step_ == kNone;
}

void FileBuffer::Fail(Step step) {
  if (failed_step_ != kNone) return;
  failed_step_ = step;
  error_ = errno;
}
