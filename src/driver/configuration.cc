#include "driver/configuration.h"

#include <signal.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <string>
#include <functional>
#include <sstream>
#include <vector>

#include "driver/fw_file.h"
#include "lang/parser.h"
#include "lang/scanner.h"
#include "model/address.h"
#include "model/day_of_week.h"
#include "model/message_subject.h"
#include "model/range_list.h"
#include "model/registry.h"
#include "output/output_file.h"
#include "output/output_files.h"
#include "policy/policy.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "services/discriminator.h"
#include "services/filter.h"

Configuration* Config = nullptr;

Configuration::Configuration(FWFile* file)
    : registry_(new Registry),
      policy_(new Policy(file)),
      includes_(new TList<Entity>),
      excludes_(new TList<Entity>),
      forward_filters_(new TList<Filter>),
      reverse_filters_(new TList<Filter>),
      discriminators_(new TList<Discriminator>),
      group_services_(new TList<Entity>),
      engine_parameters_(new TList<int>),
      discriminator_parameters_(new TList<int>),
      address_words_(new TList<unsigned>),
      days_(new TList<DayOfWeek>),
      hours_(new RangeList) {}

// After a complete statement the scratch lists are empty; elements are left
// in them only by a statement that a syntax error cut off, and those belong
// to nobody else.
template <class T>
static void DeleteScratchList(TList<T>* list) {
  list->Delete_Data();
  delete list;
}

Configuration::~Configuration() {
  DeleteAdminRules();
  delete registry_;
  delete policy_;
  DeleteScratchList(includes_);
  DeleteScratchList(excludes_);
  DeleteScratchList(forward_filters_);
  DeleteScratchList(reverse_filters_);
  DeleteScratchList(discriminators_);
  DeleteScratchList(group_services_);
  DeleteScratchList(engine_parameters_);
  DeleteScratchList(discriminator_parameters_);
  DeleteScratchList(address_words_);
  DeleteScratchList(days_);
  delete hours_;
}

RangeList* Configuration::TakeHours() {
  RangeList* taken = hours_;
  hours_ = new RangeList;
  return taken;
}

namespace {

// The path that positions in `file` name; the strings live for the run.
const char* PositionPath(const FWFile& file) {
  static std::deque<std::string> paths;
  char* path = file.Verspath();
  paths.emplace_back(path != nullptr ? path : "<stdin>");
  free(path);
  return paths.back().c_str();
}

}  // namespace

// Runs the parser over one file; 240 when it can't be opened, else 0.
int Configuration::ParseFile(FWFile& file) {
  FILE* input = file.readFILE();
  if (input == nullptr) return 240;
  yyin = input;
  yyfilename = PositionPath(file);
  yyparse();
  if (input != stdin) fclose(input);
  return 0;
}

int Configuration::Parse() {
  FWFile& main_file = *policy_->File();
  if (ParseFile(main_file) != 0) return 240;
  if (parse_errors_ != 0) return 241;
  FWFile* load_file = policy_->Load();
  if (load_file == nullptr) {
    registry_->File(&main_file);
    return 0;
  }
  registry_->File(load_file);
  return ParseLoadFile(main_file, *load_file);
}

// A locked policy locks the registry it loads as well; a reader of the
// policy must be able to read the registry too.
int Configuration::ParseLoadFile(FWFile& main_file, FWFile& load_file) {
  if (main_file.getlock() != nullptr) {
    load_file.setlock();
    if (main_file.ReadLock() == 104 && load_file.AcquireReadLock() != 101) return 242;
  }
  if (ParseFile(load_file) != 0) return 240;
  return parse_errors_ != 0 ? 241 : 0;
}

int Configuration::Compile(const char* screen, std::ostream& out) {
  int code = Verify(screen, out);
  if (code != 0) return code;
  return OutputFiles::Generate(*this_screen_, *policy_, *registry_, screen_admin_rules_, policy_admin_rules_);
}

int Configuration::Verify(const char* screen, std::ostream& out) {
  // The lookup is made by an entity without a screen, so it finds a screen
  // object that isn't itself bound to another screen.
  Entity wanted(screen, nullptr, nullptr, 0);
  this_screen_ = static_cast<Ferrowall*>(wanted.FindSelf(registry_->Screens(), 0));
  if (this_screen_ == nullptr) return 239;
  OutputFile::ResetFailures();
  int code = CompileStages(out);
  if (code != 0) return code;
  registry_->OptimizeRules();
  registry_->OrderServicesByStateEngine();
  registry_->UnMark();
  return registry_->UniqueTimes() != 0 ? 236 : 0;
}

// The verification and distribution stages: each reports its problems and
// the compile stops behind the first stage that found any.
int Configuration::CompileStages(std::ostream& out) {
  const int kCompilerError = 245;
  MessageSubject subject(*this_screen_);
  if (this_screen_->FigureVirtualName(*registry_, out) != 0) return kCompilerError;
  if (registry_->Verify(this_screen_, out) != 0) return kCompilerError;
  if (policy_->Verify(*this_screen_, out, *registry_) != 0) return kCompilerError;
  if (this_screen_->Verify(*registry_, out) != 0) return kCompilerError;
  if (this_screen_->HA_IP() != 0) MarkHARules();
  if (RulesToInterface(*this_screen_) != 0) return kCompilerError;
  return 0;
}

