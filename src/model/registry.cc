#include "model/registry.h"

#include <cstdlib>
#include <cstring>

#include <iostream>

#include "crypto/certificate_list.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/sorted_entity_list.h"
#include "model/time.h"
#include "support/fwi18n.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "services/discriminator.h"
#include "services/filter.h"
#include "services/service.h"

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
      alien_data_(new TList<char>),
      ha_rules_(new TList<Entity>) {
  AddBuiltInObjects();
}

void Registry::AddBuiltInObjects() {
  Addresses(*star_);
  Addresses(*localhost_);
  Screens(*new Ferrowall("*"));
  RangeList* whole_day = new RangeList;
  whole_day->Insert(Range(0, 1440, RT_TIME, RS_ADDRESSES));
  TList<DayOfWeek>* days = new TList<DayOfWeek>;
  days->Append(*new DayOfWeek(EVERYDAY, whole_day));
  Times(*new Time("*", days, nullptr, nullptr));
  AddStarService();
}

namespace {

// One discriminator of the built-in service: a range, or every value
// (all), possibly the broadcast form, possibly with parameters.
struct StarValue {
  unsigned long start;
  unsigned long end;
  int all;
  int broadcast;
};

struct StarFilter {
  const char* engine;
  std::vector<StarValue> values;
  std::vector<int> params;
};

const StarValue kAll{0, 0, 1, 0};
const StarValue kAllBroadcast{0, 0, 1, 1};

StarValue Port(unsigned long port, int broadcast = 0) { return {port, port, 0, broadcast}; }

Filter* NewStarFilter(const StarFilter& written) {
  TList<Discriminator>* discriminators = new TList<Discriminator>;
  for (const StarValue& value : written.values) {
    TList<int>* params = nullptr;
    if (!written.params.empty()) {
      params = new TList<int>;
      for (int param : written.params) params->Append(*new int(param));
    }
    discriminators->Append(*new Discriminator(value.start, value.end, value.all, params, value.broadcast));
  }
  return new Filter(written.engine, discriminators);
}

}  // namespace

// The service "*" is what "any service" means in a compiled policy; the
// gap of 3851 to 3854 in its first filter is part of that meaning.
void Registry::AddStarService() {
  const StarFilter forward[] = {
      {"tcpall", {{0, 3850, 0, 0}, {3855, 65535, 0, 0}}, {}},
      {"udpall", {kAll}, {}},
      {"udp_datagram", {Port(514)}, {}},
      {"tcp", {Port(53)}, {}},
      {"dns", {Port(53)}, {}},
      {"rpc_udp", {kAll}, {}},
      {"udp", {Port(2049)}, {}},
      {"tcp", {Port(2049)}, {}},
      {"udp_datagram", {Port(520), Port(520, 1)}, {}},
      {"ftp", {Port(21)}, {}},
      {"rsh", {Port(514)}, {}},
      {"realaudio", {Port(7070)}, {}},
      {"pmap_udp", {kAll, kAllBroadcast}, {}},
      {"pmap_tcp", {kAll}, {}},
      {"rpc_tcp", {kAll}, {}},
      {"nis", {Port(100004)}, {}},
      {"pmap_nis", {Port(100004), Port(100004, 1)}, {}},
      {"udp", {Port(1525)}, {360, -1, 0}},
      {"udp_datagram", {{33430, 34000, 0, 0}}, {}},
      {"ping", {Port(8)}, {}},
      {"icmp", {kAll, kAllBroadcast}, {}},
      {"ipmobile", {kAll, kAllBroadcast}, {}},
  };
  TList<Filter>* forward_filters = new TList<Filter>;
  for (const StarFilter& filter : forward) forward_filters->Append(*NewStarFilter(filter));
  TList<Filter>* reverse_filters = new TList<Filter>;
  reverse_filters->Append(*NewStarFilter({"icmp", {Port(3), Port(11)}, {}}));
  Services(*new Service("*", forward_filters, reverse_filters, nullptr, nullptr));
}

