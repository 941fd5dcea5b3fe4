#include "support/vars.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>

#include "support/fwi18n.h"
#include "support/fwlog.h"
#include "support/settings.h"
#include "support/vars_io.h"

Xstring root_path;
Xstring active0_path;
Xstring ezdb0_path;
Xstring vars0_path;
Xstring active_path;
Xstring domain_path;
Xstring ezdb_path;
Xstring vars_path;

namespace {

constexpr unsigned kVarsError = attr_fac | 3 | 0x10000;

int active_mode = 0;
Xstring vars_dir("vars.d");
bool pushed = false;
Xstring pushed_vars_path;

bool is_directory(const char* path) {
  struct stat status;
  return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

Xstring with_slash(const char* path) {
  size_t length = strlen(path);
  return length > 0 && path[length - 1] == '/' ? Xstring(path) : Xstring(path) + "/";
}

void derive_vars_paths() {
  vars_path = ezdb_path + "/" + vars_dir;
  vars0_path = ezdb0_path + "/" + vars_dir;
}

// The position of `name` in the hierarchy, or -1 for other attributes.
int level_of(const Xstring& name) {
  int level = 0;
  for (const attrib* h = vars_hierP(); h != nullptr; h = h->next, ++level) {
    if (h->name == name) return level;
  }
  return -1;
}

void log_invalid(const attrib& level, const char* problem, const attrib* list) {
  a_syslog(kVarsError, fwi18n_text(186, 17, "%s: %s%s '%s'"), "vars_validate", level.name.c_str(), problem,
           Xs_safe(list->printable()).c_str());
}

// "name:utf8=\"value\"; " for a level that is given.
std::string level_pattern(const char* level, const char* value) {
  if (value == nullptr) return "";
  return std::string(level) + ":utf8=\"" + Xs_enquote(value).c_str() + "\"; ";
}

// The first object of a read walk, copied out of the cursor.
std::unique_ptr<vars> first_object(const attrib* pattern, bool* error) {
  vars_io walk(uIoRead);
  vars* found = walk.first(pattern);
  *error = walk.error();
  return std::unique_ptr<vars>(found != nullptr ? new vars(*found) : nullptr);
}

// Finds the enabled, undeleted variable: 0 with `found` set, 1 when there
// is none, -1 with errno on errors.  In active mode a variable missing from
// the active tree is looked up in the ".active0" tree.
int find_variable(const char* sys, const char* prg, const char* pgrp, const char* name, std::unique_ptr<vars>& found) {
  if (sys != nullptr && sys[0] == '?') sys = screen_getname();
  std::string text = level_pattern("sys", sys) + level_pattern("prg", prg) + level_pattern("pgrp", pgrp) +
                     level_pattern("name", name != nullptr ? name : "");
  Xstring remainder;
  attrib pattern(text.c_str(), remainder);
  if (remainder.length() > 0) {
    errno = E2BIG;
    return -1;
  }
  bool error = false;
  found = first_object(&pattern, &error);
  if (found == nullptr && !error && vars_push0()) {
    found = first_object(&pattern, &error);
    vars_pop0(found != nullptr ? found->name() : nullptr);
  }
  if (error) return -1;
  if (found == nullptr || isdeleted(found->list()) || !isenabled(found->list())) return 1;
  return 0;
}

// The attribute `wanted` of the found object; -1 with errno ENOENT when it
// is missing or isn't what `acceptable` asks for.
const attrib* attribute_of(vars& object, const char* wanted, bool (*acceptable)(const attrib&)) {
  const attrib* a = object.list()->find(wanted);
  if (a != nullptr && acceptable(*a)) return a;
  errno = ENOENT;
  return nullptr;
}

bool is_text_value(const attrib& a) { return attrib_is_text(a.type); }
bool has_children(const attrib& a) { return a.children != nullptr; }

}  // namespace

int vars_setroot(const char* root, int active, const char* domain) {
  set_from_env();
  active0_path = Xstring(base_path) + "/.active0/";
  ezdb0_path = active0_path + ".ezdb";
  if (domain != nullptr && (strcmp(domain, ".") == 0 || strchr(domain, '/') != nullptr)) {
    // A forced location: the store lies right there, whatever the mode.
    Xstring location = with_slash(domain);
    root_path = location;
    domain_path = location;
    active_path = location;
    ezdb_path = location + ".ezdb";
  } else {
    active_mode = active;
    root_path = with_slash(root != nullptr ? root : etc_path);
    Xstring active_dir = root_path + ".active";
    active_path = is_directory(active_dir) ? active_dir + "/" : active0_path;
    domain_path = root_path + "configs/" + Xstring(domain != nullptr ? domain : "default") + "/";
    ezdb_path = (active ? active_path : domain_path) + ".ezdb";
  }
  derive_vars_paths();
  return 0;
}

void vars_setdir(const char* name) {
  vars_dir = name;
  derive_vars_paths();
}

const char* vars_getdir() { return vars_dir; }

const char* active_getroot() { return active_path; }

const char* domain_getroot() { return domain_path; }

// The authentication data of the product lies below the same root; the
// compiler reads none of it, so only the store's paths are set here.
int user_setroot(const char* root, int, const char* domain) { return vars_setroot(root, 1, domain); }

int vars_push0() {
  if (!active_mode || pushed) return 0;
  pushed_vars_path = vars_path;
  vars_path = vars0_path;
  pushed = true;
  return 1;
}

void vars_pop0(const char* found) {
  if (!pushed) return;
  vars_path = pushed_vars_path;
  pushed = false;
  if (found == nullptr || !is_directory(active_path)) return;
  Xstring marker = active_path + ".active_defaulted";
  struct stat status;
  if (stat(marker, &status) == 0 && time(nullptr) - status.st_mtime < 3600) return;
  int fd = open(marker, O_WRONLY | O_CREAT, 0644);
  if (fd >= 0) close(fd);
  utime(marker, nullptr);
  a_syslog(kVarsError, fwi18n_text(186, 20, ".active defaulted for '%s'"), found);
}

const attrib* vars_hierP() {
  static const attrib hierarchy("{  sys:utf8=\"/.sys\";  prg:utf8=\"/.prg\";  pgrp:utf8=\"/.pgrp\";  name:utf8=\"\";};");
  return &hierarchy;
}

vars::vars(const char* text) {
  Xstring remainder;
  parse(text, remainder);
}

vars::vars(const char* text, Xstring& remainder) { parse(text, remainder); }

vars::vars(const attrib* list) : list_(list != nullptr ? list->clone() : nullptr) { validate(); }

vars::vars(const vars& other) : list_(other.list_ != nullptr ? other.list_->clone() : nullptr) {}

vars::~vars() {
  if (list_ != nullptr) list_->reap();
}

// A text that doesn't parse wholly gives an object without attributes.
void vars::parse(const char* text, Xstring& remainder) {
  attrib_parse(&list_, text, remainder);
  if (remainder.length() > 0 && list_ != nullptr) {
    list_->reap();
    list_ = nullptr;
  }
  validate();
}

// The hierarchy attributes must lead, in hierarchy order and each at most
// once, and "name" must be there: only then does the object have one place
// in the tree.  A deleted object is a tombstone and needs none of this.
void vars::validate() {
  if (isdeleted(list_)) return;
  int next_level = 0;
  bool hierarchy_over = false;
  for (const attrib* a = list_; a != nullptr; a = a->next) {
    int level = level_of(a->name);
    if (level < 0) {
      hierarchy_over = true;
      continue;
    }
    if (hierarchy_over || level < next_level) {
      log_invalid(*a, fwi18n_text(186, 18, " too late in"), list_);
      list_->reap();
      list_ = nullptr;
      return;
    }
    next_level = level + 1;
  }
  const attrib* last = vars_hierP();
  while (last->next != nullptr) last = last->next;
  if (list_->find(last->name) == nullptr) {
    log_invalid(*last, fwi18n_text(186, 19, "-less item"), list_);
    list_->reap();
    list_ = nullptr;
  }
}

Xstring vars::printable() const {
  Xstring text("{ ");
  if (list_ != nullptr) text += list_->printable();
  return text + "};";
}

const char* vars::name() {
  if (!name_.isnull()) return name_;
  std::string text;
  for (const attrib* a = list_; a != nullptr && level_of(a->name) >= 0; a = a->next) {
    if (!text.empty()) text += ' ';
    text += std::string(a->name.c_str()) + "=" + (a->value.isnull() ? "" : a->value.c_str());
  }
  name_ = text.c_str();
  return name_;
}

void vars::remove() {
  if (list_ == nullptr) return;
  if (!isdeleted(list_)) list_->append(new attrib(attr_unsigned32, "deleted", 1UL));
  timestamp(1);
}

void vars::timestamp(int mode) {
  if (list_ == nullptr) return;
  attrib* stamp = list_->find("tstamp");
  if (stamp != nullptr && mode == 0) return;
  attrib now(attr_utime, "tstamp", static_cast<unsigned long>(time(nullptr)));
  if (stamp == nullptr) {
    list_->append(new attrib(now));
  } else {
    stamp->type = now.type;
    stamp->value = now.value;
  }
}

int vars_get_value(const char* sys, const char* prg, const char* pgrp, const char* name, Xstring& value,
                   Xstring* found_name) {
  std::unique_ptr<vars> found;
  int result = find_variable(sys, prg, pgrp, name, found);
  if (result != 0) return result;
  const attrib* a = attribute_of(*found, "value", is_text_value);
  if (a == nullptr) return -1;
  value = Xs_dequote(a->value);
  if (found_name != nullptr) *found_name = Xs_enquote(found->name());
  return 0;
}

int vars_get_values(const char* sys, const char* prg, const char* pgrp, const char* name, vallist& list,
                    Xstring* found_name) {
  list.clear();
  std::unique_ptr<vars> found;
  int result = find_variable(sys, prg, pgrp, name, found);
  if (result != 0) return result;
  const attrib* values = attribute_of(*found, "values", has_children);
  if (values == nullptr) return -1;
  for (const attrib* child = values->children; child != nullptr; child = child->next) {
    if (!attrib_is_text(child->type)) {
      list.clear();
      errno = ENOENT;
      return -1;
    }
    list.emplace_back(child->name, Xs_dequote(child->value));
  }
  if (found_name != nullptr) *found_name = Xs_enquote(found->name());
  return 0;
}
