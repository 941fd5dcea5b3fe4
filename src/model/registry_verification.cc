// The verifying half of the Registry: it turns the store of all screens into
// the linked, checked object graph of the one screen being compiled.
#include <cstring>
#include <iostream>
#include <utility>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/message_subject.h"
#include "model/registry.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "services/service.h"
#include "support/fwi18n.h"
#include "support/host.h"

namespace {

const int kSet = 48;
const int kMaxRoutingInterfaces = 65535;
const int kMaxStealthInterfaces = 15;

Interface& InterfaceOf(TList_Cell<Entity>* cell) { return *static_cast<Interface*>(cell->Data()); }

// Whether the two interfaces may share what their protected addresses
// share: nothing at all, or only what lies inside both overlaps.
bool IntersectionAllowed(Interface& a, Interface& b) {
  if (!a.Intersects(b)) return true;
  if (a.Overlap() == nullptr || b.Overlap() == nullptr) return false;
  Address* common = a.Intersection(*b.ProtectedAddress());
  bool covered = common->SubsetOf(*a.Overlap()) && common->SubsetOf(*b.Overlap());
  if (common != a.ProtectedAddress() && common != b.ProtectedAddress()) delete common;
  return covered;
}

bool EmptySet(const Address& address) { return address.Ranges().Empty(); }

// A screen administered through the compiled screen as its master.
bool IsSecondaryOf(const Ferrowall& candidate, const Ferrowall& master) {
  const Ferrowall* resolved = candidate.MasterResolved();
  return resolved != nullptr && candidate.AdminIP() != nullptr && !candidate.HA_Secondary() &&
         strcmp(resolved->Name(), master.Name()) == 0;
}

}  // namespace

int Registry::Verify(Ferrowall* compiled, std::ostream& out) {
  Ferrowall& screen = *compiled;
  SelectScreenData(screen);
  CopyServicesForCompile();
  int errors = SetUpInterfaces(screen);
  SetLocalhost();
  errors += ResolveExternals(out);
  errors += ResolveReferences(out);
  errors += DetectCycles(out);
  // What follows needs every name linked.
  if (errors != 0) return errors;
  errors += ResolveMoreReferences(out);
  // Besides the built-in "*" and the compiled screen there must be a third
  // screen for a secondary to exist: a screen naming itself as its master
  // isn't a secondary of itself.
  if (Screens().Length() > 2) errors += CheckSecondaryScreens(screen);
  if (errors == 0) {
    MakeReverseInterfaces();
    for (TList<Entity>* family : {admin_interfaces_, gwy_interfaces_, clk_interfaces_})
      errors += InterfacesIntersect(*family, out);
    WarnAboutStealthInterfaces(screen, out);
  }
  errors += CheckInterfaceLimits(out);
  if (errors == 0) {
    GenerateKnownAddresses();
    WarnAboutUnknownStealthAddresses(out);
  }
  return errors;
}

void Registry::SelectScreenData(const Ferrowall& screen) {
  for (TList<Entity>* list : {addresses_, services_, state_engines_, state_engine_internals_, admin_interfaces_,
                              disabled_interfaces_, gwy_interfaces_, clk_interfaces_, certificates_, keys_, users_,
                              times_})
    RemoveOtherScreenData(screen, *list);
}

void Registry::CopyServicesForCompile() {
  services_compile_->Delete_Data();
  for (TList_Cell<Entity>* cell = services_->Head(); cell != nullptr; cell = cell->Next())
    ServicesCompile(*new Service(*static_cast<Service*>(cell->Data())));
}

int Registry::SetUpInterfaces(Ferrowall& screen) {
  if (gwy_interfaces_->Empty() && admin_interfaces_->Empty())
    std::cerr << fwi18n_text(kSet, 7, "Warning: No enabled (Routing or Admin) Interfaces detected.") << std::endl;
  Interface::ResetBroadcastAddresses();
  int errors = 0;
  for (TList<Entity>* list : {admin_interfaces_, clk_interfaces_, gwy_interfaces_})
    errors += SetInterfacesAddress(*list, screen);
  // Disabled interfaces are never checked on the host, so they can't fail.
  SetInterfacesAddress(*disabled_interfaces_, screen);
  return errors;
}

int Registry::SetInterfacesAddress(TList<Entity>& list, Ferrowall& screen) {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& interface = InterfaceOf(cell);
    MessageSubject subject(interface);
    if (interface.Type() != INTERFACE_DISABLED && !Host::Current().InterfaceExists(interface.Name())) {
      std::cerr << fwi18n_text(kSet, 8, "Error: Interface does not exist.") << " (" << interface.Name() << ")"
                << std::endl;
      return 1;
    }
    interface.SetAddresses(screen);
  }
  return 0;
}

