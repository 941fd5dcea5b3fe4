#include "crypto/vpn_set.h"

#include "crypto/vpn_node.h"

VPNSet::VPNSet(const char* name) : Entity(name, nullptr, nullptr, 0) {}

int VPNSet::MixedMode() const {
  for (TList_Cell<VPNNode>* cell = nodes_.Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Type() != nodes_.Head()->Data()->Type()) return 1;
  return 0;
}
