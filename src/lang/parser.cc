#include "lang/parser.h"

#include <arpa/inet.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "crypto/acl.h"
#include "crypto/acl_remote_ike.h"
#include "crypto/acl_remote_skip.h"
#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/certificate_list.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "crypto/ipsec_man_parameters.h"
#include "crypto/security_parameters_ike.h"
#include "crypto/security_parameters_man.h"
#include "crypto/skip_parameter.h"
#include "crypto/vpn_node_ike.h"
#include "crypto/vpn_node_skip.h"
#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "lang/scanner.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/range_list.h"
#include "model/registry.h"
#include "model/time.h"
#include "policy/nat.h"
#include "policy/policy.h"
#include "policy/proxy_data.h"
#include "policy/proxy_data_ftp.h"
#include "policy/proxy_data_http.h"
#include "policy/proxy_data_smtp.h"
#include "policy/rule.h"
#include "screen/ferrowall.h"
#include "screen/interface_clk.h"
#include "services/discriminator.h"
#include "services/filter.h"
#include "services/service.h"
#include "services/state_engine.h"
#include "services/state_engine_internal.h"

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

using Block = std::unique_ptr<SecurityParameters>;
using Proxy = std::unique_ptr<ProxyData>;
using Manual = std::unique_ptr<IPsecManParameters>;
using Esp = std::unique_ptr<IPsecIKEespParams>;
using Ah = std::unique_ptr<IPsecIKEahParams>;

// The tunnel and screen clauses that end a security block.
struct EndTexts {
  Text source_tunnel, destination_tunnel, source_screen, destination_screen;
  bool transport = false;

  SecurityEnds Ends() const {
    return {Chars(source_tunnel), Chars(destination_tunnel), Chars(source_screen), Chars(destination_screen),
            transport};
  }
};

// What a manual clause holds; the forms of the clause decide which words
// are taken and which are only registered.
struct ManualTexts {
  int esp_spi = 0;
  int ah_spi = 0;
  Text esp_encryption, esp_authentication, ah_algorithm;
  Text esp_encryption_key, esp_authentication_key, ah_key;

  ManualNames Names() const {
    return {Chars(esp_encryption),     Chars(esp_authentication),     Chars(ah_algorithm),
            Chars(esp_encryption_key), Chars(esp_authentication_key), Chars(ah_key)};
  }
};

// The ESP forms of a manual clause, by the words written.
enum EspForm { kNoEsp, kEspKeyed, kEspAuthenticationKeyed, kEspKeyedNoAuthentication, kEspBothKeyed, kEspUnkeyed };

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
  // A number in [low, high]; one that a field can't use is refused here,
  // naming it, rather than left to wrap or overflow where it is used.
  bool Number(int* number, int low = INT_MIN, int high = INT_MAX);
  bool StringInto(Text* text);
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
  bool TimeOfDay(int* minutes);
  bool CertificateStatement(const std::string& name);
  bool NameSpaceCertificate(const std::string& name);
  bool IkeCertificate(const std::string& name);
  bool ManualKey(const std::string& name);
  bool CertificateGroup(const std::string& name);
  bool ServiceStatement(const std::string& name);
  bool FilterClause(TList<Filter>& filters);
  bool DiscriminatorClause();
  bool ServiceGroupStatement(const std::string& name);
  bool StateEngineStatement(const std::string& name);
  bool InterfaceStatement(const std::string& name);
  // The log, snmp and icmp options of interfaces and rules.  `session` is
  // the value that LOG_SESSION stands for.
  bool LogOption(Log_Type session, Log_Type* log);
  bool SnmpOption(SNMP_Type* snmp);
  bool IcmpOption(ICMP_Type* icmp);
  void SaveInterface(Interface* interface);
  bool HeaderStatement();
  bool RuleStatement();
  bool NatStatement();
  bool ScreenStatement(const std::string& name);
  bool ScreenIke(FerrowallSettings* settings, std::string texts[4]);
  bool ScreenOptions(FerrowallSettings* settings, std::string texts[11], simplerange* network);
  bool StealthNetwork(simplerange* network);
  bool EspClause(IPsecIKEespParams** esp);
  bool AhClause(IPsecIKEahParams** ah);
  bool PhaseTwo(Esp* esp, Ah* ah);
  bool VpnGatewayStatement();
  bool AccessStatement();
  // [STATUS | READ | WRITE | ALL]; none gives no access.
  Access_Level Level();
  bool AccessSkip(const std::string& user, Access_Level level, const std::string& address);
  bool AccessIke();
  bool VpnGatewaySkip();
  bool VpnGatewayIke();
  // The security blocks of a rule.
  bool AtSecurityBlock() const { return At(TOK_SKIP_VERSION_1) || At(TOK_SKIP_VERSION_2) || At(TOK_MANUAL) || At(TOK_IKE); }
  bool SecurityBlock(Block* block);
  // [proxy]: one of the four proxy words and each of its options in order.
  bool ProxyClause(Proxy* proxy);
  // [!]WORD: 1, or 0 with the "!".
  bool OnOff(int word, Proxy_On_Off* value);
  // !JAVA, JAVA, JAVA_SIGNATURE, JAVA_HASH or JAVA_SIG_HASH: 0 to 4.
  bool JavaWord(int* java);
  bool SkipBlock(Block* block);
  bool ManualBlock(Block* block);
  bool IkeBlock(Block* block);
  // [SOURCE_TUNNEL t] [DESTINATION_TUNNEL t] or, where `transport_allowed`,
  // TRANSPORT; then [SOURCE_SCREEN s] [DESTINATION_SCREEN s].
  bool EndsClause(bool transport_allowed, EndTexts* ends);
  bool ManualClause(Manual* manual);
  bool ManualEsp(ManualTexts* texts, EspForm* form);
  bool ManualAh(EspForm form, ManualTexts* texts);
  // A flag keyword: 1 and consumed when it stands next.
  int Flag(int keyword);
  // KEYWORD n, when the keyword stands next.
  bool OptionalNumber(int keyword, int* number);
  // Makes the algorithm object that a statement names, once per name.
  void RegisterAlgorithm(const std::string& name);
  void RegisterSkipAlgorithm(const std::string& name, screen_alg_type type, Skip_Version version = SKIP_V2);

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

