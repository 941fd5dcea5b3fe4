// IKEWriter writes what the IKE daemon of the screen reads: "ike/config",
// one entry for each interface copy of an IKE rule, and
// "secret/ike.preshared", the pre-shared keys of those entries.  Before the
// interface tables are written it labels the copies, since each table's
// action line names its entry by label.
//
// The rules come from three lists, in this order: the screen's
// administrative rules, the policy's administrative rules and the policy's
// rules.  A copy belongs to the rule of those lists that is its Origin.
#ifndef FW_OUTPUT_IKE_WRITER_H
#define FW_OUTPUT_IKE_WRITER_H

#include <ostream>
#include <vector>

#include "model/t_list.h"

class Entity;
class Ferrowall;
class Interface;
class Registry;
class Rule;
struct IKEBagEnd;

class IKEWriter {
 public:
  using RuleLists = std::vector<TList<Entity>*>;

  // Policy::PrepareForOutput: labels every interface copy of an IKE rule
  // and gathers the ISAKMP addresses.  A copy labelled out of order shows
  // when its entry is written.
  static void PrepareForOutput(const Ferrowall& screen, Registry& registry, const RuleLists& lists);
  // The directories "ike" and "secret" and their two files, when some rule
  // was labelled.  0, or the status of the first failure, which is also
  // reported on stderr or in the files: 237 when a directory or file can't
  // be made, 215 and 216 for the log settings, 217 for an entry that can't
  // be written; 218 and 221 for a key entry, in which case the secret file
  // is still ended and the caller goes on.
  static int GenerateIKEFiles(const Ferrowall& screen, Registry& registry, const RuleLists& lists);
  // Whether a status of GenerateIKEFiles leaves the IKE files unfinished, so
  // that no further file may be written.
  static bool StopsOutput(int status);

 private:
  // Policy::GenerateIKERules for the three lists, then the end mark.
  static int GenerateConfig(std::ostream& out, const Ferrowall& screen, Registry& registry, const RuleLists& lists);
  // A hand-written ike/config of the etc directory, copied in whole.
  static void GenerateInclusion(std::ostream& out);
  // The root and the trusted certificate groups, when they exist.
  static void GenerateSpecialCertificates(std::ostream& out, const Ferrowall& screen, const Registry& registry);
  // Interface::GenerateIKERules: the entries of one interface's copies of
  // `base`; `*status` keeps the first failure.
  static void GenerateInterfaceRules(std::ostream& out, const Rule& base, const Interface& interface,
                                     bool reverse, Registry& registry, int* status);
  // One copy's entry, or the comment that stands in its place.
  static int GenerateEntry(std::ostream& out, const Rule& copy, Registry& registry);
  static void WriteEntry(std::ostream& out, const Rule& copy, const IKEBagEnd& local, const IKEBagEnd& remote,
                         bool pre_shared);
};

#endif
