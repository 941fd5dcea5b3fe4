#include "services/state_engine.h"

#include "services/int_list.h"

StateEngine::StateEngine(const char* name, const char* internal_name, const char* discriminator_label,
                         int engine_class, int subclass, unsigned long max_value, int param_number,
                         TList<int>* default_params, int forward, int reverse)
    : Entity(name, nullptr, nullptr, 0),
      internal_(internal_name, 0),
      resolved_internal_(nullptr),
      label_(discriminator_label != nullptr ? discriminator_label : ""),
      forward_(forward),
      reverse_(reverse),
      class_(engine_class),
      subclass_(subclass),
      max_value_(max_value),
      param_number_(param_number),
      default_params_(default_params != nullptr ? default_params : new TList<int>) {}

StateEngine::~StateEngine() { int_list_free(default_params_); }

StateEngine* StateEngine::Placeholder(const char* name) {
  return new StateEngine(name, "", "DISCRIMINATOR", -1, -1, 0, 0, nullptr, 0, 0);
}

int StateEngine::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_STATE_ENGINE) return 0;
  resolved_internal_ = dynamic_cast<StateEngineInternal*>(internal_.FindSelf(list, 1));
  if (resolved_internal_ != nullptr) return 0;
  NotDefined(out, internal_.Name(), "STATEENGINEINTERNAL");
  return 1;
}

int StateEngine::SubtypeOf(const StateEngine& other) const {
  return class_ == other.class_ && subclass_ <= other.subclass_;
}

std::ostream& StateEngine::Enumerate(std::ostream& out, Enumerate_Type type) const {
  Entity::Enumerate(out, type);
  if (type == ENUM_FULL) out << ' ' << label_ << ' ' << param_number_;
  return out << '\n';
}

std::ostream& StateEngine::Print(std::ostream& out) const {
  out << '"' << Name() << "\"\tSTATE_ENGINE\t\"" << internal_.Name() << "\" \"" << label_ << '"';
  if (forward_) out << "\tFORWARD";
  if (reverse_) out << "\tREVERSE";
  out << '\t' << class_ << '\t' << subclass_ << "\t0x" << std::hex << max_value_ << std::dec << '\t'
      << param_number_ << '\t';
  for (TList_Cell<int>* cell = default_params_->Head(); cell != nullptr; cell = cell->Next())
    out << *cell->Data() << ' ';
  return out;
}
