// AddressWriter writes the lines that stand for an address in the generated
// files: the address line of the interface tables, the tab-separated range
// text several tables share, and an entry of the Addresses table.  Ranges
// always come in ascending order, whatever order the set keeps them in.
#ifndef FW_OUTPUT_ADDRESS_WRITER_H
#define FW_OUTPUT_ADDRESS_WRITER_H

#include <ostream>

class Address;

class AddressWriter {
 public:
  // Address::GenerateOutput: "RANGE_LIST\taddr_<n>\t" and the range text,
  // then a line end.  Draws the address's number on first use.
  static std::ostream& GenerateOutput(std::ostream& out, Address& address);
  // Each range as "start - end" in dotted form, each followed by a tab.
  static std::ostream& RangesTabbed(std::ostream& out, const Address& address);
  // Address::GenerateAddressesFile: the quoted name, the number of ranges
  // and one dotted range a line.
  static std::ostream& GenerateAddressesFile(std::ostream& out, const Address& address);
};

#endif
