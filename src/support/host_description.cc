#include "support/host_description.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "support/screenadm_tables.h"

namespace {

std::vector<std::string> Words(const std::string& line) {
  std::istringstream stream(line);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

// A whole decimal number in [low, high].
bool ParseNumber(const std::string& text, long low, long high, long* value) {
  if (text.empty() || text.size() > 10 || text.find_first_not_of("0123456789") != std::string::npos) return false;
  *value = std::stol(text);
  return *value >= low && *value <= high;
}

// "A.B.C.D/N" into an address and its netmask, both in network byte order.
bool ParseAddress(const std::string& text, HostAddress* result) {
  size_t slash = text.find('/');
  if (slash == std::string::npos) return false;
  in_addr address;
  if (inet_pton(AF_INET, text.substr(0, slash).c_str(), &address) != 1) return false;
  long prefix;
  if (!ParseNumber(text.substr(slash + 1), 0, 32, &prefix)) return false;
  uint32_t mask = prefix == 0 ? 0 : 0xFFFFFFFFu << (32 - prefix);
  *result = {address.s_addr, htonl(mask)};
  return true;
}

bool ParseHex(const std::string& text, std::vector<unsigned char>* bytes) {
  if (text.empty() || text.size() % 2 != 0 || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
    return false;
  for (size_t at = 0; at < text.size(); at += 2)
    bytes->push_back(static_cast<unsigned char>(std::stoul(text.substr(at, 2), nullptr, 16)));
  return true;
}

// The bytes that separate words.  Trimming must use the same set as the
// split into words, or a line that starts with a form feed would lose the
// first bytes of its text.
const char kWhiteSpace[] = " \t\n\v\f\r";

std::string Trimmed(const std::string& text) {
  size_t first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string::npos) return "";
  size_t last = text.find_last_not_of(kWhiteSpace);
  return text.substr(first, last - first + 1);
}

std::string WantsOneWord(const std::vector<std::string>& words) {
  return words.size() == 2 ? "" : "\"" + words[0] + "\" takes one word";
}

}  // namespace

// Read with the C library, which reports a directory as a read error
// (EISDIR) where a stream would read it as an empty file.
bool HostDescription::Read(const std::string& path, std::string* error) {
  FILE* file = fopen(path.c_str(), "rb");
  std::string text;
  if (file != nullptr) {
    char block[4096];
    for (size_t got; (got = fread(block, 1, sizeof block, file)) > 0;) text.append(block, got);
    if (!ferror(file)) {
      fclose(file);
      return Parse(text, path, error);
    }
  }
  *error = path + ": " + strerror(errno);
  if (file != nullptr) fclose(file);
  return false;
}

bool HostDescription::Parse(const std::string& text, const std::string& path, std::string* error) {
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    std::string reason = ParseLine(line.substr(0, line.find('#')));
    if (!reason.empty()) {
      *error = path + ":" + std::to_string(number) + ": " + reason;
      return false;
    }
  }
  return true;
}

std::string HostDescription::ParseLine(const std::string& line) {
  std::vector<std::string> words = Words(line);
  if (words.empty()) return "";
  const std::string& statement = words[0];
  if (statement == "interface") return ParseInterface(words);
  if (statement == "release") return ParseRelease(words);
  if (statement == "skip-local-key") return ParseSkipLocalKey(words);
  if (statement == "wide") {
    wide_ = true;
    return words.size() == 1 ? "" : "\"wide\" takes no words";
  }
  if (statement == "ike-local-id") {
    std::string identity = Trimmed(Trimmed(line).substr(statement.size()));
    if (identity.empty()) return "\"ike-local-id\" needs an identity";
    ike_identities_.push_back(identity);
    return "";
  }
  if (statement == "ipsec-unavailable" || statement == "skip-unavailable") {
    std::string reason = WantsOneWord(words);
    if (reason.empty()) (statement[0] == 'i' ? ipsec_unavailable_ : skip_unavailable_).insert(words[1]);
    return reason;
  }
  return "unknown statement \"" + statement + "\"";
}

std::string HostDescription::ParseInterface(const std::vector<std::string>& words) {
  if (words.size() < 2) return "\"interface\" needs a device name";
  if (!ValidDeviceName(words[1])) return "\"" + words[1] + "\" can't be a device name";
  Device device{words[1], {}};
  for (size_t at = 2; at < words.size(); ++at) {
    HostAddress address;
    if (!ParseAddress(words[at], &address)) return "\"" + words[at] + "\" isn't an address A.B.C.D/N";
    device.addresses.push_back(address);
  }
  devices_.push_back(device);
  return "";
}

std::string HostDescription::ParseRelease(const std::vector<std::string>& words) {
  long release;
  if (words.size() != 2 || !ParseNumber(words[1], 0, 999999, &release)) return "\"release\" needs a number";
  release_ = static_cast<int>(release);
  return "";
}

std::string HostDescription::ParseSkipLocalKey(const std::vector<std::string>& words) {
  long nsid;
  std::vector<unsigned char> key_id;
  if (words.size() != 3 || !ParseNumber(words[1], 0, 255, &nsid) || !ParseHex(words[2], &key_id))
    return "\"skip-local-key\" needs a name space id and a key id in hexadecimal";
  skip_keys_.push_back({static_cast<int>(nsid), key_id});
  return "";
}

bool HostDescription::InterfaceExists(const std::string& name) const {
  if (!ValidDeviceName(name)) return false;
  std::string physical = PhysicalDevice(name);
  return std::any_of(devices_.begin(), devices_.end(),
                     [&](const Device& device) { return PhysicalDevice(device.name) == physical; });
}

std::vector<HostAddress> HostDescription::InterfaceAddresses(const std::string& name) const {
  std::vector<HostAddress> addresses;
  for (const Device& device : devices_) {
    if (PhysicalDevice(device.name) != name) continue;
    for (const HostAddress& address : device.addresses) {
      bool loopback = (ntohl(address.address) >> 24) == 127;
      if (!loopback && address.address != 0) addresses.push_back(address);
    }
  }
  return addresses;
}

std::vector<std::vector<unsigned char>> HostDescription::SkipLocalKeys(int nsid) const {
  std::vector<std::vector<unsigned char>> keys;
  for (const auto& [key_nsid, key_id] : skip_keys_)
    if (key_nsid == nsid) keys.push_back(key_id);
  return keys;
}

bool HostDescription::IpsecAlgorithmLoaded(int operation, int value) const {
  for (const std::string& name : ipsec_unavailable_)
    if (screenadm_ipsec_alg_is(name.c_str(), operation, value)) return false;
  return true;
}

bool HostDescription::SkipAlgorithmSupported(int value, int type, int version) const {
  for (const std::string& name : skip_unavailable_)
    if (screenadm_skip_alg_known_value(name.c_str(), version, type) == value) return false;
  return true;
}

int HostDescription::LocalIdentity(const std::vector<std::string>& includes,
                                   const std::vector<std::string>& excludes) const {
  auto named = [](const std::vector<std::string>& texts, const std::string& identity) {
    return std::find(texts.begin(), texts.end(), identity) != texts.end();
  };
  for (const std::string& identity : ike_identities_)
    if (named(includes, identity) && !named(excludes, identity)) return 1;
  return 0;
}