TList<Entity>& Registry::InterfaceList(int type) const {
  switch (type) {
    case INTERFACE_ADMIN: return *admin_interfaces_;
    case INTERFACE_DISABLED: return *disabled_interfaces_;
    case INTERFACE_GWY:
    case INTERFACE_HA: return *gwy_interfaces_;
    default: return *clk_interfaces_;
  }
}

Registry::~Registry() {
  DropReverseInterface(*admin_interfaces_, &reverse_admin_);
  DropReverseInterface(*gwy_interfaces_, &reverse_gwy_);
  for (TList<Entity>* list : {addresses_, screens_, services_, state_engines_, state_engine_internals_, services_compile_, admin_interfaces_, disabled_interfaces_, gwy_interfaces_, clk_interfaces_, certificates_, keys_, algorithm_key_v1_, algorithm_data_v1_, algorithm_mac_v1_, algorithm_comp_v1_, algorithm_key_v2_, algorithm_data_v2_, algorithm_mac_v2_, algorithm_comp_v2_, algorithms_, users_, times_}) {
    list->Delete_Data();
    delete list;
  }
  for (Address* known : {known_admin_, unknown_admin_, known_gwy_, unknown_gwy_, known_clk_, unknown_clk_})
    delete known;
  for (TList_Cell<char>* cell = alien_data_->Head(); cell != nullptr; cell = cell->Next()) free(cell->Data());
  delete alien_data_;
  ha_rules_->Delete_Data();
  delete ha_rules_;
}

Address* Registry::NewKnownAddress(const char* name) {
  return new Address(name, nullptr, nullptr, ADDRESS_SINGLE);
}

void Registry::AddAlienData(const char* text) { alien_data_->Append(*strdup(text)); }

TList<Entity>* Registry::TypeToList(Config_Objects kind) const {
  switch (kind) {
    case CO_ADDRESS: return addresses_;
    case CO_SCREEN: return screens_;
    case CO_SERVICE: return services_;
    case CO_STATE_ENGINE: return state_engines_;
    case CO_CERTIFICATE: return certificates_;
    case CO_TIME: return times_;
    case CO_KEY: return keys_;
    default: return nullptr;
  }
}

std::vector<TList<Entity>*> Registry::InterfaceListsForEditing() const {
  return {admin_interfaces_, gwy_interfaces_, disabled_interfaces_, clk_interfaces_};
}

std::vector<TList<Entity>*> Registry::InterfaceListsForListing() const {
  return {admin_interfaces_, disabled_interfaces_, gwy_interfaces_, clk_interfaces_};
}

void Registry::Create(Config_Objects kind, Entity* object) {
  if (object == nullptr) return;
  Dirty(1);
  if (kind == CO_INTERFACE) {
    CreateInterface(*static_cast<Interface*>(object));
    return;
  }
  TList<Entity>* list = TypeToList(kind);
  if (list == nullptr) return;
  TList_Cell<Entity>* old = object->FindSelfCell(*list, 0);
  if (old == nullptr) {
    list->Append(*object);
  } else {
    if (kind == CO_CERTIFICATE) mIKEy_del(*old->Data());
    list->Append(*object, old);
    list->Delete_Data_Cell(old);
  }
  if (kind == CO_CERTIFICATE) mIKEy_add(*object, 0);
}

