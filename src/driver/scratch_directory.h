// ScratchDirectory is a new empty directory that is the working directory
// while the object lives, and goes with everything in it afterwards.  The
// administrative commands compile into one, since the compile writes some
// of its files before the output stage.
#ifndef FW_DRIVER_SCRATCH_DIRECTORY_H
#define FW_DRIVER_SCRATCH_DIRECTORY_H

#include <string>

class ScratchDirectory {
 public:
  // Ends the run with the errno status when no directory can be made.
  ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  // Goes back to the directory that was working before.
  ~ScratchDirectory();

 private:
  std::string path_;
  int before_;
};

#endif
