// StateEngine is a named use of an engine routine for one kind of traffic:
// which routine, what its discriminator values are and how far they go,
// the default parameters, on which paths it runs, and its traffic class.
// Engines of equal Class and SubClass compete for the same traffic.
#ifndef FW_SERVICES_STATE_ENGINE_H
#define FW_SERVICES_STATE_ENGINE_H

#include <string>

#include "model/entity.h"
#include "services/state_engine_internal.h"

class StateEngine : public Entity {
 public:
  // Takes `default_params` with its values (null: none).
  StateEngine(const char* name, const char* internal_name, const char* discriminator_label,
              int engine_class, int subclass, unsigned long max_value, int param_number,
              TList<int>* default_params, int forward, int reverse);
  ~StateEngine() override;

  // The placeholder that a filter keeps for the engine name it was written
  // with: no class, no paths, no parameters.
  static StateEngine* Placeholder(const char* name);

  // Links the internal routine (kind CO_STATE_ENGINE only); 1 when it is
  // missing, after reporting it.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;

  // The resolved routine, or null.
  StateEngineInternal* Internal() const { return resolved_internal_; }
  const char* InternalName() const { return internal_.Name(); }
  const char* DiscriminatorLabel() const { return label_.c_str(); }
  int Forward() const { return forward_; }
  int Reverse() const { return reverse_; }
  int Class() const { return class_; }
  int SubClass() const { return subclass_; }
  unsigned long MaxValue() const { return max_value_; }
  int ParamNumber() const { return param_number_; }
  const TList<int>& DefaultParams() const { return *default_params_; }

  // Same class and a rank not above the other's.
  int SubtypeOf(const StateEngine& other) const;

  // The name line, and in a full line the label and the parameter count.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The STATE_ENGINE statement, the largest value in hexadecimal.
  std::ostream& Print(std::ostream& out) const override;

 private:
  StateEngineInternal internal_;
  StateEngineInternal* resolved_internal_;
  std::string label_;
  int forward_;
  int reverse_;
  int class_;
  int subclass_;
  unsigned long max_value_;
  int param_number_;
  TList<int>* default_params_;
};

#endif
