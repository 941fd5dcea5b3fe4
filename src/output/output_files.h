// OutputFiles writes the whole generated file set of a compile into the
// current directory, in the order the loader of the product expects to find
// them made: Input.nat; the screen's settings files; the Time, Addresses
// and Services tables; the interfaces' files with SKIP_V1_TABLE and
// Interface.in; CertificateGroups; the IKE files; Remote.Access.  It runs after the rules
// are distributed to the interfaces and the time objects numbered.
//
// A file that can't be created, written or closed is reported, and the
// compile ends with 237 ("Could not write file") once the whole set was
// tried, so that every lost file is named.  The IKE files have statuses
// of their own, since the key daemon would run with a stale configuration.
#ifndef FW_OUTPUT_OUTPUT_FILES_H
#define FW_OUTPUT_OUTPUT_FILES_H

#include <ostream>
#include <vector>

#include "model/t_list.h"

class Entity;
class Ferrowall;
class Interface;
class Policy;
class Registry;

class OutputFiles {
 public:
  // The three output steps of the compile in their order; returns the
  // result of the compile, 237 when a file of the compile was lost.
  // `screen_admin_rules` and `policy_admin_rules` are the administrative
  // rules the distribution used.
  static int Generate(Ferrowall& screen, Policy& policy, Registry& registry, TList<Entity>* screen_admin_rules,
                      TList<Entity>* policy_admin_rules);
  // Policy::GenerateOutput: Input.nat.
  static void GeneratePolicyOutput(Policy& policy);
  // Registry::GenerateOutput: from Screen to CertificateGroups, with the
  // IKE rules labelled before the interface files.  Warnings go to
  // `warnings`.
  static void GenerateRegistryOutput(Ferrowall& screen, Registry& registry, const std::vector<TList<Entity>*>& rules,
                                     std::ostream& warnings);
  // Policy::GenerateMoreOutput: the IKE files, then Remote.Access; returns
  // the status of the IKE files.  After a failure other than one of a
  // pre-shared key entry, Remote.Access isn't written.
  static int GenerateMoreOutput(Ferrowall& screen, const Policy& policy, Registry& registry,
                                const std::vector<TList<Entity>*>& rules);
 private:
  static void GenerateScreenFiles(const Ferrowall& screen, const Registry& registry,
                                  std::ostream& warnings);
  static void GenerateObjectTables(const Registry& registry);
  // The interface pass: each family in turn, then the disabled interfaces.
  static void GenerateInterfaces(Ferrowall& screen, Registry& registry);
  // One family.  Its reverse interface, if any, is written after each real
  // member under that member's name; `skip_v1` gets every member's part.
  static void GenerateFamily(std::ostream& skip_v1, std::ostream& interface_in, TList<Entity>& list,
                             Interface* reverse, Ferrowall& screen, Registry& registry);
  static void GenerateCertificateGroups(const Registry& registry);
};

#endif
