// FileBuffer is a stream buffer that writes one file through the system
// calls, so that a failure keeps the reason the system gave for it: the
// file can't be created, a write fails (a full disk), or the close does (a
// file system that reports late).  After the first failure the rest of the
// text is dropped.
#ifndef FW_SUPPORT_FILE_BUFFER_H
#define FW_SUPPORT_FILE_BUFFER_H

#include <memory>
#include <streambuf>

class FileBuffer : public std::streambuf {
 public:
  enum Step { kNone, kCreate, kWrite, kClose };

  // Creates `path`, or empties it when it exists; mode 0666 less the umask.
  explicit FileBuffer(const char* path);
  FileBuffer(const FileBuffer&) = delete;
  FileBuffer& operator=(const FileBuffer&) = delete;
  ~FileBuffer() override;

  // Writes what is held and closes the file; false when any step failed.
  bool Close();
  // The step that failed first, and the errno it left.
  Step FailedStep() const { return failed_step_; }
  int Error() const { return error_; }

 protected:
  int_type overflow(int_type byte) override;
  int sync() override;

 private:
  bool Flush();
  void Fail(Step step);

  int descriptor_;
  Step failed_step_ = kNone;
  int error_ = 0;
  // Large, as the compile writes files of up to hundreds of megabytes;
  // on the heap, as several files are open at once.
  static constexpr int kBufferSize = 1 << 17;
  std::unique_ptr<char[]> buffer_;
};

#endif
