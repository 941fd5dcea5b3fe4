// The line by which an object answers a search for what refers to a name:
// its screen when it has one, its kind word and its name.
#ifndef FW_MODEL_REFERENCE_LINE_H
#define FW_MODEL_REFERENCE_LINE_H

#include "model/entity.h"

// Writes the line to the standard output.
void reference_line_print(const Entity& entity, const char* kind_word);

#endif
