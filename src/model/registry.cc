#include "model/registry.h"

#include <cstdlib>
#include <cstring>

#include "model/address.h"
#include "model/address_list.h"
#include "screen/ferrowall.h"

namespace {

Address* NewKnownAddress(const char* name) { return new Address(name, nullptr, nullptr, ADDRESS_SINGLE); }

}  // namespace

Registry::Registry()
    : Entity("The Registry", nullptr, nullptr, 0),
      addresses_(new TList<Entity>),
      screens_(new TList<Entity>),
      services_(new TList<Entity>),
      state_engines_(new TList<Entity>),
      state_engine_internals_(new TList<Entity>),
      services_compile_(new TList<Entity>),
      admin_interfaces_(new TList<Entity>),
      disabled_interfaces_(new TList<Entity>),
      gwy_interfaces_(new TList<Entity>),
      clk_interfaces_(new TList<Entity>),
      certificates_(new TList<Entity>),
      keys_(new TList<Entity>),
      algorithm_key_v1_(new TList<Entity>),
      algorithm_data_v1_(new TList<Entity>),
      algorithm_mac_v1_(new TList<Entity>),
      algorithm_comp_v1_(new TList<Entity>),
      algorithm_key_v2_(new TList<Entity>),
      algorithm_data_v2_(new TList<Entity>),
      algorithm_mac_v2_(new TList<Entity>),
      algorithm_comp_v2_(new TList<Entity>),
      algorithms_(new TList<Entity>),
      users_(new TList<Entity>),
      times_(new TList<Entity>),
      known_admin_(NewKnownAddress("KnownAdminAddresses")),
      unknown_admin_(NewKnownAddress("UnknownAdminAddresses")),
      known_gwy_(NewKnownAddress("KnownGWYAddresses")),
      unknown_gwy_(NewKnownAddress("UnknownGWYAddresses")),
      known_clk_(NewKnownAddress("KnownCLKAddresses")),
      unknown_clk_(NewKnownAddress("UnknownCLKAddresses")),
      star_(new Address("*", 0u, 0xFFFFFFFFu, nullptr, nullptr, RS_ADDRESSES)),
      localhost_(new AddressList("localhost", nullptr, nullptr, nullptr, nullptr)),
      alien_data_(new TList<char>) {
  AddBuiltInObjects();
}

void Registry::AddBuiltInObjects() {
  Addresses(*star_);
  Addresses(*localhost_);
  Screens(*new Ferrowall("*"));
}

Registry::~Registry() {
  for (TList<Entity>* list : {addresses_, screens_, services_, state_engines_, state_engine_internals_, services_compile_, admin_interfaces_, disabled_interfaces_, gwy_interfaces_, clk_interfaces_, certificates_, keys_, algorithm_key_v1_, algorithm_data_v1_, algorithm_mac_v1_, algorithm_comp_v1_, algorithm_key_v2_, algorithm_data_v2_, algorithm_mac_v2_, algorithm_comp_v2_, algorithms_, users_, times_}) {
    list->Delete_Data();
    delete list;
  }
  for (Address* known : {known_admin_, unknown_admin_, known_gwy_, unknown_gwy_, known_clk_, unknown_clk_})
    delete known;
  for (TList_Cell<char>* cell = alien_data_->Head(); cell != nullptr; cell = cell->Next()) free(cell->Data());
  delete alien_data_;
}

void Registry::AddAlienData(const char* text) { alien_data_->Append(*strdup(text)); }

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
