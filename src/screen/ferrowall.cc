#include "screen/ferrowall.h"

Ferrowall::Ferrowall(const char* name) : Entity(name, nullptr, nullptr, 0) {}

int Ferrowall::FigureVirtualName(Registry&, std::ostream&) { return 0; }

int Ferrowall::Verify(Registry&, std::ostream&) { return 0; }

TList<Entity>* Ferrowall::GenerateAdminRules(Registry&) { return new TList<Entity>; }
