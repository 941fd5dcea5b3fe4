// Replays saved fuzz inputs through a fuzz target without libFuzzer: every
// file below the directories named on the command line, in name order.  A
// fault aborts the program, so the test that runs it fails.
#include <dirent.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void CollectFiles(const std::string& directory, std::vector<std::string>* files) {
  DIR* dir = opendir(directory.c_str());
  if (dir == nullptr) return;
  while (dirent* entry = readdir(dir)) {
    std::string name = entry->d_name;
    if (name[0] == '.') continue;
    std::string path = directory + "/" + name;
    if (entry->d_type == DT_DIR) CollectFiles(path, files);
    else files->push_back(path);
  }
  closedir(dir);
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> files;
  for (int at = 1; at < argc; ++at) CollectFiles(argv[at], &files);
  std::sort(files.begin(), files.end());
  for (const std::string& path : files) {
    // Named first, so that a fault is seen with the input that caused it.
    fprintf(stderr, "%s\n", path.c_str());
    std::string input = Contents(path);
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
  }
  printf("replayed %zu inputs\n", files.size());
  // No input at all means the directories were lost, not that all is well.
  return files.empty() ? 1 : 0;
}
