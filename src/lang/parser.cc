#include "lang/parser.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>

#include "crypto/certificate.h"
#include "crypto/certificate_list.h"
#include "driver/configuration.h"
#include "lang/scanner.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/range_list.h"
#include "model/registry.h"
#include "model/time.h"

namespace {

// The optional text of a clause; an absent one reaches the constructors as
// a null pointer.
using Text = std::optional<std::string>;

const char* Chars(const Text& text) { return text ? text->c_str() : nullptr; }

// The parser stack of the language grows to this many entries; each element
// of a list clause holds one until its statement ends.
const int kStackLimit = 200000;
// Entries a statement holds besides its list elements: the start state, the
// text so far and the words in front of the list.
const int kStatementEntries = 4;

bool CarriesString(int token) { return token == TOK_STRING || token == TOK_ALIENLINE; }

class Parser {
 public:
  explicit Parser(Configuration& config) : config_(config), registry_(*config.TheRegistry()) {}
  ~Parser() {
    if (CarriesString(token_)) free(value_.string);
  }

  // 0, 1 after a syntax error, 2 after a stack overflow.
  int Run();

 private:
  // The tokens.
  void Next() {
    token_ = yylex();
    value_ = yylval;
  }
  bool At(int token) const { return token_ == token; }
  bool SyntaxError() {
    yyerror("parse error");
    result_ = 1;
    return false;
  }
  bool Expect(int token) {
    if (!At(token)) return SyntaxError();
    Next();
    return true;
  }
  bool String(std::string* text);
  bool Number(int* number);
  // KEYWORD string, when the keyword stands next.
  bool OptionalString(int keyword, Text* text);
  // One more element of a list clause.
  bool Grow(int* elements);

  // Shared clauses.
  bool ScreenClause(Text* screen) { return OptionalString(TOK_SCREEN, screen); }
  bool CommentClause(Text* comment) { return OptionalString(TOK_COMMENT, comment); }
  bool MasterClause(Text* master) { return OptionalString(TOK_MASTER, master); }
  // [SCREEN screen] [COMMENT text] ;
  bool Tail(Text* screen, Text* comment);
  bool AddressValue(simplerange* range);
  // { member | ! member }, each member made by `make`.
  template <class Make>
  bool Members(Make make);

  // Statements.
  bool Statement();
  bool NamedStatement(const std::string& name);
  bool AddressStatement(const std::string& name);
  bool TimeStatement(const std::string& name);
  bool TimeDay(::Day day);
  bool CertificateStatement(const std::string& name);
  bool NameSpaceCertificate(const std::string& name);
  bool IkeCertificate(const std::string& name);
  bool ManualKey(const std::string& name);
  bool CertificateGroup(const std::string& name);

