// What the fuzz targets share: the input as a C stream, and a private
// scratch directory for the code that works on files.  The targets run
// under libFuzzer, and under the replay program in the normal build.
#ifndef FW_FUZZ_FUZZ_INPUT_H
#define FW_FUZZ_FUZZ_INPUT_H

#include <ftw.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

// A read stream over a copy of the bytes; the scanner reads C streams.  An
// empty input is a stream at its end (fmemopen refuses a size of 0).
inline FILE* OpenBytes(const std::string& bytes) {
  if (bytes.empty()) return fopen("/dev/null", "r");
  return fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "r");
}

// Empties `directory`, keeping the directory itself.
inline void EmptyDirectory(const std::string& directory) {
  auto remove_entry = [](const char* path, const struct stat*, int, struct FTW* at) {
    return at->level > 0 ? ::remove(path) : 0;
  };
  nftw(directory.c_str(), remove_entry, 16, FTW_DEPTH | FTW_PHYS);
}

// A directory made on first use below $TMPDIR, private to this process and
// removed when it exits normally.  The name is never freed, so that it is
// still there when the removal runs.
inline const std::string& ScratchDirectory() {
  static const std::string* path = [] {
    const char* base = getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr ? base : "/tmp") + "/fw_fuzz.XXXXXX";
    auto* made = new std::string(mkdtemp(&pattern[0]));
    atexit([] {
      EmptyDirectory(ScratchDirectory());
      rmdir(ScratchDirectory().c_str());
    });
    return made;
  }();
  return *path;
}

#endif
