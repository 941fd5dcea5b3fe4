// Filter is one written filter of a service: a state engine by name and the
// discriminators that select packets for it.  After Resolve has linked the
// engine, GenerateFilterParams expands the filter into parameter sets, the
// form in which everything else reasons about services.
#ifndef FW_SERVICES_FILTER_H
#define FW_SERVICES_FILTER_H

#include <ostream>

#include "model/entity.h"
#include "services/discriminator.h"
#include "services/filter_params.h"
#include "services/state_engine.h"

class Filter {
 public:
  // Takes `discriminators` with its elements (null: none).
  Filter(const char* engine_name, TList<Discriminator>* discriminators);
  // Same engine name and link, private copies of the discriminators.
  Filter(const Filter& other);
  Filter& operator=(const Filter&) = delete;
  virtual ~Filter();

  const char* EngineName() const { return state_engine_->Name(); }
  StateEngine* EngineResolved() const { return engine_resolved_; }
  const TList<Discriminator>& Discriminators() const { return *discriminators_; }

  // Links the engine by name among `engines`; 1 after reporting a miss.
  int Resolve(TList<Entity>& engines, std::ostream& out);
  int Refer(const char* name, int print) const;

  // New parameter sets, which the caller owns with their list.  Discriminators
  // on the engine's default parameters collapse into one set per broadcast
  // flag.  Empty while the engine is unresolved.
  TList<FilterParams>* GenerateFilterParams() const;

  // The engine name and the discriminators, as a service statement holds them.
  std::ostream& Print(std::ostream& out) const;
  // The listing form, with the direction the service gives the filter.
  std::ostream& Enumerate(std::ostream& out, Filter_Direction direction) const;

 private:
  StateEngine* state_engine_;
  StateEngine* engine_resolved_;
  TList<Discriminator>* discriminators_;
};

#endif
