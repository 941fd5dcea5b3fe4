#include "model/reference_line.h"

#include <iostream>

void reference_line_print(const Entity& entity, const char* kind_word) {
  if (entity.Screen() != nullptr) std::cout << "SCREEN \"" << entity.Screen() << "\" ";
  std::cout << kind_word << " \"" << entity.Name() << '"' << std::endl;
}
