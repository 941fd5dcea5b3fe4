// The Registry is the store of every named object that isn't part of the
// rule order.  It owns the objects of its lists and is born with the
// built-in objects that every configuration may name.
#ifndef FW_MODEL_REGISTRY_H
#define FW_MODEL_REGISTRY_H

#include <ostream>

#include "model/entity.h"

class Ferrowall;
class FWFile;
class OrderedEntityList;
class Policy;

class Registry : public Entity {
 public:
  Registry();
  ~Registry() override;

  TList<Entity>& Screens() const { return *screens_; }
  void Screens(Entity& screen) { screens_->Append(screen); }
  FWFile* File() const { return file_; }
  void File(FWFile* file) { file_ = file; }

  // Compile stages, in the order the compile runs them.
  int Verify(Ferrowall* screen, std::ostream& out);
  // The protected address of the last high-availability interface among the
  // routing interfaces; null when there is none.
  Entity* LastHAProtectedAddress() const { return nullptr; }
  void AddAdminRules(TList<Entity>& rules);
  int AddHARules(Ferrowall& screen);
  void AddRules(OrderedEntityList& rules);
  void AddEtherRules(OrderedEntityList& rules);
  void OptimizeRules();
  void OrderServicesByStateEngine();
  void UnMark();
  // The number of distinct time objects that the rules use.
  int UniqueTimes();
  int GenerateOutput(Ferrowall* screen, Policy* policy, TList<Entity>* screen_admin_rules,
                     TList<Entity>* policy_admin_rules);

 private:
  TList<Entity>* screens_;
  FWFile* file_ = nullptr;
};

#endif
