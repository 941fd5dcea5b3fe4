#include "model/registry.h"

#include "screen/ferrowall.h"

Registry::Registry() : Entity("The Registry", nullptr, nullptr, 0), screens_(new TList<Entity>) {
  Screens(*new Ferrowall("*"));
}

Registry::~Registry() {
  screens_->Delete_Data();
  delete screens_;
}

int Registry::Verify(Ferrowall*, std::ostream&) { return 0; }

void Registry::AddAdminRules(TList<Entity>&) {}

int Registry::AddHARules(Ferrowall&) { return 0; }

void Registry::AddRules(OrderedEntityList&) {}

void Registry::AddEtherRules(OrderedEntityList&) {}

void Registry::OptimizeRules() {}

void Registry::OrderServicesByStateEngine() {}

void Registry::UnMark() {}

int Registry::UniqueTimes() { return 0; }

int Registry::GenerateOutput(Ferrowall*, Policy*, TList<Entity>*, TList<Entity>*) { return 0; }
