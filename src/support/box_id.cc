#include "support/box_id.h"

#include <arpa/inet.h>

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "support/host_query.h"

namespace {

// Key id bytes of the name spaces 0 to 11: IPv4 based ids hold an address,
// 802.x ids a hardware address, the rest an MD5 digest or an IPv6 address.
const int kKeyIdLength[SKIP_NSID_COUNT] = {4, 4, 4, 16, 16, 16, 16, 6, 16, 16, 16, 16};

struct BoxIdName {
  const char* name;
  int nsid;
};

// Only the name spaces that a screen's own key can live in form box ids.
const BoxIdName kBoxIdNames[] = {
    {"NONE", 0}, {"IP", 1}, {"IPv4", 1}, {"IPV4", 1}, {"DH", 8}, {"DH_PUB", 8},
};

bool is_word_end(char c) { return c == '\0' || c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

const char* skip_blanks(const char* text) {
  while (*text != '\0' && is_word_end(*text)) ++text;
  return text;
}

size_t word_length(const char* text) {
  size_t length = 0;
  while (!is_word_end(text[length])) ++length;
  return length;
}

bool starts_with_hex_prefix(const char* text) {
  return text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// The IPv4 name spaces also take a dotted address or a host name.  True when
// the text was one of these and `keyid` holds it; `failed` when it looked
// like a dotted address but was none.
bool ipv4_keyid(const char* text, skip_keyid* keyid, bool* failed) {
  *failed = false;
  if (atoi(text) != 0 && strchr(text, '.') != nullptr) {
    in_addr_t address = inet_addr(text);
    if (address == INADDR_NONE) {
      *failed = true;
      return false;
    }
    memcpy(keyid->bytes, &address, 4);
    keyid->length = 4;
    return true;
  }
  if (strlen(text) > 2 && !starts_with_hex_prefix(text) &&
      host_query_devices().host_address(text, keyid->bytes) == 1) {
    keyid->length = 4;
    return true;
  }
  return false;
}

// Reads hexadecimal digits from the right, two to a byte, into the last
// bytes of the id, so that a short text is right-aligned with zeros in front.
int hex_keyid(const char* word, size_t length, int id_length, skip_keyid* keyid) {
  if (length >= 3 && starts_with_hex_prefix(word)) {
    word += 2;
    length -= 2;
  }
  if (length > static_cast<size_t>(2 * id_length)) return -1;
  int byte = id_length - 1;
  size_t i = length;
  while (i > 0) {
    int low = hex_value(word[--i]);
    int high = i > 0 ? hex_value(word[--i]) : 0;
    if (low < 0 || high < 0) return -1;
    keyid->bytes[byte--] = static_cast<unsigned char>(high << 4 | low);
  }
  keyid->length = id_length;
  return 0;
}

int box_nsid_from_word(const char* word, size_t length) {
  if (isalpha(static_cast<unsigned char>(word[0]))) {
    for (const BoxIdName& entry : kBoxIdNames)
      if (strlen(entry.name) == length && strncmp(entry.name, word, length) == 0) return entry.nsid;
    return -1;
  }
  int nsid = atoi(word);
  for (const BoxIdName& entry : kBoxIdNames)
    if (entry.nsid == nsid) return nsid;
  return -1;
}

}  // namespace

int skip_nsid_keyid_length(int nsid) {
  return nsid >= 0 && nsid < SKIP_NSID_COUNT ? kKeyIdLength[nsid] : 0;
}

int skip_s_to_keyid(const char* text, int nsid, skip_keyid* keyid) {
  if (text == nullptr || nsid < 0 || nsid >= SKIP_NSID_COUNT) return -1;
  memset(keyid, 0, sizeof *keyid);
  if (nsid <= 1) {
    bool failed;
    if (ipv4_keyid(text, keyid, &failed)) return 0;
    if (failed) return -1;
  }
  const char* word = skip_blanks(text);
  return hex_keyid(word, word_length(word), kKeyIdLength[nsid], keyid);
}

int screen_box_id_internalize(screen_box_id* box, const char* text) {
  if (text == nullptr) return 0;
  const char* word = skip_blanks(text);
  size_t length = word_length(word);
  if (length == 0) return 0;
  int nsid = box_nsid_from_word(word, length);
  if (nsid < 0) return 0;
  box->nsid = static_cast<unsigned char>(nsid);
  return skip_s_to_keyid(skip_blanks(word + length), nsid, &box->keyid) == 0;
}
