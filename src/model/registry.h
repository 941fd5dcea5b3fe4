// The Registry is the store of every named object that isn't part of the
// rule order: addresses, screens, services, state engines, interfaces,
// certificates, algorithms, users and times, each kind in its own list.  It
// owns every object of its lists and is born with the built-in objects that
// any configuration may name: the address "*" (the whole space) and
// "localhost", the screen "*", the time "*" (always) and the service "*"
// (any service).  The compile adds what it makes itself: the copies of the
// services, the reverse interfaces and the known-address sets.
#ifndef FW_MODEL_REGISTRY_H
#define FW_MODEL_REGISTRY_H

#include <ostream>
#include <vector>

#include "crypto/ike_generation_bag.h"
#include "model/entity.h"

class Address;
class AddressList;
class Ferrowall;
class FWFile;
class Interface;
class OrderedEntityList;
class Policy;

class Registry : public Entity {
 public:
  Registry();
  ~Registry() override;

  // Each list, and with an argument the append to it.
  TList<Entity>& Addresses() const { return *addresses_; }
  void Addresses(Entity& entity) { addresses_->Append(entity); }
  TList<Entity>& Screens() const { return *screens_; }
  void Screens(Entity& entity) { screens_->Append(entity); }
  TList<Entity>& Services() const { return *services_; }
  void Services(Entity& entity) { services_->Append(entity); }
  TList<Entity>& StateEngines() const { return *state_engines_; }
  void StateEngines(Entity& entity) { state_engines_->Append(entity); }
  TList<Entity>& StateEngineInternals() const { return *state_engine_internals_; }
  void StateEngineInternals(Entity& entity) { state_engine_internals_->Append(entity); }
  TList<Entity>& ServicesCompile() const { return *services_compile_; }
  void ServicesCompile(Entity& entity) { services_compile_->Append(entity); }
  TList<Entity>& AdminInterfaces() const { return *admin_interfaces_; }
  void AdminInterfaces(Entity& entity) { admin_interfaces_->Append(entity); }
  TList<Entity>& DisabledInterfaces() const { return *disabled_interfaces_; }
  void DisabledInterfaces(Entity& entity) { disabled_interfaces_->Append(entity); }
  TList<Entity>& GWYInterfaces() const { return *gwy_interfaces_; }
  void GWYInterfaces(Entity& entity) { gwy_interfaces_->Append(entity); }
  TList<Entity>& CLKInterfaces() const { return *clk_interfaces_; }
  void CLKInterfaces(Entity& entity) { clk_interfaces_->Append(entity); }
  TList<Entity>& Certificates() const { return *certificates_; }
  void Certificates(Entity& entity) { certificates_->Append(entity); }
  TList<Entity>& Keys() const { return *keys_; }
  void Keys(Entity& entity) { keys_->Append(entity); }
  TList<Entity>& AlgorithmKeyV1() const { return *algorithm_key_v1_; }
  void AlgorithmKeyV1(Entity& entity) { algorithm_key_v1_->Append(entity); }
  TList<Entity>& AlgorithmDataV1() const { return *algorithm_data_v1_; }
  void AlgorithmDataV1(Entity& entity) { algorithm_data_v1_->Append(entity); }
  TList<Entity>& AlgorithmMacV1() const { return *algorithm_mac_v1_; }
  void AlgorithmMacV1(Entity& entity) { algorithm_mac_v1_->Append(entity); }
  TList<Entity>& AlgorithmCompV1() const { return *algorithm_comp_v1_; }
  void AlgorithmCompV1(Entity& entity) { algorithm_comp_v1_->Append(entity); }
  TList<Entity>& AlgorithmKeyV2() const { return *algorithm_key_v2_; }
  void AlgorithmKeyV2(Entity& entity) { algorithm_key_v2_->Append(entity); }
  TList<Entity>& AlgorithmDataV2() const { return *algorithm_data_v2_; }
  void AlgorithmDataV2(Entity& entity) { algorithm_data_v2_->Append(entity); }
  TList<Entity>& AlgorithmMacV2() const { return *algorithm_mac_v2_; }
  void AlgorithmMacV2(Entity& entity) { algorithm_mac_v2_->Append(entity); }
  TList<Entity>& AlgorithmCompV2() const { return *algorithm_comp_v2_; }
  void AlgorithmCompV2(Entity& entity) { algorithm_comp_v2_->Append(entity); }
  TList<Entity>& Algorithms() const { return *algorithms_; }
  void Algorithms(Entity& entity) { algorithms_->Append(entity); }
  TList<Entity>& Users() const { return *users_; }
  void Users(Entity& entity) { users_->Append(entity); }
  TList<Entity>& Times() const { return *times_; }
  void Times(Entity& entity) { times_->Append(entity); }

