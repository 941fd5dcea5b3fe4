// Interface is one network interface of a screen, named as the host names
// it.  It carries the address sets that the per-interface filter needs: the
// protected address (what lies behind it), the interface address (the
// interface's own addresses, read from the host) and the other address
// (what must not arrive here).  Interfaces fall into three families, admin,
// routing and stealth; each family numbers its interfaces and shares one
// set of broadcast addresses.  The interface owns all its addresses and
// never shares one with the Registry: resolving takes a private copy.
#ifndef FW_SCREEN_INTERFACE_H
#define FW_SCREEN_INTERFACE_H

#include <cstdint>
#include <ostream>

#include "model/entity.h"
#include "model/enumerations.h"

class Address;
class Ferrowall;
class Registry;
class Rule;

class Interface : public Entity {
 public:
  static constexpr uint32_t kNoUniqueId = 0xFFFFFFFFu;

  // As the configuration text gives it: the protected address and the
  // overlap (when named) start as empty addresses of those names, to be
  // filled by Resolve.
  Interface(const char* name, const char* protected_name, Interface_Type type, Log_Type log,
            SNMP_Type snmp, ICMP_Type icmp, const char* screen, const char* comment, int strict,
            const char* overlap_name);
  // A routing interface made by the compile itself; the addresses are
  // copied, and a null protected or interface address becomes an empty one
  // named after the interface.
  Interface(const char* name, const char* comment, const Address* protected_address,
            const Address* interface_address, int strict, const Address* overlap);
  ~Interface() override;

  // Marks the rules, and the protected address as used.
  void Mark() override;
  // Forgets the id and the distributed rules.
  void CleanUp() override;
  // Kind CO_ADDRESS: replaces the protected address and the overlap by
  // private copies of the registry addresses of their names.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // Kind CO_ADDRESS: the protected address; kind CO_SCREEN: the scope.
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // A type word selects by type: "ADMIN", "DISABLED", "HA", "GWY" or
  // "ROUTING", "CLK" or "STEALTH"; any other word selects nothing.
  int Match(const char* screen, const char* name, const char* type, int exact) const override;
  // The listing line: screen, name and kind; in a full line also the
  // address, completeness, overlap, options and comment.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The interface statement without its final ';'.
  std::ostream& Print(std::ostream& out) const override;

  // Reads the interface's own addresses from the host and adds its
  // broadcast values to the family's set.  `screen` serves stealth
  // interfaces only.
  virtual void SetAddresses(const Ferrowall& screen);

  // The number of this interface within its family, drawn on first demand;
  // kNoUniqueId for a disabled interface.
  uint32_t UniqueID();
  static void ResetUniqueId();

  // Recomputes the other address from the protected addresses of the other
  // members of `list`, the family this interface belongs to.
  void OtherAddress(const TList<Entity>& list);
  // The broadcast set of this interface's family.
  Address& BroadcastAddress() const;
  // Makes the three family sets anew, empty.
  static void ResetBroadcastAddresses();
  static Address& BroadcastAddressAdmin();
  static Address& BroadcastAddressGWY();
  static Address& BroadcastAddressCLK();

  // Distributes `rule` to this interface as a packet that arrives here:
  // narrows its source to what can arrive, cuts the destination into one
  // copy per exit interface of `family` (and one for `unknown`, the part
  // behind no interface of the family), and appends the copies to Rules,
  // followed by the broadcast part of the rule, if any.  Services that the
  // broadcast cut makes go to the registry's compile list.
  void Add(const Rule& rule, const Registry& registry, const TList<Entity>& family, Address& unknown);
  // Drops the encrypting rules whose traffic never leaves this interface's
  // side.
  virtual void RemoveIntraInterfaceRules();

  // The set operations of Address between the protected address and the
  // argument.  An Intersection result is the caller's only when it is
  // neither operand.
  bool Intersects(const Interface& other) const;
  bool Intersects(const Address& address) const;
  Address* Intersection(Address& address);
  bool Equal(const Address& address) const;

  // The words of the configuration text for the three options, each with
  // the blank that follows it.
  static std::ostream& PrintLog(std::ostream& out, Log_Type log);
  static std::ostream& PrintSNMP(std::ostream& out, SNMP_Type snmp);
  static std::ostream& PrintICMP(std::ostream& out, ICMP_Type icmp);

  Interface_Type Type() const { return type_; }
  Log_Type Log() const { return log_; }
  SNMP_Type SNMP() const { return snmp_; }
  ICMP_Type ICMP() const { return icmp_; }
  int Strict() const { return strict_; }
  Address* ProtectedAddress() const { return protected_; }
  Address* InterfaceAddress() const { return interface_; }
  Address* OtherAddress() const { return other_; }
  Address* Overlap() const { return overlap_; }
  TList<Entity>& Rules() const { return *rules_; }

 protected:
  // [SCREEN "screen" ] "name" and the kind word of listings.
  std::ostream& EnumerateHead(std::ostream& out, Enumerate_Type type) const;
  // The address, COMPLETE or INCOMPLETE, the overlap and the options.
  std::ostream& EnumerateDetails(std::ostream& out) const;
  // [ COMMENT "comment"]
  std::ostream& EnumerateComment(std::ostream& out) const;
  // "name" INTERFACE kind "address" of a statement.
  std::ostream& PrintHead(std::ostream& out, const char* kind) const;
  // The three options of a statement, tab-separated.
  std::ostream& PrintOptions(std::ostream& out) const;
  // The screen and comment clauses of a statement.
  std::ostream& PrintTail(std::ostream& out) const;

  // The removal of RemoveIntraInterfaceRules, on one rule list.
  void RemoveIntraInterfaceRules(TList<Entity>& rules);

  // A new empty interface address, the old one deleted.
  void ResetInterfaceAddress();
  // Adds one address, or the multicast block 224.0.0.0-239.255.255.255.
  static void IncludeHost(Address& address, uint32_t value);
  static void IncludeMulticast(Address& address);

 private:
  // Replaces `*address` by a copy of the registry address of its name; 1
  // when there is none.
  int ResolveAddress(Address** address, TList<Entity>& list, std::ostream& out);
  // The other members' addresses that this interface treats as foreign.
  void IncludeOthers(const TList<Entity>& list, Address& other, Address& shared_hosts) const;
  bool TypeWordMatches(const char* word) const;
  void AddInternal(const Rule& rule, const Registry& registry, const TList<Entity>& family, Address& unknown);
  // The source of `rule` as it can arrive here; false when nothing can.
  bool NarrowSource(Rule& rule) const;
  void AddPlainPieces(Rule& plain, const Rule& copy, const Registry& registry,
                      const TList<Entity>& family, Address& unknown);
  void AddBroadcast(Rule& broadcast, const Rule& original, const Rule& copy, const Registry& registry,
                    const TList<Entity>& family, Address& unknown);
  void DeleteRules();

  uint32_t unique_id_ = kNoUniqueId;
  Interface_Type type_;
  Log_Type log_;
  SNMP_Type snmp_;
  ICMP_Type icmp_;
  int strict_;
  Address* protected_;
  Address* interface_;
  Address* other_;
  Address* overlap_;
  TList<Entity>* rules_;
};

#endif
