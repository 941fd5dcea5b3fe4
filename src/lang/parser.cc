#include "lang/parser.h"

#include <cstdlib>
#include <iostream>

#include "driver/configuration.h"
#include "lang/scanner.h"

namespace {

bool CarriesString(int token) { return token == TOK_STRING || token == TOK_ALIENLINE; }

}  // namespace

// No statement is known yet: only the empty text is a valid configuration.
int yyparse() {
  int token = yylex();
  if (token == 0) return 0;
  if (CarriesString(token)) free(yylval.string);
  yyerror("parse error");
  return 1;
}

void yyerror(const char* message) {
  if (Config != nullptr) Config->ParseError();
  std::cerr << message << " near token " << yytext << "." << std::endl;
}
