// The parser of the configuration language.  It reads tokens from the
// scanner and builds objects into the global configuration; it stops at the
// first syntax error, which it reports and counts there.
#ifndef FW_LANG_PARSER_H
#define FW_LANG_PARSER_H

// Parses `yyin` to its end.  Returns 0 when the whole text was accepted,
// 1 after a syntax error.
int yyparse();

// Reports `message` with the text of the current token and counts the error
// in the configuration.
void yyerror(const char* message);

#endif
