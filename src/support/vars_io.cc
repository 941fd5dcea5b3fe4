#include "support/vars_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/fwi18n.h"
#include "support/fwlog.h"

namespace {

constexpr unsigned kVarsError = attr_fac | 3 | 0x10000;
constexpr unsigned kVarsTrace = attr_fac | 7 | 0x10000;

const char* open_flags_text(uIoModeT mode) { return mode == uIoRead ? "O_RDONLY" : "O_RDWR|O_CREAT"; }

// Closes `fd` without disturbing errno, which tells the caller why.
void close_keeping_errno(int fd) {
  int saved = errno;
  close(fd);
  errno = saved;
}

void log_open_failure(const char* who, const char* path, const char* flags, unsigned priority) {
  int saved = errno;
  a_syslog(priority, fwi18n_text(186, 21, "%s: open(%s,%s,0600) failed: %s"), who, path, flags, strerror(saved));
  errno = saved;
}

// A reader only waits until no writer holds the file; a writer locks it.
int lock_file(int fd, const char* who, const char* path, int command) {
  while (lockf(fd, command, 0) != 0) {
    if (errno == EAGAIN || errno == EACCES || errno == EINTR) {
      sleep(1);
      continue;
    }
    int saved = errno;
    a_syslog(kVarsError, fwi18n_text(186, 22, "%s: lockf(%s,%s,0) failed: %s"), who, path,
             command == F_TEST ? "F_TEST" : "F_LOCK", strerror(saved));
    errno = saved;
    return -1;
  }
  return 0;
}

bool is_regular(const char* path) {
  struct stat status;
  return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

// A level value must be one directory entry of its own, so a stored name
// can never lead out of the tree.
bool usable_segment(const Xstring& value) {
  return value.length() > 0 && strchr(value, '/') == nullptr && value != "." && value != "..";
}

const attrib* any_name() {
  static const attrib pattern("name:unknown=;");
  return &pattern;
}

unsigned long stamp_of(const vars& object) {
  const attrib* stamp = object.list() != nullptr ? object.list()->find("tstamp") : nullptr;
  if (stamp == nullptr || stamp->value.isnull()) return 0;
  return strtoul(stamp->value, nullptr, 10);
}

// The place of `object` below vars_path, or null when a level's value
// can't be a directory entry.
Xstring relative_path_of(const vars& object) {
  Xstring path("");
  for (const attrib* level = vars_hierP(); level != nullptr; level = level->next) {
    const attrib* a = object.list()->find(level->name);
    if (a == nullptr) continue;
    Xstring value = Xs_dequote(a->value);
    if (!usable_segment(value)) return Xstring();
    path += level->next != nullptr ? Xs_dequote(level->value) + "/" + value : "/" + value;
  }
  return path;
}

// Creates the missing directories on the way to `path`.
int make_directories(const std::string& path) {
  for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    std::string directory = path.substr(0, slash);
    struct stat status;
    if (stat(directory.c_str(), &status) == 0) {
      if (S_ISDIR(status.st_mode)) continue;
      a_syslog(kVarsError, fwi18n_text(186, 33, "%s: non-directory '%s' exists"), "vars_io", directory.c_str());
      errno = ENOTDIR;
      return -1;
    }
    if (mkdir(directory.c_str(), 0777) != 0 && errno != EEXIST) return -1;
  }
  return 0;
}

}  // namespace

int uloadXstr(const char* path, uIoModeT mode, Xstring& text) {
  int fd = open(path, mode == uIoRead ? O_RDONLY : O_RDWR | O_CREAT, 0600);
  if (fd < 0) {
    if (errno != ENOENT) log_open_failure("uloadXstr", path, open_flags_text(mode), kVarsTrace);
    return -1;
  }
  if (lock_file(fd, "uloadXstr", path, mode == uIoRead ? F_TEST : F_LOCK) != 0) {
    close_keeping_errno(fd);
    return -1;
  }
  struct stat status;
  if (fstat(fd, &status) == 0 && !S_ISREG(status.st_mode)) {
    close(fd);
    errno = EISDIR;
    return -1;
  }
  off_t length = lseek(fd, 0, SEEK_END);
  if (length < 0) {
    int saved = errno;
    a_syslog(kVarsError, fwi18n_text(186, 23, "%s: lseek(END) on %s failed: %s"), "uloadXstr", path,
             strerror(saved));
    close(fd);
    errno = saved;
    return -1;
  }
  if (length == 0) {
    close(fd);
    errno = ENOENT;
    return -1;
  }
  char* buffer = static_cast<char*>(malloc(length));
  if (buffer == nullptr) {
    a_syslog(kVarsError, fwi18n_text(186, 26, "%s: %ld byte string allocation failed"), "uloadXstr",
             static_cast<long>(length));
    close(fd);
    errno = ENOMEM;
    return -1;
  }
  ssize_t got = lseek(fd, 0, SEEK_SET) == 0 ? read(fd, buffer, length) : -1;
  if (got != length) {
    int saved = got < 0 ? errno : EIO;
    a_syslog(kVarsError, fwi18n_text(186, 24, "%s: read(%lu) on %s failed: %s"), "uloadXstr",
             static_cast<unsigned long>(length), path,
             got < 0 ? strerror(saved) : fwi18n_text(186, 25, "runt read"));
    free(buffer);
    close(fd);
    errno = saved;
    return -1;
  }
  text = Xstring(buffer, length);
  free(buffer);
  return fd;
}

