// Ferrowall is one screen of the estate: the machine that a compile writes
// its files for.
#ifndef FW_SCREEN_FERROWALL_H
#define FW_SCREEN_FERROWALL_H

#include <ostream>

#include "model/entity.h"

class Registry;

class Ferrowall : public Entity {
 public:
  // A screen that holds nothing but its name.
  explicit Ferrowall(const char* name);

  // Works out the name under which this screen compiles; returns the number
  // of problems reported on `out`.
  int FigureVirtualName(Registry& registry, std::ostream& out);
  // Checks the screen's settings after the policy is verified.
  int Verify(Registry& registry, std::ostream& out);
  // The screen's own administrative rules, or null when they can't be made.
  TList<Entity>* GenerateAdminRules(Registry& registry);
  // The name under which this screen compiles.
  const char* VirtualName() const { return Name(); }
  // The high-availability address of the screen, 0 when it has none.
  unsigned HA_IP() const { return 0; }
};

#endif