bool Parser::StringInto(Text* text) {
  std::string value;
  if (!String(&value)) return false;
  *text = value;
  return true;
}

bool Parser::Number(int* number, int low, int high) {
  if (!At(TOK_NUMBER)) return SyntaxError();
  if (value_.number < low || value_.number > high) {
    yyerror("number out of range");
    result_ = 1;
    return false;
  }
  *number = value_.number;
  Next();
  return true;
}

bool Parser::OptionalString(int keyword, Text* text) {
  if (!At(keyword)) return true;
  Next();
  return StringInto(text);
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
  Entity::StatementPosition({yyfilename, yylineno, yycolumn});
  if (At(TOK_ALIENLINE)) {
    registry_.AddAlienData(value_.string);
    free(value_.string);
    Next();
    return true;
  }
  switch (token_) {
    case TOK_POLICY_VERSION:
    case TOK_REGISTRY_VERSION:
    case TOK_REGISTRY_USED_VERSION:
    case TOK_LOAD:
      return HeaderStatement();
    case TOK_RULE:
      return RuleStatement();
    case TOK_NAT:
      return NatStatement();
    case TOK_VPNGATEWAY:
      return VpnGatewayStatement();
    case TOK_ACCESS:
      return AccessStatement();
    default: {
      std::string name;
      return String(&name) && NamedStatement(name);
    }
  }
}

// RULE service source destination [USER user] [VPN vpn] ALLOW [log] [snmp] [proxy] [TIME time] [SCREEN screen]
//   [COMMENT text] ;
// RULE service source destination [USER user] DENY [log] [snmp] [icmp] [proxy] [TIME time] [SCREEN screen]
//   [COMMENT text] ;
// RULE service source destination security [security] ALLOW [log] [snmp] [TIME time] [SCREEN screen] [COMMENT text] ;
bool Parser::RuleStatement() {
  Next();
  std::string service, source, destination;
  Text user, vpn;
  if (!String(&service) || !String(&source) || !String(&destination)) return false;
  Block first, second;
  bool allow = true;
  if (AtSecurityBlock()) {
    if (!SecurityBlock(&first) || (AtSecurityBlock() && !SecurityBlock(&second)) || !Expect(TOK_ALLOW)) return false;
  } else if (!OptionalString(TOK_USER, &user)) {
    return false;
  } else if (At(TOK_VPN) || At(TOK_ALLOW)) {
    if (!OptionalString(TOK_VPN, &vpn) || !Expect(TOK_ALLOW)) return false;
  } else {
    if (!Expect(TOK_DENY)) return false;
    allow = false;
  }
  // A session log is the session record on an allowed rule; a refused
  // packet has no session, so it is logged as a summary.
  Log_Type log = LOG_NONE;
  SNMP_Type snmp = SNMP_NONE;
  ICMP_Type icmp = ICMP_NONE;
  if (!LogOption(allow ? LOG_SESSION : LOG_SUMMARY, &log) || !SnmpOption(&snmp)) return false;
  if (!allow && !IcmpOption(&icmp)) return false;
  Proxy proxy;
  if (!first && !ProxyClause(&proxy)) return false;
  Text time, screen, comment;
  if (!OptionalString(TOK_TIME, &time) || !Tail(&screen, &comment)) return false;
  config_.ThePolicy()->Rules(*new Rule(service.c_str(), source.c_str(), destination.c_str(), Chars(user),
                                       first.release(), second.release(), Chars(vpn),
                                       allow ? ACTION_ALLOW : ACTION_DENY, log, snmp, icmp, 0, proxy.release(), Chars(time),
                                       Chars(screen), Chars(comment)));
  return true;
}

bool Parser::ProxyClause(Proxy* proxy) {
  switch (token_) {
    case TOK_PROXY_FTP: {
      Next();
      ProxyDataFTP::Commands commands;
      const int words[] = {TOK_FTP_GET,    TOK_FTP_PUT,        TOK_FTP_CHDIR, TOK_FTP_MKDIR,
                           TOK_FTP_RENAME, TOK_FTP_REMOVE_DIR, TOK_FTP_DELETE};
      for (size_t i = 0; i < commands.size(); ++i)
        if (!OnOff(words[i], &commands[i])) return false;
      proxy->reset(new ProxyDataFTP(commands));
      return true;
    }
    case TOK_PROXY_HTTP: {
      Next();
      ProxyDataHTTP::Switches switches;
      int java = 0;
      if (!OnOff(TOK_COOKIES, &switches[0]) || !OnOff(TOK_ACTIVE_X, &switches[1]) || !OnOff(TOK_SSL, &switches[2]) ||
          !JavaWord(&java))
        return false;
      proxy->reset(new ProxyDataHTTP(switches, java));
      return true;
    }
    case TOK_PROXY_SMTP: {
      Next();
      Proxy_On_Off relay;
      if (!OnOff(TOK_RELAY, &relay)) return false;
      proxy->reset(new ProxyDataSMTP(relay));
      return true;
    }
    case TOK_PROXY_Telnet:
      Next();
      proxy->reset(new ProxyData);
      return true;
    default:
      return true;
  }
}

bool Parser::OnOff(int word, Proxy_On_Off* value) {
  *value = PROXY_ON;
  if (At('!')) {
    Next();
    *value = PROXY_OFF;
  }
  return Expect(word);
}

bool Parser::JavaWord(int* java) {
  if (At('!')) {
    Next();
    *java = 0;
    return Expect(TOK_JAVA);
  }
  const int words[] = {TOK_JAVA, TOK_JAVA_SIGNATURE, TOK_JAVA_HASH, TOK_JAVA_SIG_HASH};
  for (int value = 1; value <= 4; ++value) {
    if (At(words[value - 1])) {
      Next();
      *java = value;
      return true;
    }
  }
  return SyntaxError();
}

