// Runs the built fw_compiler (or fw_config) in a private temporary directory, with
// FERROWALL_ETC pointing into it, and captures what it printed and its exit
// status.  The directory and everything in it vanish with the object.
#ifndef FW_TESTS_COMMON_COMPILER_RUN_H
#define FW_TESTS_COMMON_COMPILER_RUN_H

#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

class CompilerRun {
 public:
  CompilerRun() {
    char pattern[] = "/tmp/fw_compiler_run_XXXXXX";
    root_ = mkdtemp(pattern);
    mkdir(Path("etc").c_str(), 0755);
    mkdir(Path("out").c_str(), 0755);
  }
  ~CompilerRun() { std::system(("rm -rf '" + root_ + "'").c_str()); }
  CompilerRun(const CompilerRun&) = delete;
  CompilerRun& operator=(const CompilerRun&) = delete;

  // `relative` inside the private directory.
  std::string Path(const std::string& relative) const { return root_ + "/" + relative; }
  void Write(const std::string& relative, const std::string& text) const {
    std::ofstream(Path(relative), std::ios::binary) << text;
  }
  std::string Read(const std::string& relative) const {
    std::ifstream file(Path(relative), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }
  bool Exists(const std::string& relative) const {
    struct stat status;
    return stat(Path(relative).c_str(), &status) == 0;
  }

  // Runs `fw_compiler ARGUMENTS` from the private directory, the standard
  // input read from `input` (a path inside it, or /dev/null).  `environment`
  // is prepended to the command as VAR=value words.
  int Run(const std::string& arguments, const std::string& input = "/dev/null",
          const std::string& environment = "") {
    return RunBinary(FW_COMPILER_BINARY, arguments, input, environment);
  }
  // The same for `fw_config ARGUMENTS`.
  int RunConfig(const std::string& arguments, const std::string& input = "/dev/null",
                const std::string& environment = "") {
    return RunBinary(FW_CONFIG_BINARY, arguments, input, environment);
  }
  const std::string& Out() const { return out_; }
  const std::string& Err() const { return err_; }

 private:
  int RunBinary(const char* binary, const std::string& arguments, const std::string& input,
                const std::string& environment) {
    std::string command = "cd '" + root_ + "' && env -u FERROWALL_HOST FERROWALL_ETC='" + Path("etc") + "' " +
                          environment + " '" + binary + "' " + arguments + " < " + input + " > '" +
                          Path("stdout") + "' 2> '" + Path("stderr") + "'";
    int status = std::system(command.c_str());
    out_ = Read("stdout");
    err_ = Read("stderr");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::string root_;
  std::string out_;
  std::string err_;
};

#endif
