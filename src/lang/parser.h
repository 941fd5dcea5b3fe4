// The parser of the configuration language: a recursive descent over the
// scanner's tokens, one function per statement, that builds objects into
// the global configuration.  Names stay names: every reference is kept as a
// placeholder for the resolve passes, so definitions may follow their uses.
// There is no error recovery: the first token that can't continue the text
// is reported and ends the parse.
#ifndef FW_LANG_PARSER_H
#define FW_LANG_PARSER_H

#include "model/entity.h"

// Parses `yyin` to its end into `Config`.  Returns 0 when the whole text was
// accepted, 1 after a syntax error, 2 when a list outgrew the parser.
int yyparse();

// The path that the positions of the objects parsed name; set by whoever
// points the scanner at a file, and kept for the life of the run.
extern const char* yyfilename;

// Reports `message` with the text of the current token and counts the error
// in the configuration.
void yyerror(const char* message);

// 1 when `list` holds no object of the entity's name and screen; otherwise
// deletes the entity and answers 0.  The first definition of a name wins.
int EntityUnique(Entity* entity, TList<Entity>& list);
// Appends the entity to `list` when it is unique there.  Returns whether it
// was kept.
bool CheckAndSaveEntity(Entity* entity, TList<Entity>& list);

#endif
