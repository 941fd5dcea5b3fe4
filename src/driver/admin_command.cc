#include "driver/admin_command.h"

#include <getopt.h>

#include <cstdlib>
#include <iostream>

#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "driver/packet_query.h"
#include "driver/positioned_messages.h"
#include "driver/print_error.h"
#include "driver/program.h"
#include "driver/scratch_directory.h"
#include "driver/statement_numbers.h"
#include "lang/parser.h"
#include "lang/scanner.h"
#include "model/message_subject.h"
#include "model/registry.h"
#include "policy/policy.h"
#include "policy/rule.h"
#include "policy/shadowed_rules.h"
#include "support/fwi18n.h"
#include "support/vars.h"

namespace {

const int kDriverSet = 41;
const int kObjectNotFound = 224;

[[noreturn]] void Usage() {
  std::cerr << fwi18n_text(kDriverSet, 1, "Usage")
            << ": fw_config print [-f file] [-o directory]\n"
               "       fw_config save -f file [-o directory]\n"
               "       fw_config list KIND [name] [-s screen] [--names] [-f file] [-o directory]\n"
               "       fw_config refs KIND name [-s screen] [-f file] [-o directory]\n"
               "       fw_config rename KIND old new [-s screen] -f file [-o directory]\n"
               "       fw_config check [-s screen] [-f file] [-o directory]\n"
               "       fw_config query [-s screen] -f file [-o directory] PACKET... | -\n"
               "       fw_config shadowed [-s screen] -f file [-o directory]\n"
               "KIND: addresses, services, engines, screens, interfaces, certificates, keys, times,\n"
               "      rules, nat, access, vpn\n"
               "PACKET: \"interface protocol source[:port] destination[:port] [day HH:MM]\"; - reads them\n"
               "        from the standard input, one a line\n";
  exit(1);
}

}  // namespace

// A kind of the command line: the registry kind or policy list it lists,
// the kind of reference that names it (none for the policy entries, which
// have no name), and whether a rename can follow every reference.
struct AdminCommand::Kind {
  const char* word;
  Config_Objects listed;
  bool in_policy;
  Config_Objects referred;
  bool renamable;
};

namespace {

const Config_Objects kNoReference = static_cast<Config_Objects>(0);

}  // namespace

const AdminCommand::Kind& AdminCommand::KindNamed(const std::string& word) {
  static const Kind kKinds[] = {
      {"addresses", CO_ADDRESS, false, CO_ADDRESS, true},
      {"services", CO_SERVICE, false, CO_SERVICE, true},
      // The engine names in service filters are kept as written when an
      // engine is renamed, so a rename would leave the services naming an
      // engine that is gone.
      {"engines", CO_STATE_ENGINE, false, CO_STATE_ENGINE, false},
      {"screens", CO_SCREEN, false, CO_SCREEN, true},
      {"interfaces", CO_INTERFACE, false, CO_INTERFACE, true},
      {"certificates", CO_CERTIFICATE, false, CO_CERTIFICATE, true},
      {"keys", CO_KEY, false, CO_KEY, true},
      {"times", CO_TIME, false, CO_TIME, true},
      {"rules", CO_RULE, true, kNoReference, false},
      {"nat", CO_NAT, true, kNoReference, false},
      // Local entries, then remote ones, each list with its own positions.
      {"access", CO_ACL_LOCAL, true, kNoReference, false},
      {"vpn", CO_VPN_NODE, true, CO_VPN, true},
  };
  for (const Kind& kind : kKinds)
    if (word == kind.word) return kind;
  Usage();
}

AdminCommand::AdminCommand(int argc, char** argv) {
  static const option kLongOptions[] = {{"names", no_argument, nullptr, 'n'}, {nullptr, 0, nullptr, 0}};
  int letter;
  // Options may stand before, between and after the operands.
  while ((letter = getopt_long(argc, argv, "f:F:o:O:s:S:", kLongOptions, nullptr)) != -1) {
    switch (letter) {
      case 'f': case 'F': input_ = optarg; break;
      case 'o': case 'O': directory_ = optarg; break;
      case 's': case 'S': screen_ = optarg; break;
      case 'n': names_ = true; break;
      default: Usage();
    }
  }
  if (optind >= argc) Usage();
  command_ = argv[optind++];
  operands_.assign(argv + optind, argv + argc);
  bool takes_kind = command_ == "list" || command_ == "refs" || command_ == "rename";
  if (takes_kind && !operands_.empty()) kind_ = &KindNamed(operands_[0]);
  CheckArguments();
}

