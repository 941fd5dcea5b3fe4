// Fuzz target: the whole compile, from the text to the written files, in
// a scratch directory.  The input is a configuration text, optionally
// followed by a line "#%host SCREEN" and the host description the screen
// SCREEN is compiled for; without it the screen is "gate" on a host with
// no devices.  The line is a comment to the language, so any configuration
// text is an input as it stands.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "crypto/certificate.h"
#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "fuzz/fuzz_input.h"
#include "lang/parser.h"
#include "lang/scanner.h"
#include "policy/rule.h"
#include "services/filter_params.h"
#include "services/state_engine_internal.h"
#include "support/host_description.h"

namespace {

const char kHostMark[] = "\n#%host";

struct CompileInput {
  std::string text;
  std::string screen = "gate";
  std::string host;
};

CompileInput Split(const std::string& bytes) {
  CompileInput input;
  size_t mark = bytes.find(kHostMark);
  input.text = bytes.substr(0, mark);
  if (mark == std::string::npos) return input;
  std::istringstream rest(bytes.substr(mark + sizeof kHostMark - 1));
  std::string screen;
  rest >> screen;
  if (!screen.empty()) input.screen = screen;
  std::getline(rest, screen);
  input.host.assign(std::istreambuf_iterator<char>(rest), std::istreambuf_iterator<char>());
  return input;
}

// Each input starts from the numbering a fresh process has, so that a
// saved input compiles the same when replayed alone.
void ResetCounters() {
  Rule::ResetUniqueId();
  FilterParams::ResetUniqueId();
  StateEngineInternal::ResetUniqueId();
  Certificate::ResetUniqueId();
}

bool ParseInto(Configuration& config, const std::string& text) {
  Config = &config;
  FILE* stream = OpenBytes(text);
  yyrestart(stream);
  yyparse();
  fclose(stream);
  return config.ParseErrors() == 0;
}

// The compile writes into the current directory; the fuzzer keeps its
// corpus by relative names, so the directory is entered for the compile
// alone.
class InScratchDirectory {
 public:
  InScratchDirectory() : home_(open(".", O_RDONLY | O_DIRECTORY)) { entered_ = chdir(ScratchDirectory().c_str()) == 0; }
  ~InScratchDirectory() {
    EmptyDirectory(ScratchDirectory());
    if (fchdir(home_) != 0) abort();
    close(home_);
  }
  bool Entered() const { return entered_; }

 private:
  int home_;
  bool entered_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CompileInput input = Split(std::string(reinterpret_cast<const char*>(data), size));
  auto host = std::make_unique<HostDescription>();
  std::string error;
  if (!host->Parse(input.host, "host", &error)) return 0;
  Host::Use(std::move(host));
  ResetCounters();
  InScratchDirectory scratch;
  if (!scratch.Entered()) abort();
  Configuration config(new FWFile(nullptr, nullptr));
  if (ParseInto(config, input.text)) config.Compile(input.screen.c_str(), std::cerr);
  Config = nullptr;
  return 0;
}