void Registry::SetLocalhost() {
  localhost_->Exclude(*star_);
  for (TList<Entity>* list : {admin_interfaces_, gwy_interfaces_, disabled_interfaces_, clk_interfaces_})
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next())
      localhost_->Include(*InterfaceOf(cell).InterfaceAddress());
}

int Registry::ResolveExternals(std::ostream& out) {
  int errors = 0;
  for (TList<Entity>* list : {algorithm_key_v1_, algorithm_data_v1_, algorithm_mac_v1_, algorithm_comp_v1_,
                              algorithm_key_v2_, algorithm_data_v2_, algorithm_mac_v2_, algorithm_comp_v2_,
                              algorithms_}) {
    for (TList_Cell<Entity>* cell = list->Head(); cell != nullptr; cell = cell->Next()) {
      Algorithm& algorithm = *static_cast<Algorithm*>(cell->Data());
      if (algorithm.GetValue() != -1) continue;
      MessageSubject subject(algorithm);
      out << fwi18n_text(kSet, 9, "Undefined Algorithm: ") << algorithm.Name() << std::endl;
      ++errors;
    }
  }
  return errors;
}

namespace {

int ResolveEach(TList<Entity>& objects, Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  int errors = 0;
  for (TList_Cell<Entity>* cell = objects.Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    errors += cell->Data()->Resolve(kind, list, out);
  }
  return errors;
}

}  // namespace

// Groups are reduced only when every name in them was found, and the
// services only when the addresses were.
int Registry::ResolveReferences(std::ostream& out) {
  int errors = ResolveEach(*addresses_, CO_ADDRESS, *addresses_, out);
  if (errors == 0)
    for (TList_Cell<Entity>* cell = addresses_->Head(); cell != nullptr; cell = cell->Next()) cell->Data()->Reduce();
  errors += ResolveScreens(out);
  errors += ResolveEach(*state_engines_, CO_STATE_ENGINE, *state_engine_internals_, out);
  for (TList_Cell<Entity>* cell = services_compile_->Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    errors += cell->Data()->Resolve(CO_SERVICE, *services_compile_, out);
    errors += cell->Data()->Resolve(CO_STATE_ENGINE, *state_engines_, out);
  }
  if (errors == 0) errors += ReduceServices(out);
  for (TList<Entity>* list : {admin_interfaces_, gwy_interfaces_, disabled_interfaces_, clk_interfaces_})
    errors += ResolveEach(*list, CO_ADDRESS, *addresses_, out);
  return errors + ResolveEach(*certificates_, CO_CERTIFICATE, *certificates_, out);
}

int Registry::ResolveScreens(std::ostream& out) {
  const std::pair<Config_Objects, TList<Entity>*> passes[] = {
      {CO_ADDRESS, addresses_},          {CO_SCREEN, screens_},
      {CO_CERTIFICATE, certificates_},   {CO_ALGORITHM, algorithms_},
      {CO_ALG_KEY, algorithm_key_v2_},   {CO_ALG_DATA, algorithm_data_v2_},
      {CO_ALG_MAC, algorithm_mac_v2_},   {CO_ALG_COMP, algorithm_comp_v2_}};
  int errors = 0;
  for (TList_Cell<Entity>* cell = screens_->Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    for (const auto& pass : passes) errors += cell->Data()->Resolve(pass.first, *pass.second, out);
  }
  return errors;
}

// The message has no line end of its own: what is written next follows on
// the same line.
int Registry::ReduceServices(std::ostream& out) {
  int errors = 0;
  for (TList_Cell<Entity>* cell = services_compile_->Head(); cell != nullptr; cell = cell->Next()) {
    Service& service = *static_cast<Service*>(cell->Data());
    service.Reduce();
    if (service.Consistent() == 0) continue;
    MessageSubject subject(service);
    out << fwi18n_text(kSet, 10, "Error: Service incorrectly defined") << "(" << service.Name() << ")";
    ++errors;
  }
  return errors;
}