  // The list that holds interfaces of `type`.
  TList<Entity>& InterfaceList(int type) const;

  Address* Star() const { return star_; }
  AddressList* Localhost() const { return localhost_; }
  Address* KnownAdminAddresses() const { return known_admin_; }
  Address* UnknownAdminAddresses() const { return unknown_admin_; }
  Address* KnownGWYAddresses() const { return known_gwy_; }
  Address* UnknownGWYAddresses() const { return unknown_gwy_; }
  Address* KnownCLKAddresses() const { return known_clk_; }
  Address* UnknownCLKAddresses() const { return unknown_clk_; }
  Interface* ReverseAdminInterface() const { return reverse_admin_; }
  void ReverseAdminInterface(Interface* interface) { reverse_admin_ = interface; }
  Interface* ReverseGWYInterface() const { return reverse_gwy_; }
  void ReverseGWYInterface(Interface* interface) { reverse_gwy_ = interface; }
  // The lines of text the configuration carried without this program
  // understanding them, in their order.
  TList<char>& AlienData() const { return *alien_data_; }
  void AddAlienData(const char* text);
  int Dirty() const { return dirty_; }
  void Dirty(int dirty) { dirty_ = dirty != 0; }
  int Version() const { return version_; }
  void Version(int version) { version_ = version; }
  // Where the objects came from; not owned.
  FWFile* File() const { return file_; }
  void File(FWFile* file) { file_ = file; }

  // The list of a kind: addresses, screens, services, state engines,
  // certificates, times and keys; null for every other kind, interfaces
  // included.
  TList<Entity>* TypeToList(Config_Objects kind) const;

  // Editing operations of the administrative commands; each marks the store
  // as changed.  Create replaces an object of the same name and screen in
  // place; an interface moves to the list of its type.
  void Create(Config_Objects kind, Entity* object);
  void Delete(Config_Objects kind, Entity* object);
  // Renaming onto an existing name deletes the object that had it.
  void Rename(Config_Objects kind, const char* old_name, const char* new_name, const char* screen);
  // 224 when there is no such object, else the object's Member answer.
  int ModifyMember(Config_Objects kind, Entity* object, const char* name, int remove, int second);
  // How many objects refer to object `name` of `kind`.
  int IsReferenced(Config_Objects kind, const char* name, int print) const;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;

  // Listings on the standard output: the objects that match, in name order;
  // all objects of a kind (or those of one name) in full; each name once.
  void Search(Config_Objects kind, const char* screen, const char* name, const char* type, int exact) const;
  void Enumerate(Config_Objects kind, const char* name, const char* screen) const;
  void EnumerateName(Config_Objects kind) const;
  // Whether an object of `kind` is defined under `name` for `screen`, as a
  // definition is looked up.
  bool Holds(Config_Objects kind, const char* name, const char* screen) const;
  // The registry file: the header (with `version` when it is above 0), then
  // every object but the built-in ones as a statement that reads back,
  // section by section, and the alien lines.
  void Write(std::ostream& out, int version) const;

