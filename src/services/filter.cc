#include "services/filter.h"

#include <cstring>

#include "services/int_list.h"

namespace {

// The first set that takes discriminators on the engine's default
// parameters with this broadcast flag.
FilterParams* default_set(const TList<FilterParams>& sets, const StateEngine& engine, int broadcast) {
  for (TList_Cell<FilterParams>* cell = sets.Head(); cell != nullptr; cell = cell->Next()) {
    FilterParams& set = *cell->Data();
    if (set.stateEngine() == &engine && set.Broadcast() == broadcast &&
        int_list_equal(set.Params(), engine.DefaultParams()))
      return &set;
  }
  return nullptr;
}

}  // namespace

Filter::Filter(const char* engine_name, TList<Discriminator>* discriminators)
    : state_engine_(StateEngine::Placeholder(engine_name)),
      engine_resolved_(nullptr),
      discriminators_(discriminators != nullptr ? discriminators : new TList<Discriminator>) {}

Filter::Filter(const Filter& other)
    : state_engine_(StateEngine::Placeholder(other.EngineName())),
      engine_resolved_(other.engine_resolved_),
      discriminators_(new TList<Discriminator>) {
  for (TList_Cell<Discriminator>* cell = other.discriminators_->Head(); cell != nullptr;
       cell = cell->Next())
    discriminators_->Append(*new Discriminator(*cell->Data()));
}

Filter::~Filter() {
  delete state_engine_;
  discriminators_->Delete_Data();
  delete discriminators_;
}

// The message names "Service" because a filter doesn't know its service.
// It has no catalogue entry, so it is written as it stands.
int Filter::Resolve(TList<Entity>& engines, std::ostream& out) {
  StateEngine* found = dynamic_cast<StateEngine*>(state_engine_->FindSelf(engines, 1));
  if (found != nullptr) {
    engine_resolved_ = found;
    return 0;
  }
  out << "Error: \"" << EngineName() << "\" refers to undefined " << "STATEENGINE" << ":\""
      << "Service" << "\"." << std::endl;
  return 1;
}

int Filter::Refer(const char* name, int) const {
  return name != nullptr && strcmp(EngineName(), name) == 0;
}

TList<FilterParams>* Filter::GenerateFilterParams() const {
  TList<FilterParams>* sets = new TList<FilterParams>;
  if (engine_resolved_ == nullptr) return sets;
  const StateEngine& engine = *engine_resolved_;
  for (TList_Cell<Discriminator>* cell = discriminators_->Head(); cell != nullptr; cell = cell->Next()) {
    const Discriminator& discriminator = *cell->Data();
    Range values = discriminator.All()
                       ? Range(0, static_cast<uint32_t>(engine.MaxValue()), RT_NUMBER, RS_ADDRESSES)
                       : discriminator.range();
    if (FilterParams* set = default_set(*sets, engine, discriminator.Broadcast())) {
      set->Include(values);
      continue;
    }
    const TList<int>& params =
        discriminator.Params().Empty() ? engine.DefaultParams() : discriminator.Params();
    TList<Range>* ranges = new TList<Range>;
    ranges->Append(*new Range(values));
    sets->Append(*new FilterParams(engine_resolved_, int_list_copy(params), ranges,
                                   discriminator.Broadcast(), FD_FORWARD));
  }
  return sets;
}

std::ostream& Filter::Print(std::ostream& out) const {
  out << '\t' << EngineName() << '\t';
  for (TList_Cell<Discriminator>* cell = discriminators_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Print(out) << ' ';
  return out;
}

std::ostream& Filter::Enumerate(std::ostream& out, Filter_Direction direction) const {
  out << (direction == FD_REVERSE ? " REVERSE" : " FORWARD") << " \"" << EngineName() << '"';
  for (TList_Cell<Discriminator>* cell = discriminators_->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Enumerate(out);
  return out;
}
