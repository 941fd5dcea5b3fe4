#include "output/rule_writer.h"

#include <utility>

#include "crypto/security_parameters.h"
#include "model/address.h"
#include "model/time.h"
#include "output/address_writer.h"
#include "output/service_writer.h"
#include "policy/rule.h"
#include "services/service.h"

void RuleWriter::GenerateOutput(std::ostream& table, std::ostream& program, Rule& rule) {
  AddressWriter::GenerateOutput(table, rule.Source());
  AddressWriter::GenerateOutput(table, rule.Destination());
  ActionLine(table, rule);
  if (rule.Action() == ACTION_ALLOW) TunnelLines(table, rule);
  Comments(program, rule);
  Time* time = rule.TimeResolved();
  if (time != nullptr) program << "if (time_check(" << time->UniqueId() << ")) {\n";
  program << "\tif (match(IP_dstaddr, addr_" << rule.Destination().UniqueID() << ")) {\n";
  program << "\t\tif (match(IP_srcaddr, addr_" << rule.Source().UniqueID() << ")) {\n";
  if (rule.SvcResolved() != nullptr)
    ServiceWriter::GenerateOutput(table, program, *rule.SvcResolved(), ActionCode(rule),
                                  rule.UniqueID(), OutputInterfaceData(rule));
  program << "\t\t}\n\t}\n";
  if (time != nullptr) program << "}\n";
}

void RuleWriter::GenerateEtherOutput(std::ostream& table, Rule& rule) {
  if (rule.SvcResolved() != nullptr)
    ServiceWriter::GenerateEtherOutput(table, *rule.SvcResolved(), OutputInterfaceData(rule));
}

uint32_t RuleWriter::OutputInterfaceData(const Rule& rule) {
  const std::vector<int>& ids = rule.Interfaces();
  if (ids.size() == 1) return static_cast<uint32_t>(ids.front());
  const uint32_t kSeveralInterfaces = 0x800000;
  uint32_t word = kSeveralInterfaces;
  for (int id : ids) word |= 1u << (static_cast<uint32_t>(id) % 32);
  return word;
}

int RuleWriter::ActionCode(const Rule& rule) {
  if (rule.Action() != ACTION_ALLOW) return 0;
  const SecurityParameters* parameters = rule.SecurityParameter();
  if (parameters == nullptr) parameters = rule.DecryptionParameters();
  if (parameters == nullptr) parameters = rule.EncryptionParameters();
  if (parameters == nullptr) return 1;
  return parameters->Type() == IPSEC_SKIP ? 2 : 3;
}

std::ostream& RuleWriter::ActionLine(std::ostream& table, Rule& rule) {
  int flags = (rule.SNMPValue() == SNMP_TRAP ? 1 : 0) + (rule.HAValue() ? 2 : 0);
  table << "ACTION\tPolicy_" << rule.UniqueID() << '\t' << rule.Log() << '\t' << flags << '\t';
  if (rule.Action() != ACTION_ALLOW) return table << "FAIL\t" << rule.ICMPValue() << '\n';
  SecurityParameters* decryption = rule.DecryptionParameters();
  SecurityParameters* encryption = rule.EncryptionParameters();
  if (decryption != nullptr) decryption->GenerateOutput(table, encryption, rule.IKE_RuleNum());
  else if (encryption != nullptr) encryption->GenerateOutput(table, nullptr, rule.IKE_RuleNum());
  else table << "NORMAL";
  return table << '\n';
}

// The proxy line stands for the tunnel end on this screen's side: the
// destination tunnel of a decrypting block, the source tunnel of an
// encrypting one.
void RuleWriter::TunnelLines(std::ostream& table, const Rule& rule) {
  for (auto [parameters, decrypting] : {std::pair{rule.DecryptionParameters(), true},
                                        std::pair{rule.EncryptionParameters(), false}}) {
    if (parameters == nullptr) continue;
    if (Address* source = parameters->SourceTunnelResolved()) {
      AddressWriter::GenerateOutput(table, *source);
      if (!decrypting) ProxyLine(table, *source);
    }
    if (Address* destination = parameters->DestinationTunnelResolved()) {
      AddressWriter::GenerateOutput(table, *destination);
      if (decrypting) ProxyLine(table, *destination);
    }
    parameters->DumpKeys(table);
  }
}

std::ostream& RuleWriter::ProxyLine(std::ostream& table, const Address& tunnel) {
  table << "PROXY RANGE_LIST\t\"" << tunnel.Name() << "\" ";
  return AddressWriter::RangesTabbed(table, tunnel) << '\n';
}

std::ostream& RuleWriter::Comments(std::ostream& program, const Rule& rule) {
  rule.Print(program << "/*") << "*/\n";
  program << "/* Output:";
  for (int id : rule.Interfaces()) program << id << ' ';
  program << "*/\n";
  RangeComment(program, "/* Source: ", rule.Source().Ranges());
  return RangeComment(program, "/* Destination: ", rule.Destination().Ranges());
}

std::ostream& RuleWriter::RangeComment(std::ostream& program, const char* head,
                                       const TList<Range>& ranges) {
  program << head;
  for (TList_Cell<Range>* cell = ranges.Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->Print(program) << ' ';
  return program << "*/\n";
}
