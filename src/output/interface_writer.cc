#include "output/interface_writer.h"

#include <sstream>

#include "crypto/certificate.h"
#include "crypto/skip_parameter.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/registry.h"
#include "output/address_writer.h"
#include "output/output_file.h"
#include "output/rule_writer.h"
#include "output/service_writer.h"
#include "policy/rule.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "screen/interface_clk.h"
#include "services/service.h"
#include "services/state_engine_internal.h"

namespace {

const char* type_word(Interface_Type type) {
  switch (type) {
    case INTERFACE_ADMIN: return "ADMIN";
    case INTERFACE_GWY: return "GWY";
    case INTERFACE_HA: return "HA";
    case INTERFACE_CLK: return "CLK";
    default: return "DISABLED";
  }
}

const char* log_word(Log_Type log) {
  switch (log) {
    case LOG_SUMMARY: return " LOG_SUMMARY";
    case LOG_DETAIL: return " LOG_DETAIL";
    default: return " LOG_NONE";
  }
}

const char* icmp_word(ICMP_Type icmp) {
  switch (icmp) {
    case ICMP_NET_UNREACHABLE: return " ICMP_NET_UNREACHABLE";
    case ICMP_HOST_UNREACHABLE: return " ICMP_HOST_UNREACHABLE";
    case ICMP_PORT_UNREACHABLE: return " ICMP_PORT_UNREACHABLE";
    case ICMP_NET_FORBIDDEN: return " ICMP_NET_FORBIDDEN";
    case ICMP_HOST_FORBIDDEN: return " ICMP_HOST_FORBIDDEN";
    default: return " ICMP_NONE";
  }
}

}  // namespace

void InterfaceWriter::GenerateOutput(std::ostream& interface_in, Interface& interface,
                                     Registry& registry, const TList<Entity>& list,
                                     const Ferrowall& screen) {
  if (InterfaceCLK* stealth = dynamic_cast<InterfaceCLK*>(&interface)) {
    GenerateStealthOutput(interface_in, *stealth, registry, list, screen);
    return;
  }
  GenerateInterfaceIn(interface_in, interface);
  registry.UnMark();
  if (interface.Type() == INTERFACE_DISABLED) return;
  OutputFile table(FileName(interface, false, ".data"));
  GenerateDataFile(table, interface, list, registry, nullptr);
  table << "LOCALHOST\n";
  WriteProgram(table, interface);
}

// Every id a body names was drawn when the body was first written, and
// each table starts from cleared marks: a copy writes the same bytes, and
// leaves the marks a writing would have left.
void InterfaceWriter::GenerateReverseOutput(Interface& reverse, Interface& reverse_of, Registry& registry,
                                            const TList<Entity>& list, ReverseBody& body) {
  registry.UnMark();
  OutputFile table(FileName(reverse, true, ".data"));
  GenerateDataFile(table, reverse, list, registry, &reverse_of);
  table << "LOCALHOST\n";
  OutputFile program(FileName(reverse, true, ".pfl"));
  GeneratePFLHead(program, reverse, true);
  if (!body.made) MakeReverseBody(reverse, registry, body);
  table << body.table;
  program << body.program;
  for (Entity* object : body.marked) object->Used(1);
}

void InterfaceWriter::MakeReverseBody(const Interface& reverse, const Registry& registry, ReverseBody& body) {
  std::vector<Entity*> unmarked = registry.Unmarked();
  std::ostringstream table;
  std::ostringstream program;
  GeneratePFLBody(table, program, reverse);
  body.table = table.str();
  body.program = program.str();
  for (Entity* object : unmarked)
    if (object->Used()) body.marked.push_back(object);
  body.made = true;
}

void InterfaceWriter::GenerateStealthOutput(std::ostream& interface_in, InterfaceCLK& interface,
                                            Registry& registry, const TList<Entity>& list,
                                            const Ferrowall& screen) {
  GenerateInterfaceIn(interface_in, interface);
  registry.UnMark();
  OutputFile table(FileName(interface, false, ".data"));
  GenerateDataFile(table, interface, list, registry, nullptr);
  if (const Range* network = screen.CLKNetwork()) {
    table << "ADDRESS\t" << dotted_address(network->Start()) << '\n';
    table << "NETMASK\t" << dotted_address(~(network->Start() ^ network->End())) << '\n';
  }
  if (const TList<unsigned>* routers = interface.Routers())
    for (TList_Cell<unsigned>* cell = routers->Head(); cell != nullptr; cell = cell->Next())
      table << "ROUTER\t" << dotted_address(*cell->Data()) << '\n';
  table << "LOCALHOST\t";
  if (registry.Localhost() != nullptr) AddressWriter::RangesTabbed(table, *registry.Localhost());
  table << '\n';
  WriteProgram(table, interface);
  GenerateEtherOutput(table, interface.EtherRules());
}

void InterfaceWriter::WriteProgram(std::ostream& table, const Interface& interface) {
  OutputFile program(FileName(interface, false, ".pfl"));
  GeneratePFLFile(table, program, interface);
}

