#include "lang/scanner.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <unordered_map>

FILE* yyin = nullptr;
char* yytext = nullptr;
int yyleng = 0;
TokenValue yylval;
int yylineno = 1;
int yycolumn = 1;

namespace {

const size_t kInitialBuffer = 16384;
const size_t kReadBlock = 8192;
const size_t kStringRoom = 255;  // the longest value a quoted string keeps

// The bytes of the current stream that are read but not yet scanned.
// Matching needs lookahead of any length, so Peek reads on demand.
class InputBuffer {
 public:
  // The byte `offset` places ahead of the scan point; -1 past the end.
  int Peek(size_t offset) {
    while (position_ + offset >= bytes_.size()) {
      if (!Fill()) return -1;
    }
    return static_cast<unsigned char>(bytes_[position_ + offset]);
  }
  const char* Current() const { return bytes_.data() + position_; }
  void Advance(size_t count) {
    at_line_start_ = count > 0 ? bytes_[position_ + count - 1] == '\n' : at_line_start_;
    CountLines(count);
    position_ += count;
    if (position_ > 4 * kInitialBuffer) Compact();
  }
  bool AtLineStart() const { return at_line_start_; }
  int Line() const { return line_; }
  int Column() const { return static_cast<int>(compacted_ + position_ - line_start_) + 1; }
  void Reset() {
    bytes_.clear();
    position_ = 0;
    compacted_ = 0;
    line_start_ = 0;
    line_ = 1;
    at_line_start_ = true;
    ended_ = false;
  }

 private:
  bool Fill() {
    if (ended_) return false;
    if (yyin == nullptr) yyin = stdin;
    if (bytes_.capacity() == 0) bytes_.reserve(kInitialBuffer);
    size_t before = bytes_.size();
    if (isatty(fileno(yyin))) ReadLine(); else ReadBlock();
    if (bytes_.size() > before) return true;
    if (ferror(yyin)) {
      std::cerr << "fatal scanner error: reading the input failed: " << strerror(errno) << std::endl;
      exit(2);
    }
    ended_ = true;
    return false;
  }
  void ReadBlock() {
    char block[kReadBlock];
    size_t count = fread(block, 1, sizeof block, yyin);
    bytes_.append(block, count);
  }
  // An interactive input is taken a line at a time, so a person typing sees
  // each statement handled without waiting for the end of the input.
  void ReadLine() {
    int byte;
    while ((byte = getc(yyin)) != EOF) {
      bytes_.push_back(static_cast<char>(byte));
      if (byte == '\n') break;
    }
  }
  void Compact() {
    bytes_.erase(0, position_);
    compacted_ += position_;
    position_ = 0;
  }
  // Offsets are counted from the start of the stream, so that compaction
  // doesn't move a line's start.
  void CountLines(size_t count) {
    const char* from = bytes_.data() + position_;
    const char* end = from + count;
    while (const char* newline = static_cast<const char*>(memchr(from, '\n', end - from))) {
      ++line_;
      line_start_ = compacted_ + (newline - bytes_.data()) + 1;
      from = newline + 1;
    }
  }

