// vars_io: a cursor over the variable store.  A walk is given a pattern of
// hierarchy attributes; a level whose pattern attribute has the type
// unknown is enumerated, the others lead straight to their directory, so a
// fully given name reads exactly one file.  Below an enumerated level each
// directory gets a nested cursor.  Hidden entries are never returned, nor
// deleted objects unless the pattern asks for "deleted".
//
// Files are read under a lockf test (a reader waits while a writer holds
// the file) and written under a lockf lock.
#ifndef FW_SUPPORT_VARS_IO_H
#define FW_SUPPORT_VARS_IO_H

#include <dirent.h>

#include "support/vars.h"

enum uIoModeT { uIoRead = 0, uIoReadWrite = 1 };

// Reads the whole file `path` into `text`.  Returns the open descriptor,
// which holds its lock in read-write mode, or -1: silently for a missing or
// empty file (errno ENOENT), logged otherwise.
int uloadXstr(const char* path, uIoModeT mode, Xstring& text);

// Writes `text` as the whole content of `path`, through `fd` when it is
// open (>= 0), else through a new descriptor that it locks.  Returns the
// descriptor or -1, logged.
int ustoreXstr(int fd, const char* path, const Xstring& text);

// Touches vars_path and ezdb_path, so that their times show a change.
void vars_touchroot();

class vars_io {
 public:
  explicit vars_io(uIoModeT mode);
  vars_io(const vars_io&) = delete;
  vars_io& operator=(const vars_io&) = delete;
  ~vars_io();

  // Begins a walk with a copy of `pattern` and returns its first object.
  vars* first(const attrib* pattern);
  // The next object of the walk, or null at its end.  An object stays the
  // cursor's and lives until the cursor moves on.
  vars* next();
  // True when the walk ended on a file that couldn't be read or used.
  bool error() const { return error_; }

  // Writes `object` at its place in the tree, unless the stored object of
  // that name has a later time stamp and `force` is 0 (result 1).
  int store(vars* object, int force);
  // Marks `object` deleted and writes it back.
  int remove(vars* object);

 private:
  vars_io(uIoModeT mode, const attrib* hierarchy, const attrib* pattern, const Xstring& path, const vars_io* root);
  void reset();
  void release_current();
  void resolve_levels();
  vars* enumerate();
  vars* load(const Xstring& relative, bool exact);
  bool wanted(vars* object, bool exact) const;
  int altered(const Xstring& relative, vars* object);

  vars* current_ = nullptr;
  vars_io* nested_ = nullptr;
  const attrib* hierarchy_ = nullptr;  // rest of the hierarchy
  DIR* directory_ = nullptr;
  int fd_ = -1;
  uIoModeT mode_;
  Xstring path_;                       // below vars_path
  Xstring file_;                       // known file name
  const attrib* pattern_ = nullptr;    // rest of the pattern
  attrib* own_pattern_ = nullptr;      // the walk's copy, on the root cursor
  const vars_io* root_;
  bool done_ = false;
  bool error_ = false;
  bool levels_reached_ = false;
  bool deleted_wanted_ = false;
};

#endif