// An interface stands in one list only: one of the same name and screen is
// taken out of every list first, with a warning where that leaves a family
// without its last interfaces.
void Registry::CreateInterface(Interface& interface) {
  Interface_Type type = interface.Type();
  struct Replaced {
    TList<Entity>* list;
    int only_element_warning;  // catalogue number, 0 for none
    const char* warning;
    bool warns;
  };
  const Replaced lists[] = {
      {admin_interfaces_, 3, "Warning: operation replaced the Administrative Interface.", type != INTERFACE_ADMIN},
      {disabled_interfaces_, 0, nullptr, false},
      {gwy_interfaces_, 4, "Warning: operation replaced only ROUTING Interface.", type != INTERFACE_GWY},
      {clk_interfaces_, 5, "Warning: operation replaced only STEALTH Interface.", type != INTERFACE_CLK},
  };
  for (const Replaced& replaced : lists) {
    TList_Cell<Entity>* old = interface.FindSelfCell(*replaced.list, 0);
    if (old == nullptr) continue;
    int length = replaced.list->Length();
    if (replaced.warns && length == 1) {
      std::cerr << fwi18n_text(48, replaced.only_element_warning, replaced.warning) << std::endl;
    } else if (replaced.warns && replaced.list == clk_interfaces_ && length == 2) {
      std::cerr << fwi18n_text(48, 6, "Warning: operation left only one STEALTH Interface.") << std::endl;
    }
    replaced.list->Delete_Data_Cell(old);
  }
  InterfaceList(type).Append(interface);
}

void Registry::Delete(Config_Objects kind, Entity* object) {
  if (object == nullptr) return;
  Dirty(1);
  std::vector<TList<Entity>*> lists;
  if (kind == CO_INTERFACE) lists = InterfaceListsForEditing();
  else if (TList<Entity>* list = TypeToList(kind)) lists = {list};
  for (TList<Entity>* list : lists) {
    TList_Cell<Entity>* cell = object->FindSelfCell(*list, 0);
    if (cell == nullptr) continue;
    if (list == certificates_) mIKEy_del(*cell->Data());
    list->Delete_Data_Cell(cell);
  }
}

void Registry::Rename(Config_Objects kind, const char* old_name, const char* new_name, const char* screen) {
  std::vector<TList<Entity>*> lists;
  if (kind == CO_INTERFACE) lists = InterfaceListsForEditing();
  else if (TList<Entity>* list = TypeToList(kind)) lists = {list};
  Entity old_key(old_name, screen, nullptr, 0);
  Entity new_key(new_name, screen, nullptr, 0);
  for (TList<Entity>* list : lists) {
    Entity* object = old_key.FindSelf(*list, 0);
    if (object == nullptr) continue;
    Dirty(1);
    TList_Cell<Entity>* taken = new_key.FindSelfCell(*list, 0);
    if (taken != nullptr && taken->Data() != object) list->Delete_Data_Cell(taken);
    if (list == certificates_) mIKEy_del(*object);
    object->Name(new_name);
    if (list == certificates_) mIKEy_add(*object, 0);
  }
}

int Registry::ModifyMember(Config_Objects kind, Entity* object, const char* name, int remove, int second) {
  TList<Entity>* list = object != nullptr ? TypeToList(kind) : nullptr;
  if (list == nullptr) return 224;
  Dirty(1);
  Entity* group = object->FindSelf(*list, 0);
  if (group == nullptr) return 224;
  return group->Member(name, remove, second);
}

std::vector<TList<Entity>*> Registry::ReferringLists(Config_Objects kind) const {
  switch (kind) {
    case CO_ADDRESS:
      return {addresses_, screens_, admin_interfaces_, disabled_interfaces_, gwy_interfaces_, clk_interfaces_};
    case CO_SCREEN:
      return {addresses_,          screens_,        services_,        admin_interfaces_, disabled_interfaces_,
              gwy_interfaces_,     clk_interfaces_, certificates_,    keys_};
    case CO_SERVICE:
    case CO_STATE_ENGINE:
      return {services_};
    case CO_CERTIFICATE:
      return {certificates_, screens_};
    default:
      return {};
  }
}

int Registry::IsReferenced(Config_Objects kind, const char* name, int print) const {
  int count = 0;
  for (TList<Entity>* list : ReferringLists(kind))
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next())
      count += cell->Data()->Refer(kind, name, print);
  return count;
}

void Registry::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  std::vector<TList<Entity>*> lists = ReferringLists(kind);
  if (!lists.empty()) Dirty(1);
  for (TList<Entity>* list : lists)
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->RenameReference(kind, old_name, new_name);
}