void InterfaceWriter::GenerateDataFile(std::ostream& table, Interface& interface,
                                       const TList<Entity>& list, const Registry& registry,
                                       Interface* reverse_of) {
  table << "#include \"SKIP_V1_TABLE\"\n#include \"Input.nat\"\n";
  AddressEntry(table, "THIS_INTERFACE", *interface.ProtectedAddress());
  if (reverse_of != nullptr)
    AddressEntry(table, "OTHER_INTERFACES", *reverse_of->ProtectedAddress());
  else if (interface.OtherAddress() != nullptr)
    AddressEntry(table, "OTHER_INTERFACES", *interface.OtherAddress());
  // Each table names the servers by an address of its own.
  if (const Address* isakmp = registry.IKEGenBag().ISAKMPAddress()) {
    Address servers(*isakmp);
    AddressEntry(table, "ISAKMPSERVERS", servers);
  }
  for (TList_Cell<Entity>* cell = list.Head(); cell != nullptr; cell = cell->Next()) {
    Interface& member = *static_cast<Interface*>(cell->Data());
    InterfaceRow(table, member, reverse_of != nullptr && &member == &interface);
  }
  for (TList_Cell<Entity>* cell = registry.StateEngineInternals().Head(); cell != nullptr;
       cell = cell->Next())
    ServiceWriter::GenerateOutput(table, *static_cast<StateEngineInternal*>(cell->Data()));
}

void InterfaceWriter::AddressEntry(std::ostream& table, const char* head, Address& address) {
  table << head << "\taddr_" << address.UniqueID() << '\n';
  AddressWriter::GenerateOutput(table, address);
}

void InterfaceWriter::InterfaceRow(std::ostream& table, Interface& member, bool own_reverse_row) {
  if (own_reverse_row) table << "INTERFACE\tFerrowall\t";
  else table << "INTERFACE\t\"" << member.Name() << "\"\t";
  table << member.UniqueID() << "\tRANGE_LIST\t";
  AddressWriter::RangesTabbed(table, *member.ProtectedAddress()) << '\n';
}

void InterfaceWriter::GeneratePFLFile(std::ostream& table, std::ostream& program,
                                      const Interface& interface) {
  GeneratePFLHead(program, interface, false);
  GeneratePFLBody(table, program, interface);
}

void InterfaceWriter::GeneratePFLHead(std::ostream& program, const Interface& interface, bool reverse) {
  program << "#include \"pfldefs.h\"\n#include \"state_engines.h\"\n#include \""
          << FileName(interface, reverse, ".data") << ".defs\"\nscreen()\n{\n\n";
}

void InterfaceWriter::GeneratePFLBody(std::ostream& table, std::ostream& program, const Interface& interface) {
  for (TList_Cell<Entity>* cell = interface.Rules().Head(); cell != nullptr; cell = cell->Next())
    RuleWriter::GenerateOutput(table, program, *static_cast<Rule*>(cell->Data()));
  program << "\t(void) default_fail();\n\thalt;\n}\n";
}

// Version 1 blocks are refused while they are resolved, so after a
// successful verification no rule has a pair to list; the file exists
// because every table includes it.
void InterfaceWriter::GenerateSkipV1Table(std::ostream& out, const Interface& interface) {
  for (TList_Cell<Entity>* cell = interface.Rules().Head(); cell != nullptr; cell = cell->Next()) {
    const Rule& rule = *static_cast<const Rule*>(cell->Data());
    for (const SecurityParameters* block : {rule.DecryptionParameters(), rule.EncryptionParameters()}) {
      const SkipParameter* skip = dynamic_cast<const SkipParameter*>(block);
      if (skip == nullptr || skip->Version() != SKIP_V1 || skip->SourceCertificateResolved() == nullptr ||
          skip->DestinationCertificateResolved() == nullptr)
        continue;
      skip->SourceCertificateResolved()->EmitData(out << "SKIP_V1_PAIR\t") << ' ';
      skip->DestinationCertificateResolved()->EmitData(out) << '\n';
    }
  }
}

std::ostream& InterfaceWriter::GenerateInterfaceIn(std::ostream& out, const Interface& interface) {
  out << '"' << interface.Name() << "\" INTERFACE " << type_word(interface.Type()) << " \""
      << interface.ProtectedAddress()->Name() << '"';
  if (interface.Type() == INTERFACE_DISABLED) return out << ";\n";
  return out << log_word(interface.Log()) << (interface.SNMP() == SNMP_TRAP ? " SNMP" : " SNMP_NONE")
             << icmp_word(interface.ICMP()) << " ;\n";
}

// Ether rules never carry security parameters, so a rule whose service has
// a broadcast set is never written here.
void InterfaceWriter::GenerateEtherOutput(std::ostream& table, const TList<Entity>& rules) {
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next()) {
    Rule& rule = *static_cast<Rule*>(cell->Data());
    if (rule.SvcResolved() != nullptr && rule.SvcResolved()->Broadcast()) continue;
    RuleWriter::GenerateEtherOutput(table, rule);
  }
}

std::string InterfaceWriter::FileName(const Interface& interface, bool reverse, const char* ending) {
  return std::string(interface.Name()) + (reverse ? ".rev" : "") + ending;
}
