// The Policy holds the ordered rules of the configuration with their
// companions, and the stored files they came from.
#ifndef FW_POLICY_POLICY_H
#define FW_POLICY_POLICY_H

#include <ostream>

#include "model/entity.h"
#include "model/ordered_entity_list.h"

class Ferrowall;
class FWFile;
class Registry;

class Policy : public Entity {
 public:
  // Takes over `file`, the main input; the policy is named after it.
  explicit Policy(FWFile* file);
  ~Policy() override;

  FWFile* File() const { return file_; }
  // The registry file named by a LOAD statement; null without one.
  FWFile* LoadFile() const { return load_file_; }
  // Takes over `file`.
  void LoadFile(FWFile* file);
  OrderedEntityList& Rules() { return rules_; }
  // The Ethernet rules split off the rule list; null until they are.
  OrderedEntityList* EtherRules() { return ether_rules_; }

  // Compile stages, in the order the compile runs them.
  int Verify(Ferrowall* screen, std::ostream& out, Registry& registry);
  void SetHARules(Entity& ha_address);
  // The rules of the remote access entries, or null when they can't be made.
  TList<Entity>* GenerateAdminRules(Ferrowall& screen, Registry& registry);
  int GenerateOutput(Registry& registry);
  int GenerateMoreOutput(Ferrowall* screen, Registry& registry, TList<Entity>* screen_admin_rules,
                         TList<Entity>* policy_admin_rules);

 private:
  FWFile* file_;
  FWFile* load_file_ = nullptr;
  OrderedEntityList rules_;
  OrderedEntityList* ether_rules_ = nullptr;
};

#endif
