#include "output/address_writer.h"

#include "model/address.h"

std::ostream& AddressWriter::GenerateOutput(std::ostream& out, Address& address) {
  out << "RANGE_LIST\taddr_" << address.UniqueID() << '\t';
  return RangesTabbed(out, address) << '\n';
}

std::ostream& AddressWriter::RangesTabbed(std::ostream& out, const Address& address) {
  address.ForEachOrdered([&out](const Range& range) { range.DumpRange(out) << '\t'; });
  return out;
}

std::ostream& AddressWriter::GenerateAddressesFile(std::ostream& out, const Address& address) {
  out << '"' << address.Name() << "\"\n";
  return address.DumpRanges(out, "", 1);
}