  std::string bytes_;
  size_t position_ = 0;
  size_t compacted_ = 0;
  size_t line_start_ = 0;
  int line_ = 1;
  bool at_line_start_ = true;
  bool ended_ = false;
};

InputBuffer input;
std::string token_text;

const std::unordered_map<std::string, int>& Keywords() {
  static const std::unordered_map<std::string, int> table = [] {
    std::unordered_map<std::string, int> words = {
#define FW_KEYWORD_ENTRY(name, spelling) {spelling, TOK_##name},
        FW_KEYWORDS(FW_KEYWORD_ENTRY)
#undef FW_KEYWORD_ENTRY
    };
    words["all"] = TOK_ALL;
    words["VPNNODE"] = TOK_VPNGATEWAY;
    return words;
  }();
  return table;
}

bool IsDigit(int c) { return c >= '0' && c <= '9'; }
bool IsHexDigit(int c) { return c >= 0 && isxdigit(c); }
bool IsLetter(int c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsNameStart(int c) { return IsLetter(c) || c == '_' || c == '-'; }
bool IsNameChar(int c) { return IsNameStart(c) || IsDigit(c) || c == '.' || c == '>'; }
bool IsBlank(int c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Each Match function answers the length of the longest text at `at` that
// its rule accepts, 0 for none.

size_t MatchWhile(size_t at, bool (*accepts)(int)) {
  size_t end = at;
  while (accepts(input.Peek(end))) ++end;
  return end - at;
}

// One to `most` decimal digits; a longer run is cut, which is what the
// longest match gives since no address part is followed by a digit.
size_t MatchDigits(size_t at, size_t most) {
  size_t count = 0;
  while (count < most && IsDigit(input.Peek(at + count))) ++count;
  return count;
}

size_t MatchAddress(size_t at) {
  size_t end = at;
  for (int group = 0; group < 4; ++group) {
    if (group > 0) {
      if (input.Peek(end) != '.') return 0;
      ++end;
    }
    size_t digits = MatchDigits(end, 3);
    if (digits == 0) return 0;
    end += digits;
  }
  return end - at;
}

size_t MatchHexAfterPrefix(size_t at) {
  if (input.Peek(at) != '0' || input.Peek(at + 1) != 'x') return 0;
  size_t digits = MatchWhile(at + 2, IsHexDigit);
  return digits == 0 ? 0 : 2 + digits;
}

// The rest of the line, which must end in a newline; `prefix` bytes are
// already matched.
size_t MatchRestOfLine(size_t at, size_t prefix) {
  size_t end = at + prefix;
  for (;;) {
    int c = input.Peek(end);
    if (c == '\n') return end - at;
    if (c < 0) return 0;
    ++end;
  }
}

size_t MatchLiteral(size_t at, const char* text) {
  size_t length = strlen(text);
  for (size_t i = 0; i < length; ++i)
    if (input.Peek(at + i) != static_cast<unsigned char>(text[i])) return 0;
  return length;
}

size_t MatchHashComment() { return input.Peek(0) == '#' ? MatchRestOfLine(0, 1) : 0; }

size_t MatchSlashComment() { return MatchLiteral(0, "//") ? MatchRestOfLine(0, 2) : 0; }

size_t MatchCodeComment() {
  if (!input.AtLineStart() || !MatchLiteral(0, "begin_code")) return 0;
  return MatchRestOfLine(0, strlen("begin_code"));
}

size_t MatchName() {
  if (!IsNameStart(input.Peek(0))) return 0;
  return 1 + MatchWhile(1, IsNameChar);
}

// A keyword is a name whose whole text is in the table.
size_t MatchKeyword(size_t name_length, int* token) {
  if (name_length == 0) return 0;
  auto found = Keywords().find(std::string(input.Current(), name_length));
  if (found == Keywords().end()) return 0;
  *token = found->second;
  return name_length;
}

size_t MatchDashRange() {
  size_t left = MatchAddress(0);
  if (left == 0) return 0;
  size_t end = left;
  if (input.Peek(end) == ' ') ++end;
  if (input.Peek(end) != '-') return 0;
  ++end;
  if (input.Peek(end) == ' ') ++end;
  size_t right = MatchAddress(end);
  return right == 0 ? 0 : end + right;
}

// An address, "/" and what the second matcher accepts.
size_t MatchSlashRange(size_t (*behind)(size_t)) {
  size_t left = MatchAddress(0);
  if (left == 0 || input.Peek(left) != '/') return 0;
  size_t right = behind(left + 1);
  return right == 0 ? 0 : left + 1 + right;
}

size_t MatchPrefixDigits(size_t at) { return MatchDigits(at, 3); }

size_t MatchDecimal() {
  size_t signs = 0;
  while (input.Peek(signs) == '+' || input.Peek(signs) == '-') ++signs;
  size_t digits = MatchWhile(signs, IsDigit);
  return digits == 0 ? 0 : signs + digits;
}

size_t MatchAlienLine() {
  if (!input.AtLineStart() || input.Peek(0) != '@' || input.Peek(1) == '\n') return 0;
  return MatchRestOfLine(0, 1);
}

enum class Rule {
  kHashComment, kSlashComment, kCodeComment, kKeyword, kDashRange, kDottedMaskRange,
  kHexMaskRange, kPrefixRange, kAddress, kHexNumber, kDecimal, kAlienLine, kName,
  kQuote, kWhiteSpace, kBang, kCharacter
};

struct Match {
  Rule rule = Rule::kCharacter;
  size_t length = 0;
};

// Takes the longest match; of equal lengths the rule listed first wins.
void Consider(Match& best, Rule rule, size_t length) {
  if (length > best.length) best = {rule, length};
}

Match LongestMatch(int* keyword) {
  Match best;
  size_t name = MatchName();
  Consider(best, Rule::kHashComment, MatchHashComment());
  Consider(best, Rule::kSlashComment, MatchSlashComment());
  Consider(best, Rule::kCodeComment, MatchCodeComment());
  Consider(best, Rule::kKeyword, MatchKeyword(name, keyword));
  Consider(best, Rule::kDashRange, MatchDashRange());
  Consider(best, Rule::kDottedMaskRange, MatchSlashRange(MatchAddress));
  Consider(best, Rule::kHexMaskRange, MatchSlashRange(MatchHexAfterPrefix));
  Consider(best, Rule::kPrefixRange, MatchSlashRange(MatchPrefixDigits));
  Consider(best, Rule::kAddress, MatchAddress(0));
  Consider(best, Rule::kHexNumber, MatchHexAfterPrefix(0));
  Consider(best, Rule::kDecimal, MatchDecimal());
  Consider(best, Rule::kAlienLine, MatchAlienLine());
  Consider(best, Rule::kName, name);
  Consider(best, Rule::kQuote, input.Peek(0) == '"' ? 1 : 0);
  Consider(best, Rule::kWhiteSpace, MatchWhile(0, IsBlank));
  Consider(best, Rule::kBang, input.Peek(0) == '!' ? 1 : 0);
  Consider(best, Rule::kCharacter, 1);
  return best;
}

char* CopyOrDie(const char* text, size_t length) {
  char* copy = strndup(text, length);
  if (copy == nullptr) FatalMemory();
  return copy;
}

// The value of an address in host byte order.  An address with a part
// above 255 is all ones, without complaint.
unsigned HostAddress(const std::string& text) { return ntohl(inet_addr(text.c_str())); }

// Numbers are 32-bit words of the language; a value out of range saturates
// as the conversion functions do on a 32-bit machine.
int SaturatedInt(long long value) {
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

void SetRange(unsigned start, unsigned end, int style) {
  yylval.start = start;
  yylval.end = end;
  yylval.style = style;
}

void ValueOfDashRange(const std::string& text) {
  size_t dash = text.find('-');
  size_t right = dash + 1 < text.size() && text[dash + 1] == ' ' ? dash + 2 : dash + 1;
  SetRange(HostAddress(text.substr(0, dash)), HostAddress(text.substr(right)), 0);
}

unsigned PrefixMask(const std::string& digits) {
  int length = atoi(digits.c_str());
  if (length == 0) return 0;
  // The shift count is taken modulo 32, as the machine did; /32 is one host.
  return 0xFFFFFFFFu << ((32 - length) & 31);
}

void ValueOfMaskedRange(const std::string& text, int style) {
  size_t slash = text.find('/');
  std::string behind = text.substr(slash + 1);
  unsigned mask;
  if (style == 1) {
    mask = PrefixMask(behind);
  } else if (style == 2) {
    mask = HostAddress(behind);
  } else {
    unsigned long long wide = strtoull(behind.c_str(), nullptr, 16);
    mask = wide > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<unsigned>(wide);
  }
  unsigned start = HostAddress(text.substr(0, slash)) & mask;
  SetRange(start, start | ~mask, style);
}

// Reads a quoted string after its opening quote.  Escapes are kept as they
// stand, a lone backslash is doubled, and the value keeps at most 255
// bytes.  Returns false when the input ends before the closing quote.
bool ReadQuotedString(size_t at, size_t* consumed, std::string* value) {
  std::string kept;
  bool escaped = false;
  bool truncated = false;
  auto store = [&](char byte) {
    if (truncated) return;
    if (kept.size() == kStringRoom) {
      truncated = true;
      return;
    }
    kept.push_back(byte);
  };
  size_t end = at;
  for (;;) {
    int byte = input.Peek(end);
    if (byte < 0) return false;
    ++end;
    if (byte == 0 || (byte == '"' && !escaped)) break;
    if (byte == '"') {
      escaped = false;
      store('"');
    } else if (byte == '\\') {
      escaped = !escaped;
      store('\\');
    } else {
      if (escaped) {
        // The doubling backslash doesn't fit: the one before it goes too,
        // so that the value never ends in half an escape.
        if (!truncated && kept.size() == kStringRoom) {
          kept.pop_back();
          truncated = true;
        } else {
          store('\\');
        }
      }
      escaped = false;
      store(static_cast<char>(byte));
    }
  }
  if (truncated)
    std::cerr << "Warning: String '" << kept << "' truncated to " << kStringRoom << " characters."
              << std::endl;
  *consumed = end - at;
  *value = kept;
  return true;
}

void SetText(size_t length) {
  token_text.assign(input.Current(), length);
  yytext = token_text.data();
  yyleng = static_cast<int>(length);
}

// A quoted string; the token's text is the opening quote alone.
int ScanQuotedString() {
  SetText(1);
  size_t length;
  std::string value;
  if (!ReadQuotedString(1, &length, &value)) {
    // Nothing closes the string: the quote reaches the parser as a
    // character that no statement accepts, so the input ends as a syntax
    // error instead of a wait for bytes that never come.
    input.Advance(1);
    return '"';
  }
  input.Advance(1 + length);
  yylval.string = CopyOrDie(value.data(), value.size());
  return TOK_STRING;
}

int TokenOf(const Match& match, int keyword) {
  std::string text(yytext, yyleng);
  switch (match.rule) {
    case Rule::kKeyword: return keyword;
    case Rule::kDashRange: ValueOfDashRange(text); return TOK_IPRANGE;
    case Rule::kPrefixRange: ValueOfMaskedRange(text, 1); return TOK_IPRANGE;
    case Rule::kDottedMaskRange: ValueOfMaskedRange(text, 2); return TOK_IPRANGE;
    case Rule::kHexMaskRange: ValueOfMaskedRange(text, 3); return TOK_IPRANGE;
    case Rule::kAddress: yylval.address = inet_addr(text.c_str()); return TOK_IPADDR;
    case Rule::kHexNumber: yylval.number = SaturatedInt(strtoll(yytext, nullptr, 16)); return TOK_NUMBER;
    case Rule::kDecimal: yylval.number = SaturatedInt(strtoll(yytext, nullptr, 10)); return TOK_NUMBER;
    case Rule::kAlienLine: yylval.string = CopyOrDie(yytext + 1, yyleng - 1); return TOK_ALIENLINE;
    case Rule::kName: yylval.string = CopyOrDie(yytext, yyleng); return TOK_STRING;
    case Rule::kBang: return '!';
    default: return static_cast<unsigned char>(yytext[0]);
  }
}

bool Discarded(Rule rule) {
  return rule == Rule::kHashComment || rule == Rule::kSlashComment || rule == Rule::kCodeComment ||
         rule == Rule::kWhiteSpace;
}

}  // namespace

int yylex() {
  for (;;) {
    yylineno = input.Line();
    yycolumn = input.Column();
    if (input.Peek(0) < 0) {
      SetText(0);
      if (yywrap()) yyrestart(yyin);
      return 0;
    }
    int keyword = 0;
    Match match = LongestMatch(&keyword);
    if (match.rule == Rule::kQuote) return ScanQuotedString();
    SetText(match.length);
    input.Advance(match.length);
    if (!Discarded(match.rule)) return TokenOf(match, keyword);
  }
}

int yywrap() { return 1; }

void yyrestart(FILE* stream) {
  yyin = stream;
  input.Reset();
}

void FatalMemory() {
  std::cerr << "out of memory" << std::endl;
  exit(1);
}
