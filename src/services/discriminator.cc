#include "services/discriminator.h"

#include "services/int_list.h"

Discriminator::Discriminator(unsigned long start, unsigned long end, int all, TList<int>* params,
                             int broadcast)
    : range_(static_cast<uint32_t>(start), static_cast<uint32_t>(end), RT_NUMBER, RS_ADDRESSES),
      params_(params != nullptr ? params : new TList<int>),
      all_(all),
      broadcast_(broadcast) {}

Discriminator::Discriminator(const Discriminator& other)
    : range_(other.range_),
      params_(int_list_copy(*other.params_)),
      all_(other.all_),
      broadcast_(other.broadcast_) {}

Discriminator::~Discriminator() { int_list_free(params_); }

std::ostream& Discriminator::Print(std::ostream& out) const {
  if (all_) out << " * ";
  else range_.Print(out);
  if (broadcast_) out << "\tBROADCAST";
  if (params_->Empty()) return out;
  out << "\tPARAMS\t( ";
  for (TList_Cell<int>* cell = params_->Head(); cell != nullptr; cell = cell->Next()) out << *cell->Data() << ' ';
  return out << " )";
}

std::ostream& Discriminator::Enumerate(std::ostream& out) const {
  out << (broadcast_ ? " BROADCAST " : " PORT ");
  if (all_) out << '*';
  else range_.Enumerate(out);
  if (params_->Empty()) return out;
  out << " PARAMETERS ";
  for (TList_Cell<int>* cell = params_->Head(); cell != nullptr; cell = cell->Next()) out << ' ' << *cell->Data();
  return out;
}
