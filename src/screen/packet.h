// Packet is one packet that an administrator asks about, read from the
// text "interface protocol source[:port] destination[:port] [day HH:MM]":
// the interface it arrives on, its protocol (a state engine's name or a
// protocol number), its addresses and ports, and when it comes.  Days are
// the language's day words, in any case.
#ifndef FW_SCREEN_PACKET_H
#define FW_SCREEN_PACKET_H

#include <cstdint>
#include <string>

struct Packet {
  std::string interface;
  std::string protocol;
  uint32_t source = 0;
  uint32_t destination = 0;
  uint32_t source_port = 0;
  uint32_t destination_port = 0;
  bool timed = false;
  int day = 0;  // Sunday 0
  int minute = 0;

  // False, with what is wrong in `fault`, for a text of another form.
  static bool Read(const std::string& text, Packet* packet, std::string* fault);
};

#endif
