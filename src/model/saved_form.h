// The frame of a stored configuration file: the header that marks it as
// written by the tools, and the titled sections that hold its statements.
// The registry file and the policy file share both.
#ifndef FW_MODEL_SAVED_FORM_H
#define FW_MODEL_SAVED_FORM_H

#include <initializer_list>
#include <ostream>
#include <unordered_set>

#include "model/entity.h"

// The three header lines and the empty line behind them.
void saved_form_header(std::ostream& out);
// `title` on a line of its own, then each object of `lists` but those in
// `left_out` as a statement followed by a blank, then `ending`.
void saved_form_section(std::ostream& out, const char* title, std::initializer_list<const TList<Entity>*> lists,
                        const std::unordered_set<const Entity*>& left_out = {}, const char* ending = "\n\n");

#endif
