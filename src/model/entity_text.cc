#include "model/entity_text.h"

#include <iostream>

std::ostream& entity_text_head(std::ostream& out, const Entity& entity, Enumerate_Type type) {
  return entity.Entity::Enumerate(out, type == ENUM_NAME ? ENUM_NAME : ENUM_SEARCH);
}

std::ostream& entity_text_tail(std::ostream& out, const Entity& entity) {
  if (entity.Screen() != nullptr) out << "\tSCREEN\t\"" << entity.Screen() << '"';
  if (entity.Description() != nullptr) out << "\tCOMMENT\t\"" << entity.Description() << '"';
  return out;
}

std::ostream& entity_text_comment(std::ostream& out, const Entity& entity) {
  if (entity.Description() != nullptr) out << " COMMENT \"" << entity.Description() << '"';
  return out;
}

std::ostream& entity_text_screen(std::ostream& out, const Entity& entity) {
  if (entity.Screen() != nullptr) out << "SCREEN \"" << entity.Screen() << "\" ";
  return out;
}

std::ostream& entity_text_clause(std::ostream& out, const char* word, const Entity* reference) {
  if (reference != nullptr) out << word << '"' << reference->Name() << '"';
  return out;
}

std::string entity_text_joined(const Entity& left, const char* sign, const Entity& right) {
  return std::string(left.Name()) + sign + right.Name();
}

void entity_text_reference(const Entity& entity, const char* kind_word) {
  if (entity.Screen() != nullptr) std::cout << "SCREEN \"" << entity.Screen() << "\" ";
  std::cout << kind_word << " \"" << entity.Name() << '"' << std::endl;
}
