// Entity is the root of every named configuration object: a name, an
// optional binding to one screen, an optional comment, a used mark and the
// fixed row of virtual operations through which the Registry and the Policy
// walk mixed lists.  A bare Entity that holds only a name is the placeholder
// of a reference until the resolve passes link it.
#ifndef FW_MODEL_ENTITY_H
#define FW_MODEL_ENTITY_H

#include <initializer_list>
#include <ostream>
#include <vector>

#include "model/enumerations.h"
#include "model/source_position.h"
#include "model/t_list.h"

class Entity {
 public:
  // Copies the strings; a null name becomes "ENTITY".  The object takes the
  // position last given to StatementPosition.
  Entity(const char* name, const char* screen, const char* description, int used);
  Entity(const Entity&) = delete;
  Entity& operator=(const Entity&) = delete;
  virtual ~Entity();

  // Marks as used everything this object refers to.
  virtual void Mark() {}
  // Drops what a compile added, so that the object could be compiled anew.
  virtual void CleanUp() {}
  // 1 if a walk that starts at this group comes back to it.
  virtual int DetectCycle() { return 0; }
  // One step of that walk.
  virtual int DetectCycle(Entity& start) { return this == &start; }
  // Links the stored names of sort `kind` to objects of `list`; reports each
  // failure on `out` and returns their number.
  virtual int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out);
  // A second pass for checks that need the first one finished.
  virtual int Resolve2(Config_Objects kind, TList<Entity>& list, std::ostream& out);
  // Links algorithm names of one SKIP version.
  virtual int ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                                std::ostream& out);
  // Non-zero if this object refers to object `name` of sort `kind`; with
  // `print` it also writes a line about itself to the standard output.
  virtual int Refer(Config_Objects kind, const char* name, int print) const;
  // Follows a rename of object `old_name` of sort `kind`.
  virtual void RenameReference(Config_Objects kind, const char* old_name, const char* new_name);
  // The flat form of a group.
  virtual Entity* Reduce() { return this; }
  // Adds `name` to, or removes it from, a group; 223 for a non-group.
  virtual int Member(const char* name, int remove, int second);
  // The listing line of the object.
  virtual std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const;
  // The search filter of the listing commands.
  virtual int Match(const char* screen, const char* name, const char* type, int exact) const;
  // The statement that builds the object again, without its final ';'.
  virtual std::ostream& Print(std::ostream& out) const;

  const char* Name() const { return name_; }
  const char* Screen() const { return screen_; }
  const char* Description() const { return description_; }
  int Used() const { return used_; }
  void Used(int used) { used_ = used; }
  // The statement that made the object, for messages that point at it;
  // unknown for what the compile makes.
  SourcePosition Position() const { return statements_[statement_]; }
  bool HasPosition() const { return statement_ != 0; }
  // Takes the statement of `other`, of which this object is a copy.
  void PositionOf(const Entity& other) { statement_ = other.statement_; }
  // The position that objects made from now on take: the parser gives each
  // statement it starts, and an unknown one when it is done.
  static void StatementPosition(const SourcePosition& position);
  // Replaces the name by a copy; null or the stored string itself does nothing.
  void Name(const char* name);
  // How many renames there have been, so that name indexes know when they
  // are stale.
  static unsigned long Renames() { return renames_; }
  void ClearScreen();
  // Replaces the comment; null clears it.
  void Description(const char* description);

  // The single rule of name lookup.  With `any` the first object of the name
  // wins; otherwise the candidate's screen must pass the exact-mode test
  // against this object's screen.
  Entity* FindSelf(const TList<Entity>& list, int any) const;
  TList_Cell<Entity>* FindSelfCell(const TList<Entity>& list, int any) const;
  // Every match, in list order, as a new list that the caller frees without
  // its elements; null when nothing matches.
  TList<Entity>* FindSelfAll(const TList<Entity>& list) const;
  // Deletes the exact-mode match with its cell.
  void DeleteSelf(TList<Entity>& list) const;
  int InList(const TList<Entity>& list) const;

  // The standard line for a reference of this object that names nothing.
  std::ostream& NotDefined(std::ostream& out, const char* name, const char* what) const;
  // Looks each placeholder of `names` up in `list`, appends the objects found
  // to `resolved` and reports the others; returns the number of misses.
  int Resolve_Names(TList<Entity>& names, TList<Entity>& resolved, TList<Entity>& list,
                    const char* what, std::ostream& out) const;
  int Refer_List(const TList<Entity>& list, const char* name) const;
  void Rename_Reference_List(TList<Entity>& list, const char* old_name, const char* new_name);
  void Mark_List(TList<Entity>& list);
  // True for a null needle, or when it occurs in the screen, name or comment.
  int ContainsString(const char* needle) const;

 protected:
  // The two steps of a cycle walk through a group's member lists (null
  // lists are skipped): the walk starts at this group, marks each group it
  // passes and doesn't enter a group twice.
  int DetectCycleFromMembers(std::initializer_list<const TList<Entity>*> members);
  int DetectCycleThroughMembers(Entity& start, std::initializer_list<const TList<Entity>*> members);

 private:
  bool SameName(const Entity& other) const;
  bool ScreenPasses(const Entity& candidate) const;

  static unsigned long renames_;

  char* name_;
  char* screen_;
  char* description_;
  int used_;
  // An index into statements_, whose first element is the unknown
  // position; beside used_ it makes no object larger.
  int statement_;
  static std::vector<SourcePosition> statements_;
  static int current_statement_;
};

// Print, then ";" and a line end.
std::ostream& operator<<(std::ostream& out, const Entity& entity);

#endif