int Registry::ResolveMoreReferences(std::ostream& out) {
  int errors = 0;
  for (TList_Cell<Entity>* cell = certificates_->Head(); cell != nullptr; cell = cell->Next()) {
    Certificate& certificate = *static_cast<Certificate*>(cell->Data());
    if (certificate.Reduce() != nullptr) continue;
    MessageSubject subject(certificate);
    if (certificate.IPsecType() == IPSEC_MIXED)
      out << fwi18n_text(kSet, 11, "Error: Certificate group includes multiple Certificate types:");
    else
      out << fwi18n_text(kSet, 12, "Error: Certificate group contains illegal construct(s):");
    out << " \"" << certificate.Name() << '"' << std::endl;
    ++errors;
  }
  for (TList_Cell<Entity>* cell = screens_->Head(); cell != nullptr; cell = cell->Next()) {
    MessageSubject subject(*cell->Data());
    errors += cell->Data()->Resolve2(CO_CERTIFICATE, *certificates_, out);
  }
  return errors;
}

namespace {

void ClearUsedMarks(const TList<Entity>& list) {
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) cell->Data()->Used(0);
}

// Reports every group of `list` that a walk from it leads back to.  The
// marks are cleared before each walk, so each group on a cycle is reported
// on its own.  A walk from a group marks that group first, so a walk that
// left its start unmarked marked nothing, and the next one needn't clear:
// that keeps long lists of plain objects linear.
int ReportCycles(const TList<Entity>& list, const char* kind_word, std::ostream& out) {
  int errors = 0;
  bool marked = true;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    Entity& start = *cell->Data();
    if (marked) ClearUsedMarks(list);
    if (start.DetectCycle()) {
      MessageSubject subject(start);
      out << fwi18n_text(kSet, 13, "Error: Cycle detected") << kind_word << start.Name() << '"' << std::endl;
      ++errors;
    }
    marked = start.Used() != 0;
  }
  return errors;
}

}  // namespace

int Registry::DetectCycles(std::ostream& out) const {
  int errors = ReportCycles(*addresses_, fwi18n_text(kSet, 14, " Address \""), out);
  errors += ReportCycles(*services_compile_, fwi18n_text(kSet, 15, " Service \""), out);
  return errors + ReportCycles(*certificates_, fwi18n_text(kSet, 16, " Certificate \""), out);
}

// A secondary screen is administered through its ADMIN_IP from the master
// being compiled, so that must be one real address of it.
int Registry::CheckSecondaryScreens(const Ferrowall& screen) const {
  int errors = 0;
  for (TList_Cell<Entity>* cell = screens_->Head(); cell != nullptr; cell = cell->Next()) {
    const Ferrowall& secondary = *static_cast<const Ferrowall*>(cell->Data());
    if (!IsSecondaryOf(secondary, screen)) continue;
    MessageSubject subject(secondary);
    const Address& admin_ip = *secondary.AdminIP();
    if (EmptySet(admin_ip)) {
      std::cerr << fwi18n_text(kSet, 17,
                               "Error: Cannot use an empty Address group for ADMIN_IP of secondary Screen, ")
                << secondary.VirtualName() << std::endl
                << fwi18n_text(kSet, 18, "ADMIN_IP should be a single IP Address that exists on the secondary Screen.")
                << std::endl;
      ++errors;
      continue;
    }
    // The lowest address decides, wherever the set operations left its range.
    if (admin_ip.Contains(Range(0, 0, RT_ADDRESS, RS_ADDRESSES))) {
      std::cerr << fwi18n_text(kSet, 19, "Error: ADMIN_IP cannot be 0.0.0.0 or * for a secondary Screen.")
                << std::endl;
      ++errors;
    }
    if (admin_ip.SizeOf() > 1)
      std::cerr << fwi18n_text(kSet, 20,
                               "Warning: ADMIN_IP should be a single IP Address that exists on the secondary "
                               "Screen, not a group or range. Screen: ")
                << secondary.VirtualName() << std::endl;
  }
  return errors;
}

// Disabled interfaces make a routing reverse interface exist without giving
// it any address.
void Registry::MakeReverseInterfaces() {
  DropReverseInterface(*admin_interfaces_, &reverse_admin_);
  DropReverseInterface(*gwy_interfaces_, &reverse_gwy_);
  GenerateReverseInterface(*admin_interfaces_, &reverse_admin_);
  GenerateReverseInterface(*gwy_interfaces_, &reverse_gwy_);
  if (!disabled_interfaces_->Empty() && reverse_gwy_ == nullptr)
    reverse_gwy_ = new Interface("Ferrowall", "Reverse Interface", nullptr, nullptr, 0, nullptr);
}

void Registry::DropReverseInterface(TList<Entity>& list, Interface** reverse) {
  if (*reverse == nullptr) return;
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    if (cell->Data() != *reverse) continue;
    list.Delete_Cell(cell);
    break;
  }
  delete *reverse;
  *reverse = nullptr;
}