std::vector<TList<Entity>*> Registry::ListsToList(Config_Objects kind, const char* type) const {
  if (kind != CO_INTERFACE) {
    TList<Entity>* list = TypeToList(kind);
    return list != nullptr ? std::vector<TList<Entity>*>{list} : std::vector<TList<Entity>*>{};
  }
  if (type == nullptr) return InterfaceListsForListing();
  std::string word(type);
  if (word == "ADMIN") return {admin_interfaces_};
  if (word == "DISABLED") return {disabled_interfaces_};
  if (word == "GWY" || word == "ROUTING" || word == "HA") return {gwy_interfaces_};
  if (word == "CLK" || word == "STEALTH") return {clk_interfaces_};
  return {};
}

void Registry::Search(Config_Objects kind, const char* screen, const char* name, const char* type,
                      int exact) const {
  bool everything = screen == nullptr && name == nullptr && type == nullptr;
  for (TList<Entity>* list : ListsToList(kind, type)) {
    SortedEntityList sorted;
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next())
      if (everything || cell->Data()->Match(screen, name, type, exact)) sorted.Insert(*cell->Data());
    for (TList_Cell<Entity>* cell = sorted.List().Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->Enumerate(std::cout, ENUM_SEARCH);
  }
}

bool Registry::BuiltIn(Config_Objects kind, const Entity& entity) {
  bool star = strcmp(entity.Name(), "*") == 0;
  if (kind == CO_ADDRESS) return star || strcmp(entity.Name(), "localhost") == 0;
  return star && (kind == CO_SCREEN || kind == CO_SERVICE || kind == CO_TIME);
}

namespace {

// State engines and all interfaces but the stealth ones are listed in the
// order they were defined, since that order means something for them.
bool KeepsListOrder(Config_Objects kind, const TList<Entity>* list, const Registry& registry) {
  if (kind == CO_STATE_ENGINE) return true;
  return kind == CO_INTERFACE && list != &registry.CLKInterfaces();
}

}  // namespace

void Registry::Enumerate(Config_Objects kind, const char* name, const char* screen) const {
  for (TList<Entity>* list : ListsToList(kind, nullptr)) {
    if (name != nullptr) {
      TList<Entity>* matches = Entity(name, screen, nullptr, 0).FindSelfAll(*list);
      if (matches == nullptr) continue;
      for (TList_Cell<Entity>* cell = matches->Head(); cell != nullptr; cell = cell->Next())
        cell->Data()->Enumerate(std::cout, ENUM_FULL);
      delete matches;
      continue;
    }
    SortedEntityList sorted;
    bool ordered = KeepsListOrder(kind, list, *this);
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next()) {
      if (BuiltIn(kind, *cell->Data())) continue;
      if (ordered) cell->Data()->Enumerate(std::cout, ENUM_FULL); else sorted.Insert(*cell->Data());
    }
    for (TList_Cell<Entity>* cell = sorted.List().Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->Enumerate(std::cout, ENUM_FULL);
  }
}

void Registry::EnumerateName(Config_Objects kind) const {
  for (TList<Entity>* list : ListsToList(kind, nullptr)) {
    SortedEntityList sorted;
    bool ordered = KeepsListOrder(kind, list, *this);
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next()) {
      if (ordered) cell->Data()->Enumerate(std::cout, ENUM_NAME);
      else if (cell->Data()->FindSelf(sorted.List(), 1) == nullptr) sorted.Insert(*cell->Data());
    }
    for (TList_Cell<Entity>* cell = sorted.List().Head(); cell != nullptr; cell = cell->Next())
      cell->Data()->Enumerate(std::cout, ENUM_NAME);
  }
}

bool Registry::Holds(Config_Objects kind, const char* name, const char* screen) const {
  Entity wanted(name, screen, nullptr, 0);
  for (TList<Entity>* list : ListsToList(kind, nullptr))
    if (wanted.InList(*list)) return true;
  return false;
}

