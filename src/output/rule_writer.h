// RuleWriter writes one distributed rule into an interface's pair of files:
// its address lists and its action in the table, and its block in the
// filter program, which matches destination, then source, then hands the
// packet to the engine of each of the service's parameter sets.
// An encrypting rule's action line ends in the tail of its security
// parameters, and the table carries its tunnel ends and manual keys.
#ifndef FW_OUTPUT_RULE_WRITER_H
#define FW_OUTPUT_RULE_WRITER_H

#include <cstdint>
#include <ostream>

class Address;
class Range;
class Rule;
template <class T>
class TList;

class RuleWriter {
 public:
  // Rule::GenerateOutput: the table lines, then the program block.  Draws
  // the numbers of the addresses, the rule and the parameter sets on first
  // use, in that order.
  static void GenerateOutput(std::ostream& table, std::ostream& program, Rule& rule);
  // Rule::GenerateEtherOutput: the Ethernet entries of the rule's service.
  static void GenerateEtherOutput(std::ostream& table, Rule& rule);
  // Rule::OutputInterfaceData: the one output interface's id, or bit 23
  // with one bit for each id (modulo 32).
  static uint32_t OutputInterfaceData(const Rule& rule);
  // The verdict the engine call gets: 0 deny, 1 allow, 2 allow through
  // SKIP, 3 allow through IPsec (manual or IKE).
  static int ActionCode(const Rule& rule);

 private:
  // "ACTION\tPolicy_<id>\t<log>\t<flags>\t<tail>".
  static std::ostream& ActionLine(std::ostream& table, Rule& rule);
  // The address lines of an allow rule's tunnel ends, with the proxy line
  // of the end on this screen's side, and the manual keys.
  static void TunnelLines(std::ostream& table, const Rule& rule);
  // "PROXY RANGE_LIST\t\"<name>\" " and the ranges of `tunnel`.
  static std::ostream& ProxyLine(std::ostream& table, const Address& tunnel);
  // The comment lines that head the rule's block.
  static std::ostream& Comments(std::ostream& program, const Rule& rule);
  // Each range of `ranges` in its statement form, followed by a blank.
  static std::ostream& RangeComment(std::ostream& program, const char* head, const TList<Range>& ranges);
};

#endif
