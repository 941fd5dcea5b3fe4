// InterfaceCLK is a stealth interface: the screen bridges on that side and
// has no address of its own there but the one of its stealth network.  It
// is always strict and has no overlap.  Besides the base's rules it keeps
// the rules at the Ethernet level, and the routers the statement lists.
#ifndef FW_SCREEN_INTERFACE_CLK_H
#define FW_SCREEN_INTERFACE_CLK_H

#include "screen/interface.h"

class InterfaceCLK : public Interface {
 public:
  // Takes `routers` (addresses in host byte order; null for none).
  InterfaceCLK(const char* name, const char* protected_name, Log_Type log, SNMP_Type snmp,
               ICMP_Type icmp, TList<unsigned>* routers, const char* screen, const char* comment);
  ~InterfaceCLK() override;

  // As the base, and the Ethernet rules as well.
  void Mark() override;
  void CleanUp() override;
  // The interface address and the stealth broadcast set come from the
  // screen's stealth network; the host isn't asked.
  void SetAddresses(const Ferrowall& screen) override;
  // As the base, and on the Ethernet rules as well.
  void RemoveIntraInterfaceRules() override;
  // Takes an Ethernet rule in when its source is this interface's side:
  // a copy, with the protected address as its source, goes to the Ethernet
  // rules, tagged with the members of `family` its destination names or
  // touches ("*" tags them all, this one too).  Ethernet rules are never
  // cut by destination.
  void AddEther(const Rule& rule, const Registry& registry, const TList<Entity>& family);
  // As the base, with the routers before the comment.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

  const TList<unsigned>* Routers() const { return routers_; }
  TList<Entity>& EtherRules() const { return *ether_rules_; }

 private:
  void DeleteEtherRules();
  bool TakesEther(const Rule& rule) const;
  // Tags `rule` with the ids of the members of `family` that its
  // destination is meant for.
  static void TagEtherExits(Rule& rule, const Registry& registry, const TList<Entity>& family);
  // Each router dotted, behind `word` (which may be empty) and followed by
  // a blank.
  std::ostream& PrintRouters(std::ostream& out, const char* word) const;

  TList<unsigned>* routers_;
  TList<Entity>* ether_rules_;
};

#endif
