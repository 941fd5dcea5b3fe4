// Discriminator is one written value set of a filter: a range of numbers
// (ports, ICMP types, protocol numbers...), or `*` for the whole of the
// engine's space, with its own PARAMS and broadcast flag.  The broadcast
// flag is a value, not a truth: -1 from the text and 1 from the built-in
// service are different flags.
#ifndef FW_SERVICES_DISCRIMINATOR_H
#define FW_SERVICES_DISCRIMINATOR_H

#include <ostream>

#include "model/range.h"
#include "model/t_list.h"

class Discriminator {
 public:
  // Takes `params` with its values (null: none).
  Discriminator(unsigned long start, unsigned long end, int all, TList<int>* params, int broadcast);
  Discriminator(const Discriminator& other);
  Discriminator& operator=(const Discriminator&) = delete;
  ~Discriminator();

  const Range& range() const { return range_; }
  const TList<int>& Params() const { return *params_; }
  int All() const { return all_; }
  int Broadcast() const { return broadcast_; }

  // The value as written, with BROADCAST and PARAMS when set.
  std::ostream& Print(std::ostream& out) const;
  // The listing form: BROADCAST or PORT, the value, the parameters.
  std::ostream& Enumerate(std::ostream& out) const;

 private:
  Range range_;
  TList<int>* params_;
  int all_;
  int broadcast_;
};

#endif