  // Keeps the marks of the two special IKE certificate groups ("IKE root CA
  // certificates", "IKE manually verified certificates") and of IKE
  // certificates in use up to date as certificates come and go.  Outside
  // parsing, a missing special group is added empty once IKE is in use.
  void mIKEy_add(Entity& certificate, int parsing);
  void mIKEy_del(Entity& certificate);
  int IKERootCertificates() const { return ike_special_[0]; }
  int IKETrustedCertificates() const { return ike_special_[1]; }
  int IKEInUse() const { return ike_in_use_; }
  // The labels, ISAKMP addresses and entries of the IKE files of a compile.
  IKEGenerationBag& IKEGenBag() { return ike_gen_bag_; }
  const IKEGenerationBag& IKEGenBag() const { return ike_gen_bag_; }

  // Keeps of `list` what the compiled screen sees: general objects, and the
  // objects bound to its virtual name, which replace general ones of the
  // same name.  Objects of other screens are deleted.
  void RemoveOtherScreenData(const Ferrowall& screen, TList<Entity>& list);
  // Drops what a compile added, so that the store could be compiled anew.
  void CleanUp() override;

  // Compile stages, in the order the compile runs them.
  //
  // Verify keeps the objects of `screen` and the general ones (the data of
  // other screens is gone for good), links every name, flattens the groups,
  // reads the interface addresses from the host, makes the reverse
  // interfaces and the known-address sets, and checks the whole.  Problems
  // go to `out`, a few host and screen checks to the standard error stream;
  // returns the number of errors, warnings not counted.
  int Verify(Ferrowall* screen, std::ostream& out);
  // The last interface of type HA among the routing interfaces, or null.
  Interface* LastHAInterface() const;
  // Distribution of rules to the interfaces, in list order: administrative
  // rules reach the admin interfaces and the routing interfaces that aren't
  // HA; policy rules reach the routing and stealth interfaces, and the admin
  // interfaces only when their destination is "localhost".
  void AddAdminRules(TList<Entity>& rules);
  // The two rules of a high-availability pair on the HA interface and the
  // routing reverse interface; 1 after a report on the standard error
  // stream when they can't be made, else 0.
  int AddHARules(Ferrowall& screen);
  void AddRules(OrderedEntityList& rules);
  // Hands each Ethernet rule to every stealth interface, in list order;
  // only stealth interfaces filter at the Ethernet level, so without them
  // the rules go nowhere.  A null list does nothing.
  void AddEtherRules(const TList<Entity>* rules);
  // Drops the encrypting rules that stay inside one interface, on every
  // interface that carries rules.
  void OptimizeRules();
  // The step of OptimizeRules on one interface family.
  void OptimizeRules(TList<Entity>& interfaces);
  // Sorts the sets of every compile service into state engine order.
  void OrderServicesByStateEngine();
  // Clears the used marks of services, addresses, certificates and keys, so
  // that from then on a mark means that some interface's rule needs the
  // object.
  void UnMark();
  // The objects whose marks UnMark clears that carry none now.
  std::vector<Entity*> Unmarked() const;
  // Numbers the time objects in use; 1 when more than 31 are, else 0.
  int UniqueTimes();

 private:
  void AddBuiltInObjects();
  // An empty set of the known-address kind.
  static Address* NewKnownAddress(const char* name);
  void AddStarService();
  void CreateInterface(Interface& interface);
  // The interface lists in the order the editing operations walk them, and
  // the order the listings walk them.
  std::vector<TList<Entity>*> InterfaceListsForEditing() const;
  std::vector<TList<Entity>*> InterfaceListsForListing() const;
  // The lists a listing of `kind` walks; for interfaces `type` selects.
  std::vector<TList<Entity>*> ListsToList(Config_Objects kind, const char* type) const;
  // The lists whose objects may refer to an object of `kind`.
  std::vector<TList<Entity>*> ReferringLists(Config_Objects kind) const;
  // The lists whose marks UnMark clears.
  std::vector<TList<Entity>*> MarkedLists() const;
  // Whether a listing skips this built-in object.
  static bool BuiltIn(Config_Objects kind, const Entity& entity);