// The reverse interface stands for the screen itself: no interface of the
// list keeps the screen's own addresses, and the reverse one, last in the
// list, holds exactly these.
void Registry::GenerateReverseInterface(TList<Entity>& list, Interface** reverse) {
  Address protected_addresses("Protected", nullptr, nullptr, ADDRESS_SINGLE);
  Address interface_addresses("Interface", nullptr, nullptr, ADDRESS_SINGLE);
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& interface = InterfaceOf(cell);
    interface.ProtectedAddress()->Exclude(*localhost_);
    if (!EmptySet(*interface.InterfaceAddress())) protected_addresses.Include(*interface.InterfaceAddress());
  }
  if (list.Empty()) return;
  Interface* made =
      new Interface("Ferrowall", "Reverse Interface", &protected_addresses, &interface_addresses, 0, nullptr);
  made->ProtectedAddress()->Include(*localhost_);
  list.Append(*made);
  *reverse = made;
}

int Registry::InterfacesIntersect(TList<Entity>& list, std::ostream& out) const {
  int errors = 0;
  for (TList_Cell<Entity>* first = list.Head(); first != nullptr; first = first->Next()) {
    for (TList_Cell<Entity>* second = first->Next(); second != nullptr; second = second->Next()) {
      Interface& a = InterfaceOf(first);
      Interface& b = InterfaceOf(second);
      if (IntersectionAllowed(a, b)) continue;
      MessageSubject subject(b);
      out << fwi18n_text(kSet, 21, "Error: Interfaces intersect") << " (\"" << a.Name() << "\", \"" << b.Name()
          << "\")" << std::endl;
      ++errors;
    }
  }
  return errors;
}

void Registry::WarnAboutStealthInterfaces(const Ferrowall& screen, std::ostream& out) const {
  for (TList_Cell<Entity>* cell = clk_interfaces_->Head(); cell != nullptr; cell = cell->Next()) {
    const Interface& interface = InterfaceOf(cell);
    if (!EmptySet(*interface.ProtectedAddress())) continue;
    out << fwi18n_text(kSet, 22, "Warning: Stealth Interface should use non-empty Address: ") << "("
        << interface.Name() << ": " << interface.ProtectedAddress()->Name() << ")" << std::endl;
  }
  if (!clk_interfaces_->Empty() && screen.CLKNetwork() == nullptr)
    out << fwi18n_text(kSet, 23, "Warning: Stealth Interfaces detected but STEALTH_NET not specified.") << std::endl;
}

int Registry::CheckInterfaceLimits(std::ostream& out) const {
  int errors = 0;
  if (admin_interfaces_->Length() + gwy_interfaces_->Length() > kMaxRoutingInterfaces) {
    out << fwi18n_text(kSet, 24, "Error: Too many ROUTING Interfaces defined.") << std::endl;
    ++errors;
  }
  if (clk_interfaces_->Length() > kMaxStealthInterfaces) {
    out << fwi18n_text(kSet, 25, "Error: More than 15 STEALTH Interfaces defined.") << std::endl;
    ++errors;
  }
  return errors;
}

void Registry::GenerateKnownAddresses() {
  struct Family {
    TList<Entity>* interfaces;
    Address** known;
    Address** unknown;
  };
  const Family families[] = {{admin_interfaces_, &known_admin_, &unknown_admin_},
                             {gwy_interfaces_, &known_gwy_, &unknown_gwy_},
                             {clk_interfaces_, &known_clk_, &unknown_clk_}};
  for (const Family& family : families) {
    Address* known = NewKnownAddress((*family.known)->Name());
    Address* unknown = NewKnownAddress((*family.unknown)->Name());
    delete *family.known;
    delete *family.unknown;
    *family.known = known;
    *family.unknown = unknown;
    for (TList_Cell<Entity>* cell = family.interfaces->Head(); cell != nullptr; cell = cell->Next()) {
      Interface& interface = InterfaceOf(cell);
      interface.OtherAddress(*family.interfaces);
      known->Include(*interface.ProtectedAddress());
    }
    if (known->Equal(*star_)) continue;
    unknown->Include(*star_);
    unknown->Exclude(*known);
  }
}

void Registry::WarnAboutUnknownStealthAddresses(std::ostream& out) const {
  if (clk_interfaces_->Empty() || EmptySet(*unknown_clk_)) return;
  out << fwi18n_text(kSet, 26,
                     "Warning: These IP addresses are not associated with any STEALTH Interface.  NAT, CDP and "
                     "packet routing may not work correctly: ");
  unknown_clk_->DumpRanges(out, nullptr, 0) << std::endl;
}