// NAT STATIC|DYNAMIC original-source original-destination translated-source translated-destination
//   [SCREEN screen] [COMMENT text] ;
bool Parser::NatStatement() {
  Next();
  unsigned mode;
  if (At(TOK_STATIC)) mode = 0;
  else if (At(TOK_DYNAMIC)) mode = 1;
  else return SyntaxError();
  Next();
  std::string addresses[4];
  for (std::string& address : addresses)
    if (!String(&address)) return false;
  Text screen, comment;
  if (!Tail(&screen, &comment)) return false;
  config_.ThePolicy()->Nats(*new Nat(addresses[0].c_str(), addresses[1].c_str(), addresses[2].c_str(),
                                     addresses[3].c_str(), mode, Chars(screen), Chars(comment)));
  return true;
}

// POLICY_VERSION n | REGISTRY_VERSION n | REGISTRY_USED_VERSION n | LOAD name,
// without a ";".  Their effect depends on whether a LOAD came before: the
// policy file names its own version first, then loads its registry, whose
// file then names the registry's version.
bool Parser::HeaderStatement() {
  int statement = token_;
  Next();
  Policy& policy = *config_.ThePolicy();
  if (statement == TOK_LOAD) {
    std::string name;
    if (!String(&name)) return false;
    policy.Load(name.c_str());
    return true;
  }
  // Saving gives a file the version after its highest, which must still be
  // a number.
  int version;
  if (!Number(&version, INT_MIN, INT_MAX - 1)) return false;
  FWFile* load = policy.Load();
  if (statement == TOK_POLICY_VERSION) {
    (load != nullptr ? load : policy.File())->Version(version);
  } else if (statement == TOK_REGISTRY_VERSION) {
    if (load != nullptr) load->Version(version);
    else if (policy.Version() <= 0) policy.Version(version);
  } else {
    policy.RegVersion(version);
  }
  return true;
}