void Registry::RemoveOtherScreenData(const Ferrowall& screen, TList<Entity>& list) {
  const char* virtual_name = screen.VirtualName();
  TList_Cell<Entity>* cell = list.Head();
  while (cell != nullptr) {
    Entity& object = *cell->Data();
    const char* bound = object.Screen();
    if (bound == nullptr) {
      cell = cell->Next();
    } else if (strcmp(bound, "*") == 0) {
      object.ClearScreen();
      cell = cell->Next();
    } else if (strcmp(bound, virtual_name) != 0) {
      TList_Cell<Entity>* next = cell->Next();
      list.Delete_Data_Cell(cell);
      cell = next;
    } else {
      // The screen's own definition replaces a general one of its name.
      Entity general(object.Name(), nullptr, nullptr, 0);
      list.Delete_Data_Cell(general.FindSelfCell(list, 0));
      cell = cell->Next();
    }
  }
}

void Registry::CleanUp() {
  for (TList<Entity>* list : {admin_interfaces_, gwy_interfaces_, clk_interfaces_, addresses_, times_})
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next()) cell->Data()->CleanUp();
  DropReverseInterface(*admin_interfaces_, &reverse_admin_);
  DropReverseInterface(*gwy_interfaces_, &reverse_gwy_);
  Address::ResetUniqueId();
  Interface::ResetUniqueId();
  Time::ResetUniqueId();
}

namespace {

struct SpecialCertificate {
  const char* name;
  const char* comment;
};

// In the order of Registry::ike_special_.
const SpecialCertificate kSpecialCertificates[2] = {
    {"IKE root CA certificates", "RESERVED: list of root CA certificates"},
    {"IKE manually verified certificates", "RESERVED: list of verified/trusted certificates"}};

bool SingleIke(Certificate& certificate) { return certificate.Type() == 0 && certificate.IPsecType() == IPSEC_IKE; }

}  // namespace

void Registry::mIKEy_add(Entity& entity, int parsing) {
  Certificate& certificate = static_cast<Certificate&>(entity);
  for (int special = 0; special < 2; ++special) {
    if (certificate.Screen() != nullptr || ike_special_[special]) continue;
    if (strcmp(certificate.Name(), kSpecialCertificates[special].name) != 0) continue;
    if (!SingleIke(certificate) && certificate.Type() != 1) {
      std::cerr << fwi18n_text(48, 1, "Warning: special certificate name overloaded: \"") << certificate.Name() << '"'
                << std::endl;
    } else {
      ike_special_[special] = 1;
      ike_in_use_ = 1;
    }
    break;
  }
  if (SingleIke(certificate)) ike_in_use_ = 1;
  if (!ike_in_use_ || parsing) return;
  for (int special = 0; special < 2; ++special) {
    if (ike_special_[special]) continue;
    const SpecialCertificate& missing = kSpecialCertificates[special];
    std::cerr << fwi18n_text(48, 2, "Note: adding empty special certificate: \"") << missing.name << '"' << std::endl;
    Certificates(*new CertificateList(missing.name, IPSEC_UNKNOWN, nullptr, nullptr, nullptr, missing.comment));
    ike_special_[special] = 1;
  }
}

void Registry::mIKEy_del(Entity& certificate) {
  if (certificate.Screen() != nullptr) return;
  for (int special = 0; special < 2; ++special) {
    if (ike_special_[special] && strcmp(certificate.Name(), kSpecialCertificates[special].name) == 0) {
      ike_special_[special] = 0;
      ike_in_use_ = 1;
    }
  }
}


int Registry::UniqueTimes() {
  for (TList<Entity>* list : {admin_interfaces_, gwy_interfaces_, clk_interfaces_})
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next()) cell->Data()->Mark();
  const int kTimeLimit = 31;
  for (TList_Cell<Entity>* cell = times_->Head(); cell != nullptr; cell = cell->Next()) {
    Time& time = *static_cast<Time*>(cell->Data());
    if (!time.Used()) continue;
    time.Reduce();
    if (time.UniqueId() > kTimeLimit) return 1;
  }
  return 0;
}
