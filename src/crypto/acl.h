// An ACL is a local access entry: which user may administer this screen,
// and with what rights.  The remote entries derive from it.  All entries
// are listed in the file Remote.Access.
#ifndef FW_CRYPTO_ACL_H
#define FW_CRYPTO_ACL_H

#include <ostream>

#include "model/entity.h"

class Registry;

enum Access_Level { ACCESS_NONE = 0, ACCESS_STATUS = 1, ACCESS_READ = 2, ACCESS_WRITE = 3, ACCESS_ALL = 4 };

class ACL : public Entity {
 public:
  ACL(const char* user, Access_Level level, const char* screen, const char* comment);
  ~ACL() override;

  // The user: its name until resolved, then the registry's object.
  const Entity& Use() const { return user_resolved_ != nullptr ? *user_resolved_ : *user_; }
  Access_Level Access() const { return level_; }

  // CO_USER links the user; returns the number of errors, each reported on
  // `out`.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // With `print`, a hit also writes "ACCESS\t" and the entry's listing to
  // the standard output.
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  std::ostream& Print(std::ostream& out) const override;
  // The full line whatever `type` asks: an entry has no name to list
  // alone.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;

  // 0 for a local entry, 1 for a remote one.
  virtual int Type() const { return 0; }
  // The entry's line of Remote.Access.
  virtual void GenerateDataFile(std::ostream& out, const Registry& registry) const;

 protected:
  // "USER\t\"user\"\t" and the level word.
  std::ostream& UserAndLevel(std::ostream& out) const;
  // The level as statements and listings write it: nothing for none.
  const char* LevelText() const;
  // "ACCESS "user"", a tab and the level, which the statements of local
  // and SKIP entries start with.
  std::ostream& StatementHead(std::ostream& out) const;
  // The start of a listing: the screen, then USER and the user, each
  // followed by a blank.
  std::ostream& ListingUser(std::ostream& out) const;
  // "PERMISSION" and the level.
  std::ostream& ListingPermission(std::ostream& out) const;
  // Whether a reference of `kind` carries `name`.
  virtual bool RefersTo(Config_Objects kind, const char* name) const;

 private:
  // The name stays with the entry and the object with the registry, so
  // neither is freed twice.
  Entity* user_;
  Entity* user_resolved_ = nullptr;
  Access_Level level_;
};

#endif
