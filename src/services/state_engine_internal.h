// StateEngineInternal is a processing routine that the packet-filter engine
// really has: a name and the numeric id the generated programs call it by.
// Ids are drawn from a class-wide counter in order of definition.
#ifndef FW_SERVICES_STATE_ENGINE_INTERNAL_H
#define FW_SERVICES_STATE_ENGINE_INTERNAL_H

#include "model/entity.h"

class StateEngineInternal : public Entity {
 public:
  // With `assign_id` the next counter value becomes the id; else -1, the
  // mark of a placeholder.
  StateEngineInternal(const char* name, int assign_id);

  int UniqueID() const { return unique_id_; }
  static void ResetUniqueId();

  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

 private:
  int unique_id_;

  static int unique_id_counter_;
};

#endif
