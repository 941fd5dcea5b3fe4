#include "crypto/acl.h"

#include <cstring>
#include <iostream>

#include "crypto/named_links.h"
#include "model/entity_text.h"

namespace {

const char kAccessName[] = "ACCESS";

const char* LevelWord(Access_Level level) {
  switch (level) {
    case ACCESS_STATUS: return "STATUS";
    case ACCESS_READ: return "READ";
    case ACCESS_WRITE: return "WRITE";
    case ACCESS_ALL: return "ALL";
    default: return "NONE";
  }
}

}  // namespace

ACL::ACL(const char* user, Access_Level level, const char* screen, const char* comment)
    : Entity(kAccessName, screen, comment, 0), user_(NewNameReference(user != nullptr ? user : "")), level_(level) {}

ACL::~ACL() { delete user_; }

int ACL::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_USER) return 0;
  user_resolved_ = FindNamed(user_, list);
  if (user_resolved_ != nullptr) return 0;
  NotDefined(out, user_->Name(), "USER");
  return 1;
}

bool ACL::RefersTo(Config_Objects kind, const char* name) const {
  if (kind == CO_USER) return NameReferenceIs(user_, name);
  return kind == CO_SCREEN && Screen() != nullptr && name != nullptr && strcmp(Screen(), name) == 0;
}

int ACL::Refer(Config_Objects kind, const char* name, int print) const {
  if (!RefersTo(kind, name)) return 0;
  if (print) Enumerate(std::cout << kAccessName << '\t', ENUM_FULL);
  return 1;
}

void ACL::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_USER) RenameNameReference(user_, old_name, new_name);
  if (kind == CO_SCREEN) Entity::RenameReference(kind, old_name, new_name);
}

std::ostream& ACL::UserAndLevel(std::ostream& out) const {
  return out << "USER\t\"" << Use().Name() << "\"\t" << LevelWord(level_);
}

const char* ACL::LevelText() const { return level_ == ACCESS_NONE ? "" : LevelWord(level_); }

std::ostream& ACL::StatementHead(std::ostream& out) const {
  return out << kAccessName << " \"" << Use().Name() << "\"\t" << LevelText();
}

std::ostream& ACL::ListingUser(std::ostream& out) const {
  return entity_text_screen(out, *this) << "USER \"" << Use().Name() << "\" ";
}

std::ostream& ACL::ListingPermission(std::ostream& out) const { return out << "PERMISSION " << LevelText(); }

std::ostream& ACL::Print(std::ostream& out) const { return entity_text_tail(StatementHead(out), *this); }

std::ostream& ACL::Enumerate(std::ostream& out, Enumerate_Type) const {
  return entity_text_comment(ListingPermission(ListingUser(out)), *this) << '\n';
}

void ACL::GenerateDataFile(std::ostream& out, const Registry&) const { UserAndLevel(out) << " ;\n"; }