int ustoreXstr(int fd, const char* path, const Xstring& text) {
  bool opened = fd < 0;
  if (opened) {
    fd = open(path, O_RDWR | O_CREAT, 0600);
    if (fd < 0) {
      log_open_failure("ustoreXstr", path, "O_RDWR|O_CREAT", kVarsError);
      return -1;
    }
    if (lock_file(fd, "ustoreXstr", path, F_LOCK) != 0) {
      close_keeping_errno(fd);
      return -1;
    }
  }
  ssize_t wrote = -1;
  if (lseek(fd, 0, SEEK_SET) == 0 && ftruncate(fd, 0) == 0) wrote = write(fd, text, text.length());
  if (wrote != static_cast<ssize_t>(text.length())) {
    int saved = wrote < 0 ? errno : EIO;
    a_syslog(kVarsError, fwi18n_text(186, 27, "%s: write(%lu) on %s failed: %s"), "ustoreXstr",
             static_cast<unsigned long>(text.length()), path,
             wrote < 0 ? strerror(saved) : fwi18n_text(186, 28, "incomplete write"));
    if (opened) close(fd);
    errno = saved;
    return -1;
  }
  return fd;
}

void vars_touchroot() {
  utime(vars_path, nullptr);
  utime(ezdb_path, nullptr);
}

vars_io::vars_io(uIoModeT mode) : mode_(mode), root_(this) {}

vars_io::vars_io(uIoModeT mode, const attrib* hierarchy, const attrib* pattern, const Xstring& path,
                 const vars_io* root)
    : hierarchy_(hierarchy),
      mode_(mode),
      path_(path),
      pattern_(pattern),
      root_(root),
      deleted_wanted_(root->deleted_wanted_) {}

vars_io::~vars_io() { reset(); }

void vars_io::reset() {
  release_current();
  delete nested_;
  nested_ = nullptr;
  if (directory_ != nullptr) closedir(directory_);
  directory_ = nullptr;
  if (own_pattern_ != nullptr) own_pattern_->reap();
  own_pattern_ = nullptr;
  done_ = error_ = levels_reached_ = false;
}

void vars_io::release_current() {
  delete current_;
  current_ = nullptr;
  if (fd_ >= 0) close(fd_);
  fd_ = -1;
}

vars* vars_io::first(const attrib* pattern) {
  reset();
  own_pattern_ = pattern != nullptr ? pattern->clone() : nullptr;
  pattern_ = own_pattern_;
  hierarchy_ = vars_hierP();
  path_ = "";
  file_ = Xstring();
  deleted_wanted_ = own_pattern_ != nullptr && own_pattern_->find("deleted") != nullptr;
  return next();
}

vars* vars_io::next() {
  release_current();
  if (nested_ != nullptr) {
    if (vars* object = nested_->next()) return object;
    error_ = error_ || nested_->error_;
    delete nested_;
    nested_ = nullptr;
  }
  if (done_) return nullptr;
  if (!levels_reached_) {
    levels_reached_ = true;
    resolve_levels();
    if (done_) return nullptr;
  }
  if (!file_.isnull()) {
    done_ = true;
    return load(path_ + "/" + file_, true);
  }
  return enumerate();
}