// Rules towards the protected address of the screen's high-availability
// interface (the last one, should there be several) carry the HA flag.
void Configuration::MarkHARules() {
  Interface* ha_interface = registry_->LastHAInterface();
  if (ha_interface != nullptr) policy_->SetHARules(*ha_interface->ProtectedAddress());
}

void Configuration::DeleteAdminRules() {
  for (TList<Entity>** rules : {&screen_admin_rules_, &policy_admin_rules_}) {
    if (*rules == nullptr) continue;
    (*rules)->Delete_Data();
    delete *rules;
    *rules = nullptr;
  }
}

int Configuration::RulesToInterface(Ferrowall& screen) {
  DeleteAdminRules();
  screen_admin_rules_ = screen.GenerateAdminRules(*registry_);
  if (screen_admin_rules_ == nullptr) return 1;
  policy_admin_rules_ = policy_->GenerateAdminRules(screen, *registry_);
  if (policy_admin_rules_ == nullptr) return 1;
  registry_->AddAdminRules(*screen_admin_rules_);
  registry_->AddAdminRules(*policy_admin_rules_);
  if (registry_->AddHARules(screen) != 0) return 1;
  registry_->AddRules(policy_->Rules());
  registry_->AddEtherRules(policy_->EtherRules());
  return 0;
}

void Configuration::Print(std::ostream& out) const {
  const FWFile* registry_file = registry_->File();
  registry_->Write(out, registry_file != nullptr ? registry_file->Version() : 0);
  policy_->Write(out, nullptr, policy_->Load(), 1);
}

namespace {

// Holds off the signals that would end the program halfway through a save;
// one that arrives meanwhile is delivered when the save is done.
class SignalHold {
 public:
  SignalHold() {
    sigset_t held;
    sigemptyset(&held);
    for (int signal_number : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&held, signal_number);
    sigprocmask(SIG_BLOCK, &held, &before_);
  }
  ~SignalHold() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  SignalHold(const SignalHold&) = delete;
  SignalHold& operator=(const SignalHold&) = delete;

 private:
  sigset_t before_;
};

// Makes the next version of `file`, whose text `render` writes once the new
// version number is known, into the base file and the numbered copy.
int WriteNewVersion(FWFile& file, const std::function<void(std::ostream&)>& render, std::string* failed) {
  std::ofstream* base = nullptr;
  std::ofstream* copy = nullptr;
  char* copy_path = nullptr;
  if (file.newversion(&base, &copy, &copy_path) < 0) return 237;
  std::ostringstream text;
  render(text);
  char* base_path = file.Basepath();
  int code = 0;
  for (auto [stream, path] : {std::make_pair(base, base_path), std::make_pair(copy, copy_path)}) {
    *stream << text.str();
    stream->close();
    if (stream->fail() && code == 0) {
      *failed = path;
      code = 237;
    }
    delete stream;
  }
  free(base_path);
  free(copy_path);
  return code;
}

}  // namespace

int Configuration::Save(std::string* failed) {
  if (policy_->ReadonlyVersion()) return 235;
  FWFile& policy_file = *policy_->File();
  FWFile& registry_file = registry_->File() != nullptr ? *registry_->File() : policy_file;
  std::vector<FWFile*> files = {&policy_file};
  if (&registry_file != &policy_file) files.push_back(&registry_file);
  SignalHold hold;
  int code = 0;
  for (FWFile* file : files)
    if (file->AcquireWriteLock() != 102) code = 243;
  if (code == 0) code = SaveLocked(policy_file, registry_file, failed);
  for (FWFile* file : files) file->FreeWriteLock(0);
  return code;
}

// The registry goes first, so that the policy names the registry version it
// was saved with.  Without a LOAD both share one file.
int Configuration::SaveLocked(FWFile& policy_file, FWFile& registry_file, std::string* failed) {
  bool embedded = &registry_file == &policy_file;
  if (!embedded) {
    int code = WriteNewVersion(
        registry_file, [&](std::ostream& out) { registry_->Write(out, registry_file.Version()); }, failed);
    if (code != 0) return code;
  }
  return WriteNewVersion(
      policy_file,
      [&](std::ostream& out) {
        if (embedded) registry_->Write(out, policy_file.Version());
        policy_->Write(out, nullptr, policy_->Load(), embedded);
      },
      failed);
}

void Configuration::Rename(Config_Objects kind, const char* old_name, const char* new_name, const char* screen) {
  registry_->Rename(kind, old_name, new_name, screen);
}

void Configuration::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  registry_->RenameReference(kind, old_name, new_name);
  policy_->RenameReference(kind, old_name, new_name);
}

int Configuration::IsReferenced(Config_Objects kind, const char* name, int print) const {
  return registry_->IsReferenced(kind, name, print) + policy_->IsReferenced(kind, name, print);
}
