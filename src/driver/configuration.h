// Configuration is the root of all data of a run: it owns the Registry and
// the Policy, runs the parser passes that fill them and lays down, in
// Compile, the one order of the compile's stages.
#ifndef FW_DRIVER_CONFIGURATION_H
#define FW_DRIVER_CONFIGURATION_H

#include <ostream>
#include <string>

#include "model/entity.h"

class DayOfWeek;
class Discriminator;
class RangeList;
class Ferrowall;
class Filter;
class FWFile;
class Policy;
class Registry;

class Configuration {
 public:
  // Takes over `file`, the main input.
  explicit Configuration(FWFile* file);
  Configuration(const Configuration&) = delete;
  Configuration& operator=(const Configuration&) = delete;
  ~Configuration();

  // Parses the main input and then the file named by its LOAD statement.
  // Returns 0 or the code of the failure (240 unreadable input, 241 errors
  // in the text, 242 no read lock on the load file).
  int Parse();
  // Compiles for `screen`, reporting problems on `out`.  Returns 0 or the
  // code of the failure.
  int Compile(const char* screen, std::ostream& out);
  // The same without the output files: every stage up to them, so that the
  // distributed rules are in the interfaces' lists.  The proxy
  // configurations are still written into the working directory.
  int Verify(const char* screen, std::ostream& out);
  // Distributes the rules, administrative ones first, to the interfaces;
  // 1 when a stage inside fails.
  int RulesToInterface(Ferrowall& screen);

  // Administrative operations; the compile needs none of them.
  //
  // The registry file and then the policy file, as one text that reads back
  // into this configuration.
  void Print(std::ostream& out) const;
  // Writes the registry and the policy back as new versions of the files
  // they came from, under write locks and with the signals 1, 2 and 15 held
  // off meanwhile.  Returns 0, 235 for a policy that is a stored copy, 243
  // without a write lock, or 237 with the path into `failed` when a file
  // can't be written.
  int Save(std::string* failed);
  // Renames the object `old_name` of `kind` defined for `screen`; the
  // references to it are RenameReference's.
  void Rename(Config_Objects kind, const char* old_name, const char* new_name, const char* screen);
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name);
  // How many objects and policy entries refer to the object; with `print`
  // each of them writes its line on the standard output.
  int IsReferenced(Config_Objects kind, const char* name, int print) const;

  Registry* TheRegistry() const { return registry_; }
  Policy* ThePolicy() const { return policy_; }
  Ferrowall* ThisScreen() const { return this_screen_; }
  int ParseErrors() const { return parse_errors_; }
  // Counts one error of the text; the parser and rejecting actions call it.
  void ParseError() { ++parse_errors_; }

  // Scratch lists of the grammar.  Each collects the elements of one clause
  // and is handed over whole, through its Take function, to the object the
  // statement builds; a new empty list takes its place at once.
  TList<Entity>& Includes() { return *includes_; }
  TList<Entity>* TakeIncludes() { return Take(includes_); }
  TList<Entity>& Excludes() { return *excludes_; }
  TList<Entity>* TakeExcludes() { return Take(excludes_); }
  TList<Filter>& ForwardFilters() { return *forward_filters_; }
  TList<Filter>* TakeForwardFilters() { return Take(forward_filters_); }
  TList<Filter>& ReverseFilters() { return *reverse_filters_; }
  TList<Filter>* TakeReverseFilters() { return Take(reverse_filters_); }
  TList<Discriminator>& Discriminators() { return *discriminators_; }
  TList<Discriminator>* TakeDiscriminators() { return Take(discriminators_); }
  TList<Entity>& GroupServices() { return *group_services_; }
  TList<Entity>* TakeGroupServices() { return Take(group_services_); }
  TList<int>& EngineParameters() { return *engine_parameters_; }
  TList<int>* TakeEngineParameters() { return Take(engine_parameters_); }
  TList<int>& DiscriminatorParameters() { return *discriminator_parameters_; }
  TList<int>* TakeDiscriminatorParameters() { return Take(discriminator_parameters_); }
  TList<unsigned>& AddressWords() { return *address_words_; }
  TList<unsigned>* TakeAddressWords() { return Take(address_words_); }
  TList<DayOfWeek>& Days() { return *days_; }
  TList<DayOfWeek>* TakeDays() { return Take(days_); }
  RangeList& Hours() { return *hours_; }
  RangeList* TakeHours();

 private:
  template <class T>
  static TList<T>* Take(TList<T>*& list) {
    TList<T>* taken = list;
    list = new TList<T>;
    return taken;
  }
  int ParseFile(FWFile& file);
  int ParseLoadFile(FWFile& main_file, FWFile& load_file);
  int SaveLocked(FWFile& policy_file, FWFile& registry_file, std::string* failed);
  int CompileStages(std::ostream& out);
  void MarkHARules();
  void DeleteAdminRules();

  Registry* registry_;
  Policy* policy_;
  Ferrowall* this_screen_ = nullptr;
  int parse_errors_ = 0;
  TList<Entity>* policy_admin_rules_ = nullptr;
  TList<Entity>* screen_admin_rules_ = nullptr;
  TList<Entity>* includes_;
  TList<Entity>* excludes_;
  TList<Filter>* forward_filters_;
  TList<Filter>* reverse_filters_;
  TList<Discriminator>* discriminators_;
  TList<Entity>* group_services_;
  TList<int>* engine_parameters_;
  TList<int>* discriminator_parameters_;
  TList<unsigned>* address_words_;
  TList<DayOfWeek>* days_;
  RangeList* hours_;
};

// The one configuration of the run; the grammar actions reach the object
// store through it, so it is set before parsing starts.
extern Configuration* Config;

#endif
