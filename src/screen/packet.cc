#include "screen/packet.h"

#include <arpa/inet.h>
#include <strings.h>

#include <cstdlib>
#include <sstream>
#include <vector>

namespace {

bool Number(const std::string& text, unsigned long most, uint32_t* value) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos || text.size() > 10) return false;
  unsigned long number = strtoul(text.c_str(), nullptr, 10);
  if (number > most) return false;
  *value = static_cast<uint32_t>(number);
  return true;
}

// address[:port]
bool Endpoint(const std::string& text, uint32_t* address, uint32_t* port) {
  size_t colon = text.find(':');
  in_addr parsed;
  if (inet_pton(AF_INET, text.substr(0, colon).c_str(), &parsed) != 1) return false;
  *address = ntohl(parsed.s_addr);
  return colon == std::string::npos || Number(text.substr(colon + 1), 65535, port);
}

bool Day(const std::string& word, int* day) {
  static const char* const kDays[] = {"SUNDAY", "MONDAY", "TUESDAY", "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY"};
  for (int number = 0; number < 7; ++number) {
    if (strcasecmp(word.c_str(), kDays[number]) != 0) continue;
    *day = number;
    return true;
  }
  return false;
}

bool Clock(const std::string& text, int* minute) {
  size_t colon = text.find(':');
  uint32_t hours, minutes;
  if (colon == std::string::npos || !Number(text.substr(0, colon), 23, &hours) ||
      !Number(text.substr(colon + 1), 59, &minutes))
    return false;
  *minute = static_cast<int>(hours * 60 + minutes);
  return true;
}

}  // namespace

bool Packet::Read(const std::string& text, Packet* packet, std::string* fault) {
  std::istringstream words(text);
  std::vector<std::string> word;
  for (std::string next; words >> next;) word.push_back(next);
  if (word.size() != 4 && word.size() != 6) {
    *fault = "a packet is: interface protocol source[:port] destination[:port] [day HH:MM]";
    return false;
  }
  packet->interface = word[0];
  packet->protocol = word[1];
  if (!Endpoint(word[2], &packet->source, &packet->source_port)) {
    *fault = "bad source: " + word[2];
    return false;
  }
  if (!Endpoint(word[3], &packet->destination, &packet->destination_port)) {
    *fault = "bad destination: " + word[3];
    return false;
  }
  packet->timed = word.size() == 6;
  if (packet->timed && (!Day(word[4], &packet->day) || !Clock(word[5], &packet->minute))) {
    *fault = "bad time: " + word[4] + " " + word[5];
    return false;
  }
  return true;
}
