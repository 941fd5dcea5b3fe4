// ServiceWriter writes what services and their parameter sets contribute
// to the generated files: the entries of the Services table, the value and
// parameter lines of the interface tables with the engine calls of the
// filter programs, the Ethernet entries of stealth tables and the list of
// engine sources.
//
// The lines of a service go to an interface table once: the service's used
// mark says they are there, so the mark must be clear at the start of each
// table (Registry::UnMark).
#ifndef FW_OUTPUT_SERVICE_WRITER_H
#define FW_OUTPUT_SERVICE_WRITER_H

#include <cstdint>
#include <ostream>

class Filter;
class FilterParams;
class Registry;
class Service;
class StateEngineInternal;

class ServiceWriter {
 public:
  // The Services table: every service of the registry list in order.
  static std::ostream& GenerateServicesFile(std::ostream& out, const Registry& registry);
  // Service::GenerateServicesFile: quoted name, then the count and lines of
  // the written forward filters, or of the members of a group.
  static std::ostream& GenerateServicesFile(std::ostream& out, const Service& service);
  // Filter::GenerateServicesFile: quoted engine name, a tab, each
  // discriminator range followed by a blank.
  static std::ostream& GenerateServicesFile(std::ostream& out, const Filter& filter);
  // Service::GenerateOutput: for each parameter set of the service, its
  // table lines (first use in this table only) and its engine call in the
  // rule's block of the program; afterwards the service is marked used.
  static void GenerateOutput(std::ostream& table, std::ostream& program, Service& service,
                             int action_code, int rule_id, uint32_t interface_word);
  // FilterParams::GenerateOutput: one parameter set; `written` says its
  // table lines are already there.
  static void GenerateOutput(std::ostream& table, std::ostream& program, FilterParams& params,
                             int action_code, int rule_id, uint32_t interface_word, bool written);
  // Service::GenerateEtherOutput: the Ethernet entry of each parameter set.
  static void GenerateEtherOutput(std::ostream& table, Service& service, uint32_t interface_word);
  // FilterParams::GenerateEtherOutput: "ETHER_ENTRY\t0x<word>\tRANGE_LIST\tsvc_<n>"
  // and the value ranges.
  static std::ostream& GenerateEtherOutput(std::ostream& table, FilterParams& params,
                                           uint32_t interface_word);
  // StateEngineInternal::GenerateOutput: "STATE_ENGINE\t<name>\t<id>".
  static std::ostream& GenerateOutput(std::ostream& table, const StateEngineInternal& engine);
  // The state_engines.h file: the include lines of each engine's forward
  // and reverse routine sources, for the engines that have them.
  static std::ostream& GenerateStateEnginesHeader(std::ostream& out, const Registry& registry);

 private:
  // Each value range as "\t<start> - <end>", plain numbers.
  static std::ostream& PlainRanges(std::ostream& out, const FilterParams& params);
  // The engine call of the program, or nothing when the engine has no
  // routine for the set's direction.
  static std::ostream& EngineCall(std::ostream& program, FilterParams& params, int action_code,
                                  int rule_id, uint32_t interface_word);
};

#endif
