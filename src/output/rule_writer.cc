#include "output/rule_writer.h"

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
  const TList<int>& ids = rule.Interfaces();
  if (ids.Head() != nullptr && ids.Head() == ids.Tail()) return static_cast<uint32_t>(*ids.Head()->Data());
  const uint32_t kSeveralInterfaces = 0x800000;
  uint32_t word = kSeveralInterfaces;
  for (TList_Cell<int>* cell = ids.Head(); cell != nullptr; cell = cell->Next())
    word |= 1u << (static_cast<uint32_t>(*cell->Data()) % 32);
  return word;
}

int RuleWriter::ActionCode(const Rule& rule) { return rule.Action() == ACTION_ALLOW ? 1 : 0; }

std::ostream& RuleWriter::ActionLine(std::ostream& table, Rule& rule) {
  int flags = (rule.SNMPValue() == SNMP_TRAP ? 1 : 0) + (rule.HAValue() ? 2 : 0);
  table << "ACTION\tPolicy_" << rule.UniqueID() << '\t' << rule.Log() << '\t' << flags << '\t';
  if (rule.Action() == ACTION_ALLOW) return table << "NORMAL\n";
  return table << "FAIL\t" << rule.ICMPValue() << '\n';
}

std::ostream& RuleWriter::Comments(std::ostream& program, const Rule& rule) {
  rule.Print(program << "/*") << "*/\n";
  program << "/* Output:";
  for (TList_Cell<int>* cell = rule.Interfaces().Head(); cell != nullptr; cell = cell->Next())
    program << *cell->Data() << ' ';
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