  // The steps of Verify, in the order it takes them; those with a result
  // return their number of errors.
  void SelectScreenData(const Ferrowall& screen);
  void CopyServicesForCompile();
  int SetUpInterfaces(Ferrowall& screen);
  // Stops at the first interface the host doesn't have.
  int SetInterfacesAddress(TList<Entity>& list, Ferrowall& screen);
  // Localhost becomes the interface addresses of every interface.
  void SetLocalhost();
  // Gives each algorithm its number; a name without one is an error.
  int ResolveExternals(std::ostream& out);
  int ResolveReferences(std::ostream& out);
  int ResolveScreens(std::ostream& out);
  int ReduceServices(std::ostream& out);
  int DetectCycles(std::ostream& out) const;
  // Reduces the certificate groups and checks the screens' certificates.
  int ResolveMoreReferences(std::ostream& out);
  // The ADMIN_IP of every screen whose master is `screen`.
  int CheckSecondaryScreens(const Ferrowall& screen) const;
  void MakeReverseInterfaces();
  // Takes `*reverse` out of `list`, where it stands there, deletes it and
  // clears the pointer.
  static void DropReverseInterface(TList<Entity>& list, Interface** reverse);
  // Appends to a non-empty `list` the interface that stands for the screen
  // itself, and takes the screen's addresses out of the others.
  void GenerateReverseInterface(TList<Entity>& list, Interface** reverse);
  // Protected addresses of one family may meet only inside both overlaps.
  int InterfacesIntersect(TList<Entity>& list, std::ostream& out) const;
  void WarnAboutStealthInterfaces(const Ferrowall& screen, std::ostream& out) const;
  int CheckInterfaceLimits(std::ostream& out) const;
  // The addresses behind each family, and the rest of the space.
  void GenerateKnownAddresses();
  void WarnAboutUnknownStealthAddresses(std::ostream& out) const;

  TList<Entity>* addresses_;
  TList<Entity>* screens_;
  TList<Entity>* services_;
  TList<Entity>* state_engines_;
  TList<Entity>* state_engine_internals_;
  TList<Entity>* services_compile_;
  TList<Entity>* admin_interfaces_;
  TList<Entity>* disabled_interfaces_;
  TList<Entity>* gwy_interfaces_;
  TList<Entity>* clk_interfaces_;
  TList<Entity>* certificates_;
  TList<Entity>* keys_;
  TList<Entity>* algorithm_key_v1_;
  TList<Entity>* algorithm_data_v1_;
  TList<Entity>* algorithm_mac_v1_;
  TList<Entity>* algorithm_comp_v1_;
  TList<Entity>* algorithm_key_v2_;
  TList<Entity>* algorithm_data_v2_;
  TList<Entity>* algorithm_mac_v2_;
  TList<Entity>* algorithm_comp_v2_;
  TList<Entity>* algorithms_;
  TList<Entity>* users_;
  TList<Entity>* times_;
  Address* known_admin_;
  Address* unknown_admin_;
  Address* known_gwy_;
  Address* unknown_gwy_;
  Address* known_clk_;
  Address* unknown_clk_;
  Address* star_;
  AddressList* localhost_;
  TList<char>* alien_data_;
  TList<Entity>* ha_rules_;  // the rules AddHARules made, owned
  Interface* reverse_admin_ = nullptr;
  Interface* reverse_gwy_ = nullptr;
  // Whether the root and the trusted special group exist.
  int ike_special_[2] = {0, 0};
  int ike_in_use_ = 0;
  IKEGenerationBag ike_gen_bag_;
  int dirty_ = 0;
  int version_ = 0;
  FWFile* file_ = nullptr;
};

#endif
