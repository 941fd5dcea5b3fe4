// PacketQuery answers, for packets given as text, which rule of the
// compiled screen decides each: one line a packet on the output, naming
// the rule by its number in the policy and its place in the file, with its
// saved form, the action, and the first address translation whose
// original addresses hold the packet.
#ifndef FW_DRIVER_PACKET_QUERY_H
#define FW_DRIVER_PACKET_QUERY_H

#include <ostream>
#include <string>

#include "driver/statement_numbers.h"
#include "screen/packet_walk.h"

class Configuration;
class Nat;

class PacketQuery {
 public:
  // `config` must be compiled; the numbers are of its written rules and
  // translations.
  PacketQuery(const Configuration& config, const StatementNumbers& rules, const StatementNumbers& nats);

  // False, after a line on the standard error stream, for a packet that
  // can't be asked.
  bool Answer(const std::string& text, std::ostream& out);

 private:
  const Nat* Translation(const Packet& packet) const;

  const Configuration& config_;
  const StatementNumbers& rules_;
  const StatementNumbers& nats_;
  PacketWalk walk_;
};

#endif
