// fw_config, the administrative command beside the compiler: it reads a
// configuration as the compiler does and prints it in saved form, saves it
// as new versions, lists the objects of a kind, reports who refers to an
// object, and renames an object with every reference to it.  Over a
// compile without output files it checks a configuration with positioned
// messages, tells which rule decides given packets, and lists the rules
// that earlier rules shadow.
#ifndef FW_DRIVER_ADMIN_COMMAND_H
#define FW_DRIVER_ADMIN_COMMAND_H

#include <string>
#include <vector>

#include "model/enumerations.h"

class Configuration;
class PositionedMessages;
class StatementNumbers;

class AdminCommand {
 public:
  // Reads the command line; a bad one writes the usage text to the
  // standard error stream and ends the run with status 1.
  AdminCommand(int argc, char** argv);
  // Enters the directory, reads the configuration and carries the command
  // out.  Returns the exit status; failures are reported with the
  // compiler's messages and codes.
  int Run();

 private:
  struct Kind;
  // The kind named by `word`, or the usage text and status 1.
  static const Kind& KindNamed(const std::string& word);
  void CheckArguments() const;
  int Print(Configuration& config) const;
  int Save(Configuration& config) const;
  int List(Configuration& config) const;
  int Refs(Configuration& config) const;
  int Rename(Configuration& config) const;
  // check, query and shadowed: compiles, then answers.
  // Whether the command writes new versions of the files it read.
  bool Writes() const;
  // Enters the directory and reads the configuration into Config, the
  // messages of the parse through `messages` when given.  Returns 0, or
  // the code of the failure after reporting it.
  int ReadConfiguration(PositionedMessages* messages) const;
  int RunCompiled() const;
  int Query(const Configuration& config, const StatementNumbers& rules, const StatementNumbers& nats) const;
  int Shadowed(const Configuration& config, const StatementNumbers& rules) const;
  // 0 when the object named by the arguments exists, else 224 reported.
  int CheckExists(const Configuration& config) const;
  // The position that a listing of a policy kind asks for; 0 for all.
  int Position() const;

  std::string command_;
  std::vector<std::string> operands_;
  const Kind* kind_ = nullptr;
  const char* input_ = nullptr;
  const char* directory_ = nullptr;
  const char* screen_ = nullptr;
  bool names_ = false;
};

#endif