// Each command's operands: its count, which kinds it takes, and whether it
// writes, which needs a named file to make new versions of.
void AdminCommand::CheckArguments() const {
  size_t count = operands_.size();
  bool writes = command_ == "save" || command_ == "rename";
  bool reads_file = writes || command_ == "query" || command_ == "shadowed";
  if (reads_file && input_ == nullptr) Usage();
  if (names_ && command_ != "list") Usage();
  if (command_ == "print" || command_ == "save" || command_ == "check" || command_ == "shadowed") {
    if (count != 0) Usage();
    return;
  }
  if (command_ == "query") {
    if (count == 0) Usage();
    return;
  }
  if (kind_ == nullptr) Usage();
  const Kind& kind = *kind_;
  if (command_ == "list") {
    if (count > 2 || (names_ && count == 2)) Usage();
    if (count == 2 && kind.in_policy) Position();
  } else if (command_ == "refs") {
    if (count != 2 || kind.referred == kNoReference) Usage();
  } else if (command_ == "rename") {
    if (count != 3 || !kind.renamable) Usage();
  } else {
    Usage();
  }
}

int AdminCommand::Position() const {
  if (operands_.size() < 2) return 0;
  const std::string& text = operands_[1];
  char* end = nullptr;
  long position = strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || position < 1 || position > 1000000000) Usage();
  return static_cast<int>(position);
}

bool AdminCommand::Writes() const { return command_ == "save" || command_ == "rename"; }

int AdminCommand::Run() {
  user_setroot(nullptr, 1, nullptr);
  if (command_ == "check" || command_ == "query" || command_ == "shadowed") return RunCompiled();
  int code = ReadConfiguration(nullptr);
  if (code != 0) return code;
  if (command_ == "print") return Print(*Config);
  if (command_ == "save") return Save(*Config);
  if (command_ == "list") return List(*Config);
  if (command_ == "refs") return Refs(*Config);
  return Rename(*Config);
}

namespace {

SourcePosition TokenPosition() { return {yyfilename, yylineno, yycolumn}; }

SourcePosition SubjectPosition() { return MessageSubject::Current(); }

// Sends the standard error stream through `messages` while it lives.
class ErrorsThrough {
 public:
  explicit ErrorsThrough(PositionedMessages& messages) : messages_(messages), before_(std::cerr.rdbuf(&messages)) {}
  ~ErrorsThrough() {
    messages_.Flush();
    std::cerr.rdbuf(before_);
  }
  ErrorsThrough(const ErrorsThrough&) = delete;
  ErrorsThrough& operator=(const ErrorsThrough&) = delete;

 private:
  PositionedMessages& messages_;
  std::streambuf* before_;
};

}  // namespace

int AdminCommand::ReadConfiguration(PositionedMessages* messages) const {
  if (directory_ != nullptr) program_enter_directory(directory_);
  FWFile* file = new FWFile(nullptr, input_);
  // A writer holds the read lock from the start, so that nobody saves the
  // files between its reading and its writing.
  if (Writes()) {
    file->setlock();
    if (file->AcquireReadLock() != 101) {
      delete file;
      PrintError(242, nullptr);
      return 242;
    }
  }
  Config = new Configuration(file);
  int code;
  if (messages == nullptr) {
    code = Config->Parse();
  } else {
    ErrorsThrough errors(*messages);
    messages->Locate(TokenPosition, true);
    code = Config->Parse();
  }
  PrintError(code, nullptr);
  return code;
}

