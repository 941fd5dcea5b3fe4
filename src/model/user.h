// User is a named person of the configuration: a name and a description,
// nothing more.  The compile doesn't look at users.
#ifndef FW_MODEL_USER_H
#define FW_MODEL_USER_H

#include "model/entity.h"

class User : public Entity {
 public:
  User(const char* name, const char* description) : Entity(name, nullptr, description, 0) {}
};

#endif
