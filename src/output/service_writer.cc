#include "output/service_writer.h"

#include "model/registry.h"
#include "services/filter.h"
#include "services/filter_params.h"
#include "services/service.h"
#include "services/state_engine.h"
#include "services/state_engine_internal.h"

std::ostream& ServiceWriter::GenerateServicesFile(std::ostream& out, const Registry& registry) {
  for (TList_Cell<Entity>* cell = registry.Services().Head(); cell != nullptr; cell = cell->Next())
    GenerateServicesFile(out, *static_cast<Service*>(cell->Data()));
  return out;
}

std::ostream& ServiceWriter::GenerateServicesFile(std::ostream& out, const Service& service) {
  out << '"' << service.Name() << "\"\n";
  if (service.Type() == SERVICE_GROUP) {
    const TList<Entity>* members = service.InputServices();
    if (members == nullptr) return out << "0\n";
    out << members->Length() << '\n';
    for (TList_Cell<Entity>* cell = members->Head(); cell != nullptr; cell = cell->Next())
      out << '"' << cell->Data()->Name() << "\"\n";
    return out;
  }
  const TList<Filter>* filters = service.InputFilters();
  if (filters == nullptr) return out << "0\n";
  out << filters->Length() << '\n';
  for (TList_Cell<Filter>* cell = filters->Head(); cell != nullptr; cell = cell->Next())
    GenerateServicesFile(out, *cell->Data());
  return out;
}

std::ostream& ServiceWriter::GenerateServicesFile(std::ostream& out, const Filter& filter) {
  out << '"' << filter.EngineName() << "\"\t";
  for (TList_Cell<Discriminator>* cell = filter.Discriminators().Head(); cell != nullptr;
       cell = cell->Next())
    cell->Data()->range().Enumerate(out) << ' ';
  return out << '\n';
}

void ServiceWriter::GenerateOutput(std::ostream& table, std::ostream& program, Service& service,
                                   int action_code, int rule_id, uint32_t interface_word) {
  for (TList_Cell<FilterParams>* cell = service.Filters().Head(); cell != nullptr; cell = cell->Next())
    GenerateOutput(table, program, *cell->Data(), action_code, rule_id, interface_word,
                   service.Used() != 0);
  service.Used(1);
}

void ServiceWriter::GenerateOutput(std::ostream& table, std::ostream& program, FilterParams& params,
                                   int action_code, int rule_id, uint32_t interface_word,
                                   bool written) {
  if (!written) {
    PlainRanges(table << "RANGE_LIST\tsvc_" << params.UniqueID(), params) << '\n';
    table << "STATE_ENGINE_PARAMS\tFilter_" << params.UniqueID();
    for (TList_Cell<int>* cell = params.Params().Head(); cell != nullptr; cell = cell->Next())
      table << '\t' << *cell->Data();
    table << '\n';
  }
  EngineCall(program, params, action_code, rule_id, interface_word);
}

std::ostream& ServiceWriter::EngineCall(std::ostream& program, FilterParams& params, int action_code,
                                        int rule_id, uint32_t interface_word) {
  const StateEngine& engine = *params.stateEngine();
  bool forward = params.Direction() == FD_FORWARD;
  if (!(forward ? engine.Forward() : engine.Reverse())) return program;
  const StateEngineInternal* internal = engine.Internal();
  program << "\t\t\t" << engine.Name() << (forward ? "_fwd(svc_" : "_rev(svc_") << params.UniqueID()
          << ", " << (internal != nullptr ? internal->UniqueID() : -1) << ", " << action_code
          << ", Filter_" << params.UniqueID() << ", Policy_" << rule_id << ", 0x" << std::hex
          << interface_word << std::dec << ")\n";
  return program;
}

void ServiceWriter::GenerateEtherOutput(std::ostream& table, Service& service,
                                        uint32_t interface_word) {
  for (TList_Cell<FilterParams>* cell = service.Filters().Head(); cell != nullptr; cell = cell->Next())
    GenerateEtherOutput(table, *cell->Data(), interface_word);
}

std::ostream& ServiceWriter::GenerateEtherOutput(std::ostream& table, FilterParams& params,
                                                 uint32_t interface_word) {
  table << "ETHER_ENTRY\t0x" << std::hex << interface_word << std::dec << "\tRANGE_LIST\tsvc_"
        << params.UniqueID();
  return PlainRanges(table, params) << '\n';
}

std::ostream& ServiceWriter::GenerateOutput(std::ostream& table, const StateEngineInternal& engine) {
  return table << "STATE_ENGINE\t" << engine.Name() << '\t' << engine.UniqueID() << '\n';
}

std::ostream& ServiceWriter::GenerateStateEnginesHeader(std::ostream& out, const Registry& registry) {
  for (TList_Cell<Entity>* cell = registry.StateEngines().Head(); cell != nullptr; cell = cell->Next()) {
    const StateEngine& engine = *static_cast<StateEngine*>(cell->Data());
    if (engine.Forward()) out << "#include \"" << engine.Name() << ".fwd\"\n";
    if (engine.Reverse()) out << "#include \"" << engine.Name() << ".rev\"\n";
  }
  return out;
}

std::ostream& ServiceWriter::PlainRanges(std::ostream& out, const FilterParams& params) {
  for (TList_Cell<Range>* cell = params.Ranges().Head(); cell != nullptr; cell = cell->Next())
    out << '\t' << cell->Data()->Start() << " - " << cell->Data()->End();
  return out;
}