// The host and screen are chosen as the compiler chooses them.  Every
// message of the parse and of the compile stands behind the position it
// concerns; the closing code is the compiler's, and stands alone.
int AdminCommand::RunCompiled() const {
  program_select_host();
  std::string screen = program_screen(screen_);
  PositionedMessages messages(std::cerr.rdbuf());
  int code = ReadConfiguration(&messages);
  if (code != 0) return code;
  // Numbered before the compile drops the entries of other screens.
  Policy& policy = *Config->ThePolicy();
  StatementNumbers rules(policy.Rules().Items());
  StatementNumbers nats(policy.Nats().Items());
  {
    ErrorsThrough errors(messages);
    messages.Locate(SubjectPosition, false);
    ScratchDirectory scratch;
    code = Config->Verify(screen.c_str(), std::cerr);
  }
  if (code != 0) {
    PrintError(code, screen.c_str());
    return code;
  }
  if (command_ == "query") return Query(*Config, rules, nats);
  if (command_ == "shadowed") return Shadowed(*Config, rules);
  return 0;
}

int AdminCommand::Query(const Configuration& config, const StatementNumbers& rules,
                        const StatementNumbers& nats) const {
  PacketQuery query(config, rules, nats);
  bool answered = true;
  auto ask = [&](const std::string& text) { answered = query.Answer(text, std::cout) && answered; };
  for (const std::string& operand : operands_) {
    if (operand != "-") {
      ask(operand);
      continue;
    }
    for (std::string line; std::getline(std::cin, line);)
      if (line.find_first_not_of(" \t\r") != std::string::npos) ask(line);
  }
  std::cout.flush();
  return answered ? 0 : 1;
}

int AdminCommand::Shadowed(const Configuration& config, const StatementNumbers& rules) const {
  for (const ShadowedRules::Finding& finding : ShadowedRules::Find(config.ThePolicy()->Rules().Items())) {
    rules.Describe(std::cout, "rule", *finding.rule);
    std::cout << "  " << "shadowed by";
    const char* separator = " ";
    for (const Rule* covering : finding.covering) {
      std::cout << separator;
      rules.Name(std::cout, "rule", *covering);
      separator = ", ";
    }
    std::cout << '\n';
  }
  std::cout.flush();
  return 0;
}

int AdminCommand::Print(Configuration& config) const {
  config.Print(std::cout);
  std::cout.flush();
  if (!std::cout) {
    PrintError(237, "standard output");
    return 237;
  }
  return 0;
}

int AdminCommand::Save(Configuration& config) const {
  std::string failed;
  int code = config.Save(&failed);
  PrintError(code, code == 237 ? failed.c_str() : nullptr);
  return code;
}

int AdminCommand::List(Configuration& config) const {
  const char* name = operands_.size() == 2 ? operands_[1].c_str() : nullptr;
  Policy& policy = *config.ThePolicy();
  if (kind_->listed == CO_VPN_NODE && names_) {
    policy.EnumerateName();
  } else if (kind_->in_policy) {
    // Policy entries have no names; they are told apart by their positions.
    policy.EnumerateNumber(kind_->listed, Position());
    if (kind_->listed == CO_ACL_LOCAL) policy.EnumerateNumber(CO_ACL_REMOTE, Position());
  } else if (names_) {
    config.TheRegistry()->EnumerateName(kind_->listed);
  } else {
    config.TheRegistry()->Enumerate(kind_->listed, name, screen_);
  }
  return 0;
}

int AdminCommand::CheckExists(const Configuration& config) const {
  const char* name = operands_[1].c_str();
  bool exists = kind_->in_policy ? config.ThePolicy()->HoldsVPN(name)
                                 : config.TheRegistry()->Holds(kind_->listed, name, screen_);
  if (exists) return 0;
  PrintError(kObjectNotFound, name);
  return kObjectNotFound;
}

// References name objects without a screen, so the report is the same for
// every screen; the screen only says which object must exist.
int AdminCommand::Refs(Configuration& config) const {
  int code = CheckExists(config);
  if (code != 0) return code;
  config.IsReferenced(kind_->referred, operands_[1].c_str(), 1);
  return 0;
}

int AdminCommand::Rename(Configuration& config) const {
  int code = CheckExists(config);
  if (code != 0) return code;
  const char* old_name = operands_[1].c_str();
  const char* new_name = operands_[2].c_str();
  config.Rename(kind_->listed, old_name, new_name, screen_);
  config.RenameReference(kind_->referred, old_name, new_name);
  return Save(config);
}
