// The scanner of the configuration language.  It cuts the stream `yyin`
// into tokens: reserved words, names and quoted strings, numbers, IPv4
// addresses and ranges, and the pass-through lines that start with "@";
// comments and white space vanish.  At the end of a stream it returns 0 and
// starts afresh, at line start, on whatever `yyin` holds at the next call,
// which is how a second file is read into the same configuration.
#ifndef FW_LANG_SCANNER_H
#define FW_LANG_SCANNER_H

#include <cstdio>

#include "lang/token.h"

extern FILE* yyin;          // the input; the standard input when unset
extern char* yytext;        // text of the last token; a quoted string's is its opening quote
extern int yyleng;          // length of yytext
extern TokenValue yylval;   // value of the last token
extern int yylineno;        // line of the last token's first byte, from 1
extern int yycolumn;        // its column, from 1; a tab is one column

// The next token's kind (a Token, a character's byte value, or 0 at the end).
int yylex();
// The end of one stream is the end of the input.
int yywrap();
// Points the scanner at `input` with a fresh buffer.
void yyrestart(FILE* input);
// "out of memory" on stderr and exit status 1.
[[noreturn]] void FatalMemory();

#endif