// Follows the levels that the pattern gives a value, down to the level that
// must be enumerated or to the file itself.  A pattern that is used up
// stands for any name.
void vars_io::resolve_levels() {
  for (; hierarchy_ != nullptr; hierarchy_ = hierarchy_->next) {
    if (pattern_ == nullptr) pattern_ = any_name();
    if (pattern_->name != hierarchy_->name) continue;
    bool last = hierarchy_->next == nullptr;
    if (pattern_->type == attr_unknown) {
      if (!last) path_ += Xs_dequote(hierarchy_->value);
      return;
    }
    Xstring value = Xs_dequote(pattern_->value);
    if (!usable_segment(value)) break;
    if (last) {
      file_ = value;
      return;
    }
    path_ += Xs_dequote(hierarchy_->value) + "/" + value;
    pattern_ = pattern_->next;
  }
  done_ = true;
}

vars* vars_io::enumerate() {
  if (directory_ == nullptr) {
    directory_ = opendir(vars_path + path_);
    if (directory_ == nullptr) {
      done_ = true;
      return nullptr;
    }
  }
  bool files = hierarchy_->next == nullptr;
  while (struct dirent* entry = readdir(directory_)) {
    if (entry->d_name[0] == '.') continue;
    Xstring relative = path_ + "/" + entry->d_name;
    if (files) {
      if (!is_regular(vars_path + relative)) continue;
      if (vars* object = load(relative, false)) return object;
      continue;
    }
    nested_ = new vars_io(mode_, hierarchy_->next, pattern_->next, relative, root_);
    if (vars* object = nested_->next()) return object;
    error_ = error_ || nested_->error_;
    delete nested_;
    nested_ = nullptr;
  }
  closedir(directory_);
  directory_ = nullptr;
  done_ = true;
  return nullptr;
}

// Reads one file.  On the exact path of a lookup a bad file ends the walk
// with an error; in an enumeration it is skipped.
vars* vars_io::load(const Xstring& relative, bool exact) {
  Xstring path = vars_path + relative;
  Xstring text;
  int fd = uloadXstr(path, mode_, text);
  if (fd < 0) {
    if (exact && errno != ENOENT) error_ = true;
    return nullptr;
  }
  Xstring remainder;
  vars* object = new vars(text, remainder);
  if (remainder.length() > 0 || object->list() == nullptr) {
    bool unparsable = remainder.length() > 0;
    const char* format = exact ? (unparsable ? fwi18n_text(186, 29, "%s: %s (load): unable to parse '%s'")
                                             : fwi18n_text(186, 30, "%s: %s (load): unable to user-ize '%s'"))
                               : (unparsable ? fwi18n_text(186, 31, "%s: %s: unable to parse '%s'")
                                             : fwi18n_text(186, 32, "%s: %s: unable to user-ize '%s'"));
    a_syslog(kVarsError, format, "vars_io", path.c_str(), Xs_safe(unparsable ? remainder : text).c_str());
    delete object;
    close(fd);
    if (exact) {
      error_ = true;
      errno = EINVAL;
    }
    return nullptr;
  }
  if (!wanted(object, exact)) {
    delete object;
    close(fd);
    return nullptr;
  }
  current_ = object;
  fd_ = fd;
  return object;
}

// An exact path needs no comparing; an enumerated file must match.
bool vars_io::wanted(vars* object, bool exact) const {
  if (isdeleted(object->list()) && !deleted_wanted_) return false;
  return exact || object->match(root_->own_pattern_);
}

int vars_io::store(vars* object, int force) {
  if (object == nullptr || object->list() == nullptr) {
    errno = EINVAL;
    return -1;
  }
  object->timestamp(0);
  Xstring relative = relative_path_of(*object);
  Xstring stored;
  int fd = relative.isnull() ? -1 : uloadXstr(vars_path + relative, uIoRead, stored);
  if (fd >= 0) {
    close(fd);
    vars current(stored);
    if (!force && stamp_of(current) > stamp_of(*object)) return 1;
  }
  return altered(relative, object);
}

int vars_io::remove(vars* object) {
  if (object == nullptr || object->list() == nullptr) {
    errno = EINVAL;
    return -1;
  }
  object->remove();
  return altered(relative_path_of(*object), object);
}

int vars_io::altered(const Xstring& relative, vars* object) {
  if (relative.isnull()) {
    errno = EINVAL;
    return -1;
  }
  Xstring path = vars_path + relative;
  if (make_directories(path.c_str()) != 0) return -1;
  int fd = ustoreXstr(-1, path, object->printable());
  if (fd < 0) return -1;
  close(fd);
  vars_touchroot();
  return 0;
}
