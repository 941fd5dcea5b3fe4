// Service says what a rule applies to.  A single service is written as
// forward and reverse filters, a group as the names of other services;
// Reduce turns both into the same thing, a set of parameter sets, and from
// then on the service behaves as a set: include, exclude, intersect,
// contain, compare.  Set operations read and write the forward sets
// (Filters) unless they say otherwise.
//
// The splitting operations cut a service in two halves through two
// out-parameters that the caller sets to null: an absent half stays null,
// a half may be this very service or a new one, and the caller compares
// pointers to learn what it owns.  Intersection, Exclusion and Merge answer
// the same way.
//
// The Consistent family answers non-zero for the fault.
#ifndef FW_SERVICES_SERVICE_H
#define FW_SERVICES_SERVICE_H

#include <ostream>

#include "model/entity.h"
#include "services/filter.h"
#include "services/filter_params.h"

enum Service_Type { SERVICE_SINGLE = 0, SERVICE_GROUP = 1 };

class Service : public Entity {
 public:
  // An empty single service: the form of every service the compiler invents.
  Service(const char* name, const char* screen, const char* comment);
  // A single service as written; takes both lists (either may be null).
  Service(const char* name, TList<Filter>* forward, TList<Filter>* reverse, const char* screen,
          const char* comment);
  // A group; takes the member placeholders.
  Service(const char* name, TList<Entity>* members, const char* screen, const char* comment);
  // The compile copy: written form copied, members as fresh placeholders,
  // unresolved and unreduced, but with the sets the source already has.
  Service(const Service& other);
  Service& operator=(const Service&) = delete;
  ~Service() override;

  int Type() const { return type_; }
  int Reduced() const { return reduced_; }
  const TList<Filter>* InputFilters() const { return input_filters_; }
  const TList<Filter>* InputReverseFilters() const { return input_reverse_filters_; }
  const TList<Entity>* InputServices() const { return input_services_; }
  const TList<Entity>* ResolvedServices() const { return resolved_services_; }
  const TList<FilterParams>& Filters() const { return *filters_; }
  const TList<FilterParams>& ReverseFilters() const { return *reverse_filters_; }

  // Merges `set` into the first set of equal engine, broadcast flag,
  // direction and parameters in Filters (ReverseFilters with `reverse`),
  // or appends a copy.
  void Include(const FilterParams& set, int reverse);
  void Include(const TList<FilterParams>& sets, int reverse);
  // Both lists of `other`, each into its own list.
  void Include(const Service& other);
  // Subtracts from every set of equal engine and parameters; sets left
  // without ranges stay.
  void Exclude(const FilterParams& set);
  void Exclude(const TList<FilterParams>& sets);
  void Exclude(const Service& other);

  int Intersects(const FilterParams& set) const;
  int Intersects(const TList<FilterParams>& sets) const;
  int Intersects(const Service& other) const;
  // New sets, which the caller owns with the list; null when nothing meets.
  TList<FilterParams>* Intersection(const FilterParams& set) const;
  Service* Intersection(Service& other);
  Service* Exclusion(Service& other);
  Service* Merge(Service& other);
  int Contains(const FilterParams& set) const;
  int SubsetOf(const Service& other) const;
  int Equal(const Service& other) const;

  int Consistent(const FilterParams& set) const;
  int Consistent(const TList<FilterParams>& sets) const;
  // A parameter count that isn't the engine's, or two sets that conflict.
  int Consistent() const;
  int Conflicts(const Service& other) const;
  // 1 when a set carries a broadcast flag.
  int Broadcast() const;

  void BroadcastSplit(Service** plain, Service** broadcast);
  // The reverse filters as the forward sets of a new "_rev" service.
  void ReverseServiceFilter(Service** forward, Service** reverse);
  // By the paths of each set's engine: reverse halves are reversed copies.
  void ReverseServiceStateEngine(Service** forward, Service** reverse);
  // The sets of the "ether" engine apart from all others.
  void EtherSplit(Service** ether, Service** other);
  // Sorts Filters into the order of `engines`, stable within one engine.
  void OrderByStateEngine(const TList<Entity>& engines);

  void Mark() override;
  int DetectCycle() override;
  int DetectCycle(Entity& origin) override;
  // Engines of the filters for CO_STATE_ENGINE, members of a group for
  // CO_SERVICE; returns the misses, each reported.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // Fills the sets once; the flag is set first, so a cyclic group ends.
  Entity* Reduce() override;
  int Member(const char* name, int remove, int second) override;
  int Match(const char* screen, const char* name, const char* type, int exact) const override;
  // SINGLE or GROUP, and in a full line the filters or the members and the
  // comment; the built-in "*" shows no more than its kind.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The SERVICE or SERVICE_GROUP statement.
  std::ostream& Print(std::ostream& out) const override;

 private:
  // A new single service whose Filters are `sets`, which it takes.
  static Service* Holding(const char* name, const char* screen, const char* comment,
                          TList<FilterParams>* sets);
  void IncludeGenerated(const TList<Filter>* filters, int reverse);

  int reduced_;
  int type_;
  TList<Filter>* input_filters_;
  TList<Filter>* input_reverse_filters_;
  TList<Entity>* input_services_;
  TList<Entity>* resolved_services_;
  TList<FilterParams>* filters_;
  TList<FilterParams>* reverse_filters_;
};

#endif
