// FilterParams is one parameter set: a state engine, its parameters, a
// broadcast flag, a direction and a set of value ranges.  It is the unit
// that reaches the generated filter program, one entry and one value table
// each, so the order of its ranges is part of the output: Include appends a
// merged range at the end, and an Exclude split appends the upper piece.
//
// Two sets "match" when they have the very same engine object and equal
// parameters; most operations also compare the broadcast flag as a value.
// The direction is never compared here.
#ifndef FW_SERVICES_FILTER_PARAMS_H
#define FW_SERVICES_FILTER_PARAMS_H

#include <memory>

#include "model/range.h"
#include "model/t_list.h"

class StateEngine;

enum Filter_Direction { FD_FORWARD = 0, FD_REVERSE = 1 };

class FilterParams {
 public:
  // Takes both lists with their elements (null: empty).  A null engine
  // gives an unnamed placeholder engine.
  FilterParams(StateEngine* engine, TList<int>* params, TList<Range>* ranges, int broadcast,
               Filter_Direction direction);
  // Same engine, flag and direction; private copies of parameters and ranges
  // (as plain numbers); never the unique id.
  FilterParams(const FilterParams& other);
  FilterParams& operator=(const FilterParams&) = delete;
  ~FilterParams();

  // Given on first demand from a class-wide counter.
  int UniqueID();
  static void ResetUniqueId();

  StateEngine* stateEngine() const { return state_engine_; }
  const TList<int>& Params() const { return *params_; }
  const TList<Range>& Ranges() const { return *ranges_; }
  int Broadcast() const { return broadcast_; }
  Filter_Direction Direction() const { return direction_; }

  // Merges in one pass: ranges that meet the growing copy are consumed and
  // the copy goes to the end.  Ranges that only come to touch later stay
  // apart.
  void Include(const Range& range);
  void Include(const TList<Range>& ranges);
  // A set left without ranges stays a set.
  void Exclude(const Range& range);
  void Exclude(const TList<Range>& ranges);

  // Same engine object and equal parameters.
  bool SameEngineAndParams(const FilterParams& other) const;
  // Matching sets (broadcast compared) with a common value.
  int Intersects(const FilterParams& other) const;
  // Null unless they intersect; else a new forward set of the pairwise
  // intersections, unmerged, this set's ranges in the outer order.
  FilterParams* Intersection(const FilterParams& other) const;
  // Matching, and each range inside one single range of the other.
  int SubsetOf(const FilterParams& other) const;
  // One single range covers `range`.
  int Contains(const Range& range) const;
  // 1 when the two are different treatments of the same packets: competing
  // engines (equal class and subclass), or one engine with other parameters,
  // on a common value and with the same broadcast flag.
  int Conflicts(const FilterParams& other) const;
  // Non-zero (the fault) when the parameter count isn't the engine's.
  int Consistent() const;
  void Reverse() { direction_ = FD_REVERSE; }

 private:
  int unique_id_;
  std::shared_ptr<StateEngine> placeholder_;  // only for a set made without engine
  StateEngine* state_engine_;
  TList<int>* params_;
  TList<Range>* ranges_;
  int broadcast_;
  Filter_Direction direction_;

  static int unique_id_counter_;
};

#endif
