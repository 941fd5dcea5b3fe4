#include "services/state_engine_internal.h"

int StateEngineInternal::unique_id_counter_ = 0;

StateEngineInternal::StateEngineInternal(const char* name, int assign_id)
    : Entity(name, nullptr, nullptr, 0), unique_id_(assign_id ? unique_id_counter_++ : -1) {}

void StateEngineInternal::ResetUniqueId() { unique_id_counter_ = 0; }

std::ostream& StateEngineInternal::Enumerate(std::ostream& out, Enumerate_Type type) const {
  return Entity::Enumerate(out, type) << '\n';
}

std::ostream& StateEngineInternal::Print(std::ostream& out) const {
  return out << '"' << Name() << "\"\tSTATE_ENGINE";
}
