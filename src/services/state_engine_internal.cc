#include "services/state_engine_internal.h"

int StateEngineInternal::unique_id_counter_ = 0;

StateEngineInternal::StateEngineInternal(const char* name, int assign_id)
    : Entity(name, nullptr, nullptr, 0), unique_id_(assign_id ? unique_id_counter_++ : -1) {}

void StateEngineInternal::ResetUniqueId() { unique_id_counter_ = 0; }
