#include "output/nat_writer.h"

#include "model/address.h"
#include "output/address_writer.h"
#include "policy/policy.h"

std::ostream& NatWriter::GenerateInputNat(std::ostream& out, Policy& policy) {
  for (TList_Cell<Entity>* cell = policy.Nats().Items().Head(); cell != nullptr; cell = cell->Next())
    GenerateOutput(out, *static_cast<Nat*>(cell->Data()));
  return out;
}

std::ostream& NatWriter::GenerateOutput(std::ostream& out, const Nat& nat) {
  out << "NAT\t" << (nat.Type() == NAT_DYNAMIC ? "DYNAMIC\t" : "STATIC\t");
  RangeList(out, nat, NAT_ORIGINAL_SOURCE) << '\t';
  RangeList(out, nat, NAT_ORIGINAL_DESTINATION);
  RangeList(out, nat, NAT_TRANSLATED_SOURCE) << '\t';
  return RangeList(out, nat, NAT_TRANSLATED_DESTINATION) << '\n';
}

std::ostream& NatWriter::RangeList(std::ostream& out, const Nat& nat, Nat_Address which) {
  const Address* address = nat.Resolved(which);
  if (address == nullptr) return out << "RANGE_LIST\t\"" << nat.Written(which).Name() << "\" ";
  out << "RANGE_LIST\t\"" << address->Name() << "\" ";
  return AddressWriter::RangesTabbed(out, *address);
}