  Configuration& config_;
  Registry& registry_;
  int token_ = 0;
  TokenValue value_{};
  int result_ = 0;
};

int Parser::Run() {
  Next();
  while (!At(0))
    if (!Statement()) return result_;
  return 0;
}

bool Parser::String(std::string* text) {
  if (!At(TOK_STRING)) return SyntaxError();
  *text = value_.string;
  free(value_.string);
  Next();
  return true;
}

bool Parser::Number(int* number) {
  if (!At(TOK_NUMBER)) return SyntaxError();
  *number = value_.number;
  Next();
  return true;
}

bool Parser::OptionalString(int keyword, Text* text) {
  if (!At(keyword)) return true;
  Next();
  std::string value;
  if (!String(&value)) return false;
  *text = value;
  return true;
}

bool Parser::Grow(int* elements) {
  if (++*elements + kStatementEntries <= kStackLimit) return true;
  yyerror("parser stack overflow");
  result_ = 2;
  return false;
}

bool Parser::Tail(Text* screen, Text* comment) {
  return ScreenClause(screen) && CommentClause(comment) && Expect(';');
}

// An ipaddr stands for the range of one address.  A range written from
// high to low means the same addresses as from low to high.
bool Parser::AddressValue(simplerange* range) {
  if (At(TOK_IPADDR)) {
    uint32_t address = ntohl(value_.address);
    *range = {address, address, RS_ADDRESSES};
  } else if (At(TOK_IPRANGE)) {
    *range = {std::min(value_.start, value_.end), std::max(value_.start, value_.end),
              static_cast<Range_Style>(value_.style)};
  } else {
    return SyntaxError();
  }
  Next();
  return true;
}

template <class Make>
bool Parser::Members(Make make) {
  int elements = 0;
  while (At(TOK_STRING) || At('!')) {
    if (!Grow(&elements)) return false;
    bool excluded = At('!');
    if (excluded) Next();
    std::string member;
    if (!String(&member)) return false;
    (excluded ? config_.Excludes() : config_.Includes()).Append(*make(member.c_str()));
  }
  return true;
}

bool Parser::Statement() {
  if (At(TOK_ALIENLINE)) {
    registry_.AddAlienData(value_.string);
    free(value_.string);
    Next();
    return true;
  }
  std::string name;
  return String(&name) && NamedStatement(name);
}

bool Parser::NamedStatement(const std::string& name) {
  switch (token_) {
    case TOK_ADDRESS: return AddressStatement(name);
    case TOK_TIME: return TimeStatement(name);
    case TOK_CERTIFICATE: return CertificateStatement(name);
    case TOK_KEY: Next(); return ManualKey(name);
    default: return SyntaxError();
  }
}

// name ADDRESS ipaddr-or-iprange [SCREEN screen] [COMMENT text] ;
// name ADDRESS { member | ! member } [SCREEN screen] [COMMENT text] ;
bool Parser::AddressStatement(const std::string& name) {
  Next();
  Text screen, comment;
  Entity* built;
  if (At(TOK_IPADDR) || At(TOK_IPRANGE)) {
    simplerange range;
    if (!AddressValue(&range) || !Tail(&screen, &comment)) return false;
    built = new Address(name.c_str(), &range, Chars(screen), Chars(comment));
  } else {
    auto reference = [](const char* member) { return new Address(member, nullptr, nullptr, ADDRESS_SINGLE); };
    if (!Members(reference) || !Tail(&screen, &comment)) return false;
    built = new AddressList(name.c_str(), config_.TakeIncludes(), config_.TakeExcludes(), Chars(screen),
                                    Chars(comment));
  }
  CheckAndSaveEntity(built, registry_.Addresses());
  return true;
}

// name TIME { day { from-hour from-minute to-hour to-minute } } [SCREEN screen] [COMMENT text] ;
bool Parser::TimeStatement(const std::string& name) {
  Next();
  for (;;) {
    ::Day day;
    switch (token_) {
      case TOK_EVERYDAY: day = EVERYDAY; break;
      case TOK_SUNDAY: day = SUNDAY; break;
      case TOK_MONDAY: day = MONDAY; break;
      case TOK_TUESDAY: day = TUESDAY; break;
      case TOK_WEDNESDAY: day = WEDNESDAY; break;
      case TOK_THURSDAY: day = THURSDAY; break;
      case TOK_FRIDAY: day = FRIDAY; break;
      case TOK_SATURDAY: day = SATURDAY; break;
      default: {
        Text screen, comment;
        if (!Tail(&screen, &comment)) return false;
        Entity* built = new Time(name.c_str(), config_.TakeDays(), Chars(screen), Chars(comment));
        CheckAndSaveEntity(built, registry_.Times());
        return true;
      }
    }
    Next();
    if (!TimeDay(day)) return false;
  }
}

bool Parser::TimeDay(::Day day) {
  while (At(TOK_NUMBER)) {
    int from_hour, from_minute, to_hour, to_minute;
    if (!Number(&from_hour) || !Number(&from_minute) || !Number(&to_hour) || !Number(&to_minute)) return false;
    Range hours(from_hour * 60 + from_minute, to_hour * 60 + to_minute, RT_TIME, RS_ADDRESSES);
    config_.Hours().Insert(hours);
  }
  config_.Days().Append(*new DayOfWeek(day, config_.TakeHours()));
  return true;
}

bool Parser::CertificateStatement(const std::string& name) {
  Next();
  switch (token_) {
    case TOK_NSID: return NameSpaceCertificate(name);
    case TOK_IKE: return IkeCertificate(name);
    case TOK_MANUAL: Next(); return ManualKey(name);
    default: return CertificateGroup(name);
  }
}

// name CERTIFICATE NSID id MKID mkid [G n] [P n] [KEY_LENGTH n] [MASTER master] [SCREEN screen] [COMMENT text] ;
bool Parser::NameSpaceCertificate(const std::string& name) {
  Next();
  int nsid;
  std::string mkid;
  if (!Number(&nsid) || !Expect(TOK_MKID) || !String(&mkid)) return false;
  // The sizes of the key are written for people; nothing reads them.
  for (int keyword : {TOK_G, TOK_P, TOK_KEY_LENGTH}) {
    int ignored;
    if (At(keyword) && !(Expect(keyword) && Number(&ignored))) return false;
  }
  Text master, screen, comment;
  if (!MasterClause(&master) || !Tail(&screen, &comment)) return false;
  Entity* built = new Certificate(name.c_str(), IPSEC_SKIP, nsid, mkid.c_str(), Chars(master), Chars(screen),
                                  Chars(comment));
  CheckAndSaveEntity(built, registry_.Certificates());
  return true;
}

// name CERTIFICATE IKE data [MASTER master] [SCREEN screen] [COMMENT text] ;
// The numeric form of the IKE certificate is accepted and builds nothing.
bool Parser::IkeCertificate(const std::string& name) {
  Next();
  bool numeric = At(TOK_NUMBER);
  std::string data;
  if (numeric) Next(); else if (!String(&data)) return false;
  Text master, screen, comment;
  if (!MasterClause(&master) || !Tail(&screen, &comment)) return false;
  if (numeric) return true;
  Entity* built = new Certificate(name.c_str(), IPSEC_IKE, 0, data.c_str(), Chars(master), Chars(screen),
                                  Chars(comment));
  if (CheckAndSaveEntity(built, registry_.Certificates())) registry_.mIKEy_add(*built, 1);
  return true;
}

// name CERTIFICATE MANUAL data ... ;  name KEY data [MASTER master] [SCREEN screen] [COMMENT text] ;
bool Parser::ManualKey(const std::string& name) {
  std::string data;
  Text master, screen, comment;
  if (!String(&data) || !MasterClause(&master) || !Tail(&screen, &comment)) return false;
  Entity* built = new Certificate(name.c_str(), IPSEC_MANUAL, 0, data.c_str(), Chars(master), Chars(screen),
                                  Chars(comment));
  CheckAndSaveEntity(built, registry_.Keys());
  return true;
}

// name CERTIFICATE { member | ! member } [SCREEN screen] [COMMENT text] ;
bool Parser::CertificateGroup(const std::string& name) {
  auto reference = [](const char* member) { return new Certificate(member); };
  Text screen, comment;
  if (!Members(reference) || !Tail(&screen, &comment)) return false;
  Entity* built = new CertificateList(name.c_str(), IPSEC_UNKNOWN, config_.TakeIncludes(), config_.TakeExcludes(),
                                      Chars(screen), Chars(comment));
  if (CheckAndSaveEntity(built, registry_.Certificates())) registry_.mIKEy_add(*built, 1);
  return true;
}

}  // namespace

int yyparse() {
  Parser parser(*Config);
  return parser.Run();
}

void yyerror(const char* message) {
  if (Config != nullptr) Config->ParseError();
  std::cerr << message << " near token " << yytext << "." << std::endl;
}

int EntityUnique(Entity* entity, TList<Entity>& list) {
  if (entity->FindSelf(list, 0) == nullptr) return 1;
  delete entity;
  return 0;
}

bool CheckAndSaveEntity(Entity* entity, TList<Entity>& list) {
  if (!EntityUnique(entity, list)) return false;
  list.Append(*entity);
  return true;
}
