// AddressList is an address group: the union of its include members minus
// the union of its exclude members.  Members are stored as names until
// Resolve links them; Reduce then fills the set once.  A group that only
// excludes starts from the member "*", the whole space.
#ifndef FW_MODEL_ADDRESS_LIST_H
#define FW_MODEL_ADDRESS_LIST_H

#include "model/address.h"

class AddressList : public Address {
 public:
  // Takes both name lists with their placeholders; null means empty.
  AddressList(const char* name, TList<Entity>* include, TList<Entity>* exclude, const char* screen,
              const char* description);
  AddressList(const AddressList&) = delete;
  AddressList& operator=(const AddressList&) = delete;
  ~AddressList() override;

  const TList<Entity>& IncludeNames() const { return *include_names_; }
  const TList<Entity>& ExcludeNames() const { return *exclude_names_; }
  int Reduced() const { return reduced_; }

  void Mark() override;
  // Back to the unreduced, empty set.
  void CleanUp() override;
  int DetectCycle() override;
  int DetectCycle(Entity& start) override;
  // Links the member names (kind CO_ADDRESS only); returns the misses.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // Fills the set once: all inclusions, then all exclusions.  The flag is
  // set first, so a group that reaches itself ends the descent.
  Entity* Reduce() override;
  // Edits the include names, or with `second` the exclude names.
  int Member(const char* name, int remove, int second) override;
  // GROUP, and in a full line both name lists in braces and the comment.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The ADDRESS statement with the includes, then the excludes behind "!".
  std::ostream& Print(std::ostream& out) const override;

 private:
  void FreeMembers();

  TList<Entity>* include_names_;
  TList<Entity>* exclude_names_;
  TList<Entity>* include_members_;
  TList<Entity>* exclude_members_;
  int reduced_;
};

#endif
