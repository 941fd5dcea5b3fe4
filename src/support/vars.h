// The variable store: settings of the product's programs, one file for each
// variable in a ".ezdb" directory tree.  A variable is named by up to four
// levels (system, program, program group, name); its file lies at
//   vars_path/.sys/<sys>/.prg/<prg>/.pgrp/<pgrp>/<name>
// with only the levels it has, and holds one `vars` in attribute text.
//
// Lookups return 0 when found, 1 when there is no such (enabled, undeleted)
// variable and -1 with errno set on errors; they log what went wrong.
#ifndef FW_SUPPORT_VARS_H
#define FW_SUPPORT_VARS_H

#include <utility>
#include <vector>

#include "support/attrib.h"

// Paths of the store, all set by vars_setroot; directories end in "/".
extern Xstring root_path;     // the etc directory or the given root
extern Xstring active0_path;  // base_path + "/.active0/"
extern Xstring ezdb0_path;    // active0_path + ".ezdb"
extern Xstring vars0_path;    // ezdb0_path + "/" + directory name
extern Xstring active_path;   // root + ".active/", or active0_path without it
extern Xstring domain_path;   // root + "configs/<domain or default>/"
extern Xstring ezdb_path;     // (active or domain path) + ".ezdb"
extern Xstring vars_path;     // ezdb_path + "/" + directory name

// Sets the paths.  A null root means the etc directory; `active` chooses
// the active configuration over the domain's.  A domain that is "." or
// holds a "/" is itself the location of the store, and the mode stays.
int vars_setroot(const char* root, int active, const char* domain);
// Replaces the directory name below ".ezdb" ("vars.d" by default).
void vars_setdir(const char* name);
const char* vars_getdir();
const char* active_getroot();
const char* domain_getroot();
// vars_setroot(root, 1, domain): the root of the store and of the user data.
int user_setroot(const char* root, int active, const char* domain);

// In active mode, points vars_path at the ".active0" tree for a second
// lookup; returns 1, or 0 when it did nothing (not active, or pushed).
int vars_push0();
// Undoes vars_push0.  With `found` (the name of what the second lookup
// found), notes in ".active_defaulted" that the fallback was used and logs
// it, at most once an hour.
void vars_pop0(const char* found);

// The hierarchy levels in order, with each level's directory prefix as the
// value; parsed once.
const attrib* vars_hierP();

// One stored variable: its attributes, hierarchy levels first.
class vars {
 public:
  explicit vars(const char* text);
  vars(const char* text, Xstring& remainder);
  explicit vars(const attrib* list);  // copies the list
  vars(const vars& other);
  vars& operator=(const vars&) = delete;
  ~vars();

  // The attributes; null for an object whose text or hierarchy was bad.
  attrib* list() const { return list_; }
  // "{ " + attributes + "};"
  Xstring printable() const;
  // "level=value ..." over the hierarchy attributes.
  const char* name();
  bool match(const attrib* pattern) const { return list_ != nullptr && list_->match(pattern); }
  // Marks the object deleted, with a new time stamp.
  void remove();
  // Sets "tstamp" to now; with `mode` 0 only when there is none yet.
  void timestamp(int mode);

 private:
  void parse(const char* text, Xstring& remainder);
  void validate();

  attrib* list_ = nullptr;
  Xstring name_;
};

// The (name, value) pairs of a multi-valued variable.
using vallist = std::vector<std::pair<Xstring, Xstring>>;

// The value of variable `name`, its levels given or null.  A sys that starts
// with "?" means this screen.  `found_name`, when given, receives the
// object's name with its quotes escaped.
int vars_get_value(const char* sys, const char* prg, const char* pgrp, const char* name, Xstring& value,
                   Xstring* found_name);
// The same for a variable with a "values" struct; `list` gets its pairs
// (and is empty unless the result is 0).
int vars_get_values(const char* sys, const char* prg, const char* pgrp, const char* name, vallist& list,
                    Xstring* found_name);

#endif
