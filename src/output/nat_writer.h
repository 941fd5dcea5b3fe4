// NatWriter writes the Input.nat table: one line for each address
// translation of the policy, with the ranges of its four addresses.
#ifndef FW_OUTPUT_NAT_WRITER_H
#define FW_OUTPUT_NAT_WRITER_H

#include <ostream>

#include "policy/nat.h"

class Policy;

class NatWriter {
 public:
  // Policy::GenerateOutput: the line of every translation, in policy order.
  static std::ostream& GenerateInputNat(std::ostream& out, Policy& policy);
  // Nat::GenerateOutput: "NAT\t", the kind and the four range lists.
  static std::ostream& GenerateOutput(std::ostream& out, const Nat& nat);

 private:
  // "RANGE_LIST\t\"name\" " and the tab-separated ranges of one address;
  // an address not resolved shows its written name and no range.
  static std::ostream& RangeList(std::ostream& out, const Nat& nat, Nat_Address which);
};

#endif
