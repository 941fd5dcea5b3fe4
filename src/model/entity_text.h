// Pieces of text that many kinds of objects write the same way: the common
// tail of a statement, the comment of a listing line, and the line by which
// an object answers a search for what refers to a name.
#ifndef FW_MODEL_ENTITY_TEXT_H
#define FW_MODEL_ENTITY_TEXT_H

#include <ostream>
#include <string>

#include "model/entity.h"

// The start of a listing line: the screen (left out in name lines) and the
// name, each followed by a blank.
std::ostream& entity_text_head(std::ostream& out, const Entity& entity, Enumerate_Type type);
// The tail of a statement: the screen and the comment, each behind a tab.
std::ostream& entity_text_tail(std::ostream& out, const Entity& entity);
// The comment of a full listing line, behind a blank.
std::ostream& entity_text_comment(std::ostream& out, const Entity& entity);
// The screen that starts a full listing line, each word followed by a
// blank; nothing without a screen.
std::ostream& entity_text_screen(std::ostream& out, const Entity& entity);
// `word` and the name of `reference` in double quotes; nothing without a
// reference, since such clauses are optional.
std::ostream& entity_text_clause(std::ostream& out, const char* word, const Entity* reference);
// The name of an object derived from two others: both names joined by the
// operation's sign.
std::string entity_text_joined(const Entity& left, const char* sign, const Entity& right);
// The screen (when set), the kind word and the name, as one line on the
// standard output.
void entity_text_reference(const Entity& entity, const char* kind_word);

#endif