bool Parser::NamedStatement(const std::string& name) {
  switch (token_) {
    case TOK_ADDRESS: return AddressStatement(name);
    case TOK_TIME: return TimeStatement(name);
    case TOK_CERTIFICATE: return CertificateStatement(name);
    case TOK_KEY: Next(); return ManualKey(name);
    case TOK_SERVICE: return ServiceStatement(name);
    case TOK_SERVICE_GROUP: return ServiceGroupStatement(name);
    case TOK_STATE_ENGINE: return StateEngineStatement(name);
    case TOK_INTERFACE: return InterfaceStatement(name);
    case TOK_SCREEN: return ScreenStatement(name);
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
    int from, to;
    if (!TimeOfDay(&from) || !TimeOfDay(&to)) return false;
    config_.Hours().Insert(Range(from, to, RT_TIME, RS_ADDRESSES));
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

// hour minute, as minutes from midnight.  A clock time runs from 0 0 to
// 24 0: an hour or minute beyond the clock would silently name a time of
// another day (or overflow), which is never what was meant.
bool Parser::TimeOfDay(int* minutes) {
  int hour, minute;
  if (!Number(&hour, 0, 24) || !Number(&minute, 0, hour == 24 ? 0 : 59)) return false;
  *minutes = hour * 60 + minute;
  return true;
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

// name SERVICE { filter } [SCREEN screen] [COMMENT text] ;
// filter: [REVERSE] engine { discriminator }
bool Parser::ServiceStatement(const std::string& name) {
  Next();
  int elements = 0;
  while (At(TOK_STRING) || At(TOK_REVERSE)) {
    if (!Grow(&elements)) return false;
    bool reverse = At(TOK_REVERSE);
    if (reverse) Next();
    if (!FilterClause(reverse ? config_.ReverseFilters() : config_.ForwardFilters())) return false;
  }
  Text screen, comment;
  if (!Tail(&screen, &comment)) return false;
  Entity* built = new Service(name.c_str(), config_.TakeForwardFilters(), config_.TakeReverseFilters(),
                              Chars(screen), Chars(comment));
  CheckAndSaveEntity(built, registry_.Services());
  return true;
}

bool Parser::FilterClause(TList<Filter>& filters) {
  std::string engine;
  if (!String(&engine)) return false;
  int elements = 0;
  while (At(TOK_NUMBER) || At('*'))
    if (!Grow(&elements) || !DiscriminatorClause()) return false;
  filters.Append(*new Filter(engine.c_str(), config_.TakeDiscriminators()));
  return true;
}

// value [BROADCAST] [PARAMS ( { n } )], the value being n, n - n or *.
// Values are words of the filter, so a negative number wraps as it does in
// 32 bits.
bool Parser::DiscriminatorClause() {
  unsigned low = 0, high = 0;
  int all = At('*');
  if (all) {
    Next();
  } else {
    int first;
    if (!Number(&first)) return false;
    low = high = static_cast<unsigned>(first);
    if (At(TOK_DASH)) {
      Next();
      int last;
      if (!Number(&last)) return false;
      high = static_cast<unsigned>(last);
    }
  }
  int broadcast = At(TOK_BROADCAST) ? -1 : 0;
  if (broadcast) Next();
  TList<int>* params = nullptr;
  if (At(TOK_PARAMS)) {
    Next();
    if (!Expect('(')) return false;
    while (At(TOK_NUMBER)) {
      config_.DiscriminatorParameters().Append(*new int(value_.number));
      Next();
    }
    if (!Expect(')')) return false;
    params = config_.TakeDiscriminatorParameters();
  }
  config_.Discriminators().Append(*new Discriminator(low, high, all, params, broadcast));
  return true;
}

// name SERVICE_GROUP { member } [SCREEN screen] [COMMENT text] ;
bool Parser::ServiceGroupStatement(const std::string& name) {
  Next();
  int elements = 0;
  while (At(TOK_STRING)) {
    std::string member;
    if (!Grow(&elements) || !String(&member)) return false;
    config_.GroupServices().Append(*new Entity(member.c_str(), nullptr, nullptr, 0));
  }
  Text screen, comment;
  if (!Tail(&screen, &comment)) return false;
  Entity* built = new Service(name.c_str(), config_.TakeGroupServices(), Chars(screen), Chars(comment));
  CheckAndSaveEntity(built, registry_.Services());
  return true;
}

// name STATE_ENGINE ;
// name STATE_ENGINE internal label FORWARD [REVERSE] class subclass max param { n } ;
// name STATE_ENGINE internal label REVERSE class subclass max param { n } ;
bool Parser::StateEngineStatement(const std::string& name) {
  Next();
  if (At(';')) {
    Next();
    CheckAndSaveEntity(new StateEngineInternal(name.c_str(), 1), registry_.StateEngineInternals());
    return true;
  }
  std::string internal, label;
  if (!String(&internal) || !String(&label)) return false;
  int forward = At(TOK_FORWARD);
  if (forward) Next();
  int reverse = At(TOK_REVERSE);
  if (!forward && !reverse) return SyntaxError();
  if (reverse) Next();
  int engine_class, subclass, max_value, param_number;
  if (!Number(&engine_class) || !Number(&subclass) || !Number(&max_value) || !Number(&param_number)) return false;
  int elements = 0;
  while (At(TOK_NUMBER)) {
    if (!Grow(&elements)) return false;
    config_.EngineParameters().Append(*new int(value_.number));
    Next();
  }
  if (!Expect(';')) return false;
  Entity* built = new StateEngine(name.c_str(), internal.c_str(), label.c_str(), engine_class, subclass,
                                  static_cast<unsigned>(max_value), param_number,
                                  config_.TakeEngineParameters(), forward, reverse);
  CheckAndSaveEntity(built, registry_.StateEngines());
  return true;
}

bool Parser::LogOption(Log_Type session, Log_Type* log) {
  switch (token_) {
    case TOK_LOG_NONE: *log = LOG_NONE; break;
    case TOK_LOG_SUMMARY: *log = LOG_SUMMARY; break;
    case TOK_LOG_DETAIL: *log = LOG_DETAIL; break;
    case TOK_LOG_SESSION: *log = session; break;
    case TOK_LOG:
      Next();
      switch (token_) {
        case TOK_SUMMARY: *log = LOG_SUMMARY; break;
        case TOK_DETAIL: *log = LOG_DETAIL; break;
        case TOK_SESSION: *log = session; break;
        default: return SyntaxError();
      }
      break;
    default: return true;
  }
  Next();
  return true;
}

bool Parser::SnmpOption(SNMP_Type* snmp) {
  if (!At(TOK_SNMP) && !At(TOK_SNMP_NONE)) return true;
  *snmp = At(TOK_SNMP) ? SNMP_TRAP : SNMP_NONE;
  Next();
  return true;
}

namespace {

// The answer of the one-word spelling ICMP_X, or of the word X behind ICMP.
bool IcmpAnswer(int token, bool one_word, ICMP_Type* icmp) {
  const struct {
    int one_word;
    int behind_icmp;
    ICMP_Type answer;
  } kAnswers[] = {
      {TOK_ICMP_NET_UNREACHABLE, TOK_NET_UNREACHABLE, ICMP_NET_UNREACHABLE},
      {TOK_ICMP_HOST_UNREACHABLE, TOK_HOST_UNREACHABLE, ICMP_HOST_UNREACHABLE},
      {TOK_ICMP_PORT_UNREACHABLE, TOK_PORT_UNREACHABLE, ICMP_PORT_UNREACHABLE},
      {TOK_ICMP_NET_FORBIDDEN, TOK_NET_FORBIDDEN, ICMP_NET_FORBIDDEN},
      {TOK_ICMP_HOST_FORBIDDEN, TOK_HOST_FORBIDDEN, ICMP_HOST_FORBIDDEN},
  };
  for (const auto& answer : kAnswers) {
    if (token == (one_word ? answer.one_word : answer.behind_icmp)) {
      *icmp = answer.answer;
      return true;
    }
  }
  return false;
}

}  // namespace

bool Parser::IcmpOption(ICMP_Type* icmp) {
  if (At(TOK_ICMP_NONE)) {
    *icmp = ICMP_NONE;
  } else if (At(TOK_ICMP)) {
    Next();
    if (!IcmpAnswer(token_, false, icmp)) return SyntaxError();
  } else if (!IcmpAnswer(token_, true, icmp)) {
    return true;
  }
  Next();
  return true;
}

// name INTERFACE ADMIN address [log] [snmp] [icmp] [SCREEN screen] [COMMENT text] ;
// name INTERFACE DISABLED address [SCREEN screen] [COMMENT text] ;
// name INTERFACE GWY address [COMPLETE] [overlap] [log] [snmp] [icmp] [SCREEN screen] [COMMENT text] ;
// name INTERFACE HA address [log] [snmp] [icmp] [SCREEN screen] [COMMENT text] ;
// name INTERFACE CLK address [log] [snmp] [icmp] { ipaddr } [SCREEN screen] [COMMENT text] ;
bool Parser::InterfaceStatement(const std::string& name) {
  Next();
  Interface_Type type;
  switch (token_) {
    case TOK_ADMIN: type = INTERFACE_ADMIN; break;
    case TOK_DISABLED: type = INTERFACE_DISABLED; break;
    case TOK_GWY: type = INTERFACE_GWY; break;
    case TOK_HA: type = INTERFACE_HA; break;
    case TOK_CLK: type = INTERFACE_CLK; break;
    default: return SyntaxError();
  }
  Next();
  std::string address;
  if (!String(&address)) return false;
  int complete = 0;
  Text overlap;
  if (type == INTERFACE_GWY) {
    complete = At(TOK_COMPLETE);
    if (complete) Next();
    if (At(TOK_STRING)) {
      std::string name_of_overlap;
      String(&name_of_overlap);
      overlap = name_of_overlap;
    }
  }
  Log_Type log = LOG_NONE;
  SNMP_Type snmp = SNMP_NONE;
  ICMP_Type icmp = ICMP_NONE;
  if (type != INTERFACE_DISABLED && !(LogOption(LOG_SUMMARY, &log) && SnmpOption(&snmp) && IcmpOption(&icmp)))
    return false;
  if (type == INTERFACE_CLK) {
    int elements = 0;
    while (At(TOK_IPADDR)) {
      if (!Grow(&elements)) return false;
      config_.AddressWords().Append(*new unsigned(ntohl(value_.address)));
      Next();
    }
  }
  Text screen, comment;
  if (!Tail(&screen, &comment)) return false;
  if (type == INTERFACE_CLK) {
    SaveInterface(new InterfaceCLK(name.c_str(), address.c_str(), log, snmp, icmp, config_.TakeAddressWords(),
                                   Chars(screen), Chars(comment)));
  } else {
    SaveInterface(new Interface(name.c_str(), address.c_str(), type, log, snmp, icmp, Chars(screen),
                                Chars(comment), complete, Chars(overlap)));
  }
  return true;
}

// An interface name is unique across all four interface lists.
void Parser::SaveInterface(Interface* interface) {
  for (TList<Entity>* list : {&registry_.AdminInterfaces(), &registry_.GWYInterfaces(),
                              &registry_.DisabledInterfaces(), &registry_.CLKInterfaces()})
    if (!EntityUnique(interface, *list)) return;
  registry_.InterfaceList(interface->Type()).Append(*interface);
}

int Parser::Flag(int keyword) {
  if (!At(keyword)) return 0;
  Next();
  return 1;
}

bool Parser::OptionalNumber(int keyword, int* number) {
  return !At(keyword) || (Expect(keyword) && Number(number));
}

void Parser::RegisterAlgorithm(const std::string& name) {
  CheckAndSaveEntity(new Algorithm(name.c_str()), registry_.Algorithms());
}

void Parser::RegisterSkipAlgorithm(const std::string& name, screen_alg_type type, Skip_Version version) {
  TList<Entity>* v1[] = {&registry_.AlgorithmKeyV1(), &registry_.AlgorithmDataV1(), &registry_.AlgorithmMacV1(),
                         &registry_.AlgorithmCompV1()};
  TList<Entity>* v2[] = {&registry_.AlgorithmKeyV2(), &registry_.AlgorithmDataV2(), &registry_.AlgorithmMacV2(),
                         &registry_.AlgorithmCompV2()};
  CheckAndSaveEntity(new Algorithm(name.c_str(), type, version), *(version == SKIP_V1 ? v1 : v2)[type]);
}

// ESP enc auth; an empty or "NONE" authentication means none.
bool Parser::EspClause(IPsecIKEespParams** esp) {
  if (!At(TOK_ESP)) return true;
  Next();
  std::string encryption, authentication;
  if (!String(&encryption) || !String(&authentication)) return false;
  RegisterAlgorithm(encryption);
  bool no_authentication = authentication.empty() || authentication == "NONE";
  if (!no_authentication) RegisterAlgorithm(authentication);
  *esp = new IPsecIKEespParams(encryption.c_str(), no_authentication ? nullptr : authentication.c_str());
  return true;
}

bool Parser::AhClause(IPsecIKEahParams** ah) {
  if (!At(TOK_AH)) return true;
  Next();
  std::string algorithm;
  if (!String(&algorithm)) return false;
  RegisterAlgorithm(algorithm);
  *ah = new IPsecIKEahParams(algorithm.c_str());
  return true;
}

bool Parser::SecurityBlock(Block* block) {
  if (At(TOK_MANUAL)) return ManualBlock(block);
  if (At(TOK_IKE)) return IkeBlock(block);
  return SkipBlock(block);
}

bool Parser::EndsClause(bool transport_allowed, EndTexts* ends) {
  ends->transport = transport_allowed && Flag(TOK_TRANSPORT);
  if (!ends->transport &&
      (!OptionalString(TOK_SOURCE_TUNNEL, &ends->source_tunnel) ||
       !OptionalString(TOK_DESTINATION_TUNNEL, &ends->destination_tunnel)))
    return false;
  return OptionalString(TOK_SOURCE_SCREEN, &ends->source_screen) &&
         OptionalString(TOK_DESTINATION_SCREEN, &ends->destination_screen);
}

// SKIP_VERSION_1 source-cert destination-cert key-alg data-alg ends
// SKIP_VERSION_2 source-cert destination-cert key-alg data-alg mac-alg comp-alg ends
bool Parser::SkipBlock(Block* block) {
  Skip_Version version = At(TOK_SKIP_VERSION_1) ? SKIP_V1 : SKIP_V2;
  Next();
  std::string certificates[2];
  Text algorithms[4];
  if (!String(&certificates[0]) || !String(&certificates[1])) return false;
  for (int type = 0; type < (version == SKIP_V1 ? 2 : 4); ++type) {
    std::string name;
    if (!String(&name)) return false;
    RegisterSkipAlgorithm(name, static_cast<screen_alg_type>(type), version);
    algorithms[type] = name;
  }
  EndTexts ends;
  if (!EndsClause(false, &ends)) return false;
  SkipNames names = {certificates[0].c_str(), certificates[1].c_str(), Chars(algorithms[0]),
                     Chars(algorithms[1]),    Chars(algorithms[2]),    Chars(algorithms[3])};
  block->reset(new SkipParameter(version, names, ends.Ends()));
  return true;
}

// MANUAL [FORWARD] manual [REVERSE manual] ends, or MANUAL REVERSE manual
// ends; without a direction word one clause serves both flows.
bool Parser::ManualBlock(Block* block) {
  Next();
  bool forward_only = Flag(TOK_FORWARD);
  bool reverse_only = !forward_only && Flag(TOK_REVERSE);
  Manual forward, reverse;
  if (!ManualClause(reverse_only ? &reverse : &forward)) return false;
  if (forward_only && Flag(TOK_REVERSE) && !ManualClause(&reverse)) return false;
  EndTexts ends;
  if (!EndsClause(true, &ends)) return false;
  IPsecManParameters* shared = !forward_only && !reverse_only ? forward.get() : nullptr;
  IPsecManParameters* backward = shared != nullptr ? shared : reverse.release();
  block->reset(new SecurityParametersMan(forward.release(), backward, ends.Ends()));
  return true;
}

// An ESP part, an AH part, or both in this order.
bool Parser::ManualClause(Manual* manual) {
  ManualTexts texts;
  EspForm form = kNoEsp;
  if (!ManualEsp(&texts, &form)) return false;
  if (At(TOK_AH)) {
    if (!ManualAh(form, &texts)) return false;
  } else if (form == kNoEsp) {
    return SyntaxError();
  }
  manual->reset(new IPsecManParameters(texts.esp_spi, texts.ah_spi, texts.Names()));
  return true;
}

// ESP n enc KEYS key [auth [KEYS key]], or ESP n x auth KEYS key, or
// ESP n x y.  An algorithm without a key can't be used, so the clause
// holds "NONE" for it.
bool Parser::ManualEsp(ManualTexts* texts, EspForm* form) {
  if (!At(TOK_ESP)) return true;
  Next();
  std::string first, second;
  if (!Number(&texts->esp_spi) || !String(&first)) return false;
  if (Flag(TOK_KEYS)) {
    if (!StringInto(&texts->esp_encryption_key)) return false;
    RegisterAlgorithm(first);
    texts->esp_encryption = first;
    *form = kEspKeyed;
    if (!At(TOK_STRING)) return true;
    if (!String(&second)) return false;
    RegisterAlgorithm(second);
    *form = At(TOK_KEYS) ? kEspBothKeyed : kEspKeyedNoAuthentication;
    texts->esp_authentication = *form == kEspBothKeyed ? second : "NONE";
    return *form != kEspBothKeyed || (Expect(TOK_KEYS) && StringInto(&texts->esp_authentication_key));
  }
  if (!String(&second)) return false;
  texts->esp_encryption = "NONE";
  if (!At(TOK_KEYS)) {
    RegisterAlgorithm("NONE");
    texts->esp_authentication = "NONE";
    *form = kEspUnkeyed;
    return true;
  }
  Next();
  RegisterAlgorithm(first);
  RegisterAlgorithm(second);
  texts->esp_authentication = second;
  *form = kEspAuthenticationKeyed;
  return StringInto(&texts->esp_authentication_key);
}

// AH m alg KEYS key, or AH m alg without a key.
bool Parser::ManualAh(EspForm form, ManualTexts* texts) {
  Next();
  std::string algorithm;
  if (!Number(&texts->ah_spi) || !String(&algorithm)) return false;
  if (Flag(TOK_KEYS)) {
    if (!StringInto(&texts->ah_key)) return false;
    RegisterAlgorithm(algorithm);
    texts->ah_algorithm = algorithm;
    return true;
  }
  // Unkeyed, the algorithm counts as none, except behind a keyed ESP
  // encryption without authentication, where the name is kept.
  RegisterAlgorithm(form == kNoEsp || form == kEspUnkeyed ? "NONE" : algorithm);
  texts->ah_algorithm = form == kEspKeyed ? algorithm : "NONE";
  return true;
}

// [esp] [ah]
bool Parser::PhaseTwo(Esp* esp, Ah* ah) {
  IPsecIKEespParams* esp_made = nullptr;
  IPsecIKEahParams* ah_made = nullptr;
  bool esp_read = EspClause(&esp_made);
  esp->reset(esp_made);
  if (!esp_read || !AhClause(&ah_made)) return false;
  ah->reset(ah_made);
  return true;
}

// IKE enc hash [group-n] auth cert peer [esp] [ah] ends; an empty peer
// means a pre-shared key, which cert names.
bool Parser::IkeBlock(Block* block) {
  Next();
  std::string encryption, hash, method, certificate, peer;
  int group = 1;
  if (!String(&encryption) || !String(&hash)) return false;
  if (At(TOK_NUMBER) && !Number(&group)) return false;
  if (!String(&method) || !String(&certificate) || !String(&peer)) return false;
  for (const std::string* algorithm : {&encryption, &hash, &method}) RegisterAlgorithm(*algorithm);
  Esp esp;
  Ah ah;
  if (!PhaseTwo(&esp, &ah)) return false;
  EndTexts ends;
  if (!EndsClause(true, &ends)) return false;
  IkeNames names = {encryption.c_str(), hash.c_str(), static_cast<unsigned>(group), method.c_str(),
                    certificate.c_str(), peer.empty() ? nullptr : peer.c_str()};
  block->reset(new SecurityParametersIKE(names, esp.release(), ah.release(), ends.Ends()));
  return true;
}

// ACCESS user level [SCREEN screen] [COMMENT text] ;
// ACCESS user level address SKIP_VERSION_n ... ;  ACCESS IKE user level address ... ;
// IKE is a word of its own here, so a user of that name is quoted.
bool Parser::AccessStatement() {
  Next();
  if (At(TOK_IKE)) return AccessIke();
  std::string user;
  if (!String(&user)) return false;
  Access_Level level = Level();
  if (At(TOK_STRING)) {
    std::string address;
    return String(&address) && AccessSkip(user, level, address);
  }
  Text screen, comment;
  if (!Tail(&screen, &comment)) return false;
  config_.ThePolicy()->ACLsLocal(*new ACL(user.c_str(), level, Chars(screen), Chars(comment)));
  return true;
}

Access_Level Parser::Level() {
  const int words[] = {TOK_STATUS, TOK_READ, TOK_WRITE, TOK_ALL};
  for (int level = 0; level < 4; ++level)
    if (Flag(words[level])) return static_cast<Access_Level>(level + 1);
  return ACCESS_NONE;
}

// SKIP_VERSION_1 cert key data [TUNNEL name] [SCREEN screen] [COMMENT text] ;
// SKIP_VERSION_2 cert key data mac compression [TUNNEL name] [SCREEN screen] [COMMENT text] ;
bool Parser::AccessSkip(const std::string& user, Access_Level level, const std::string& address) {
  if (!At(TOK_SKIP_VERSION_1) && !At(TOK_SKIP_VERSION_2)) return SyntaxError();
  Skip_Version version = At(TOK_SKIP_VERSION_1) ? SKIP_V1 : SKIP_V2;
  Next();
  std::string certificate, algorithms[4];
  if (!String(&certificate)) return false;
  const char* names[4] = {nullptr, nullptr, nullptr, nullptr};
  for (int type = 0; type < (version == SKIP_V1 ? 2 : 4); ++type) {
    if (!String(&algorithms[type])) return false;
    RegisterSkipAlgorithm(algorithms[type], static_cast<screen_alg_type>(type), version);
    names[type] = algorithms[type].c_str();
  }
  Text tunnel, screen, comment;
  if (!OptionalString(TOK_TUNNEL, &tunnel) || !Tail(&screen, &comment)) return false;
  config_.ThePolicy()->ACLsRemote(*new ACLRemoteSkip(user.c_str(), level, address.c_str(), version,
                                                     certificate.c_str(), names, Chars(tunnel), Chars(screen),
                                                     Chars(comment)));
  return true;
}

// ACCESS IKE user level address enc hash group auth cert [esp] [ah] [TUNNEL name | TRANSPORT] [SCREEN screen]
//   [COMMENT text] ;
bool Parser::AccessIke() {
  Next();
  std::string user, address, encryption, hash, method, certificate;
  int group = 0;
  if (!String(&user)) return false;
  Access_Level level = Level();
  if (!String(&address) || !String(&encryption) || !String(&hash) || !Number(&group) || !String(&method) ||
      !String(&certificate))
    return false;
  for (const std::string* algorithm : {&encryption, &hash, &method}) RegisterAlgorithm(*algorithm);
  Esp esp;
  Ah ah;
  Text tunnel, screen, comment;
  if (!PhaseTwo(&esp, &ah)) return false;
  bool transport = Flag(TOK_TRANSPORT);
  if ((!transport && !OptionalString(TOK_TUNNEL, &tunnel)) || !Tail(&screen, &comment)) return false;
  IkeProposalNames names = {encryption.c_str(), hash.c_str(), static_cast<unsigned>(group), method.c_str()};
  config_.ThePolicy()->ACLsRemote(*new ACLRemoteIKE(user.c_str(), level, address.c_str(), names,
                                                    certificate.c_str(), esp.release(), ah.release(), Chars(tunnel),
                                                    transport, Chars(screen), Chars(comment)));
  return true;
}

bool Parser::VpnGatewayStatement() {
  Next();
  return At(TOK_IKE) ? VpnGatewayIke() : VpnGatewaySkip();
}

// VPNGATEWAY vpn address cert KEYS key DATAS data MACS mac COMPRESSIONS comp [TUNNEL name] [COMMENT text] ;
bool Parser::VpnGatewaySkip() {
  std::string vpn, address, certificate, algorithms[4];
  if (!String(&vpn) || !String(&address) || !String(&certificate)) return false;
  const int words[4] = {TOK_KEYS, TOK_DATAS, TOK_MACS, TOK_COMPRESSIONS};
  for (int type = 0; type < 4; ++type) {
    if (!Expect(words[type]) || !String(&algorithms[type])) return false;
    RegisterSkipAlgorithm(algorithms[type], static_cast<screen_alg_type>(type));
  }
  Text tunnel, comment;
  if (!OptionalString(TOK_TUNNEL, &tunnel) || !CommentClause(&comment) || !Expect(';')) return false;
  const char* names[4] = {algorithms[0].c_str(), algorithms[1].c_str(), algorithms[2].c_str(),
                          algorithms[3].c_str()};
  config_.ThePolicy()->VPNNodes(*new VPNNodeSkip(vpn.c_str(), address.c_str(), certificate.c_str(), names,
                                                 Chars(tunnel), Chars(comment)));
  return true;
}

// VPNGATEWAY IKE vpn address enc hash group auth cert [esp] [ah] [TUNNEL name] [SCREEN screen] [COMMENT text] ;
// VPNGATEWAY IKE vpn address cert auth enc hash [esp] [ah] [SCREEN screen] [TUNNEL name] [COMMENT text] ;
// The older form has no group, so a number in the fifth place tells the
// newer one.
bool Parser::VpnGatewayIke() {
  Next();
  std::string vpn, address, third, fourth, encryption, hash, method, certificate;
  int group = 1;
  if (!String(&vpn) || !String(&address) || !String(&third) || !String(&fourth)) return false;
  bool newer = At(TOK_NUMBER);
  if (newer) {
    encryption = third;
    hash = fourth;
    if (!Number(&group) || !String(&method) || !String(&certificate)) return false;
  } else {
    certificate = third;
    method = fourth;
    if (!String(&encryption) || !String(&hash)) return false;
  }
  for (const std::string* algorithm : {&encryption, &hash, &method}) RegisterAlgorithm(*algorithm);
  Esp esp;
  Ah ah;
  Text tunnel, screen, comment;
  if (!PhaseTwo(&esp, &ah)) return false;
  bool ends = newer ? OptionalString(TOK_TUNNEL, &tunnel) && ScreenClause(&screen)
                    : ScreenClause(&screen) && OptionalString(TOK_TUNNEL, &tunnel);
  if (!ends || !CommentClause(&comment) || !Expect(';')) return false;
  IkeProposalNames names = {encryption.c_str(), hash.c_str(), static_cast<unsigned>(group), method.c_str()};
  config_.ThePolicy()->VPNNodes(*new VPNNodeIKE(vpn.c_str(), address.c_str(), names, certificate.c_str(),
                                                esp.release(), ah.release(), Chars(tunnel), Chars(screen),
                                                Chars(comment)));
  return true;
}

// name SCREEN [ADMIN_IP admin] [IKE enc hash group auth cert [esp] [ah]] options ;
bool Parser::ScreenStatement(const std::string& name) {
  Next();
  FerrowallSettings settings;
  // The values the settings point into, alive until the screen copies them.
  std::string ike_texts[4], option_texts[11];
  simplerange network;
  if (At(TOK_ADMIN_IP)) {
    Next();
    if (At(TOK_STRING)) {
      std::string address;
      String(&address);
      settings.admin_ip = new Address(address.c_str(), nullptr, nullptr, ADDRESS_SINGLE);
    } else {
      simplerange range;
      if (!AddressValue(&range)) return false;
      settings.admin_ip = new Address(&range);
    }
  }
  bool built = At(TOK_IKE) ? ScreenIke(&settings, ike_texts) : true;
  built = built && ScreenOptions(&settings, option_texts, &network) && Expect(';');
  if (!built) {
    delete settings.admin_ip;
    delete settings.esp_params;
    delete settings.ah_params;
    return false;
  }
  settings.snmp_recipients = config_.TakeAddressWords();
  CheckAndSaveEntity(new Ferrowall(name.c_str(), settings), registry_.Screens());
  return true;
}

// IKE enc hash group auth cert [esp] [ah].  A group of 0 with all three
// algorithms "NONE" means no IKE algorithms at all.
bool Parser::ScreenIke(FerrowallSettings* settings, std::string texts[4]) {
  Next();
  std::string& encryption = texts[0];
  std::string& hash = texts[1];
  std::string& authentication = texts[2];
  std::string& certificate = texts[3];
  if (!String(&encryption) || !String(&hash) || !Number(&settings->oakley_group) || !String(&authentication) ||
      !String(&certificate))
    return false;
  bool none = settings->oakley_group == 0 && encryption == "NONE" && hash == "NONE" && authentication == "NONE";
  if (!none) {
    for (const std::string* algorithm : {&encryption, &hash, &authentication}) RegisterAlgorithm(*algorithm);
    settings->ike_encryption = encryption.c_str();
    settings->ike_hash = hash.c_str();
    settings->ike_authentication = authentication.c_str();
  }
  settings->ike_certificate = certificate.c_str();
  return EspClause(&settings->esp_params) && AhClause(&settings->ah_params);
}

// The options of a screen, each in its one place.
bool Parser::ScreenOptions(FerrowallSettings* settings, std::string texts[11], simplerange* network) {
  struct NamedOption {
    int keyword;
    const char** value;
    int skip_type;  // the SKIP algorithm type it registers, or -1
  };
  const NamedOption named[] = {
      {TOK_CERTIFICATE, &settings->skip_certificate, -1}, {TOK_KEYS, &settings->key_algorithm, ALG_KEY},
      {TOK_DATAS, &settings->data_algorithm, ALG_DATA},   {TOK_MACS, &settings->mac_algorithm, ALG_MAC},
      {TOK_COMPRESSIONS, &settings->compression_algorithm, ALG_COMPRESSION},
      {TOK_TUNNEL, &settings->tunnel, -1},                {TOK_MASTER, &settings->master, -1},
  };
  int text = 0;
  for (const NamedOption& option : named) {
    Text value;
    if (!OptionalString(option.keyword, &value)) return false;
    if (!value) continue;
    texts[text] = *value;
    *option.value = texts[text++].c_str();
    if (option.skip_type >= 0) RegisterSkipAlgorithm(*value, static_cast<screen_alg_type>(option.skip_type));
  }
  if (!OptionalNumber(TOK_TIMEOUT, &settings->timeout)) return false;
  settings->certificate_discovery = Flag(TOK_CERTIFICATE_DISCOVERY);
  settings->dest_check = Flag(TOK_DEST_CHECK);
  settings->routing = Flag(TOK_ROUTING);
  settings->dns = Flag(TOK_DNS);
  settings->nis = Flag(TOK_NIS);
  if (!OptionalNumber(TOK_LOGSIZE, &settings->log_size)) return false;
  settings->ha_primary = Flag(TOK_HA_PRIMARY);
  settings->ha_secondary = Flag(TOK_HA_SECONDARY);
  if (Flag(TOK_HA_ADMIN_IP)) {
    if (!At(TOK_IPADDR)) return SyntaxError();
    settings->ha_ip = ntohl(value_.address);
    Next();
  }
  Text ether;
  if (!OptionalString(TOK_HA_ETHER, &ether)) return false;
  if (ether) {
    texts[text] = *ether;
    settings->ha_ether = texts[text++].c_str();
  }
  int elements = 0;
  while (At(TOK_IPADDR)) {
    if (!Grow(&elements)) return false;
    config_.AddressWords().Append(*new unsigned(ntohl(value_.address)));
    Next();
  }
  int snmp_timer = 0;
  if (!OptionalNumber(TOK_SNMP_TIMER, &snmp_timer)) return false;
  settings->snmp_timer = static_cast<unsigned>(snmp_timer);
  if (At(TOK_CLK) || At(TOK_CLKNET)) {
    if (!StealthNetwork(network)) return false;
    settings->stealth_network = network;
  }
  Text comment;
  if (!CommentClause(&comment)) return false;
  if (comment) {
    texts[text] = *comment;
    settings->comment = texts[text].c_str();
  }
  return true;
}

// CLK address mask, or CLKNET address-or-range.
bool Parser::StealthNetwork(simplerange* network) {
  if (Flag(TOK_CLKNET)) return AddressValue(network);
  Next();
  if (!At(TOK_IPADDR)) return SyntaxError();
  uint32_t address = ntohl(value_.address);
  Next();
  if (!At(TOK_IPADDR)) return SyntaxError();
  uint32_t mask = ntohl(value_.address);
  Next();
  *network = {address & mask, address | ~mask, RS_DOTTED_MASK};
  return true;
}

}  // namespace

const char* yyfilename = nullptr;

int yyparse() {
  Parser parser(*Config);
  int result = parser.Run();
  Entity::StatementPosition({});
  return result;
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
