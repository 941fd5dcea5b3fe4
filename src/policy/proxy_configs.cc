#include "policy/proxy_configs.h"

#include <memory>

#include "model/address.h"
#include "model/time.h"
#include "model/user.h"
#include "output/output_file.h"
#include "policy/proxy_data.h"
#include "policy/rule.h"

namespace {

const int kProxyTypes = 4;
// By Proxy_Type.
const char* const kFiles[kProxyTypes] = {"ftpp.conf", "httpp.conf", "smtpp.conf", "telnetp.conf"};
const int kPorts[kProxyTypes] = {21, 80, 25, 23};

const Rule& rule_of(const TList_Cell<Entity>* cell) { return *static_cast<const Rule*>(cell->Data()); }

}  // namespace

void ProxyConfigs::Write(const TList<Entity>& rules) {
  int counts[kProxyTypes] = {};
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next())
    if (const ProxyData* proxy = rule_of(cell).Proxy()) ++counts[proxy->Type()];
  std::unique_ptr<OutputFile> files[kProxyTypes];
  for (int type = 0; type < kProxyTypes; ++type) {
    files[type].reset(new OutputFile(kFiles[type]));
    if (counts[type] > 0) *files[type] << kPorts[type] << '\n' << counts[type] << '\n';
  }
  for (TList_Cell<Entity>* cell = rules.Head(); cell != nullptr; cell = cell->Next())
    if (const ProxyData* proxy = rule_of(cell).Proxy()) WriteRecord(*files[proxy->Type()], rule_of(cell));
}

void ProxyConfigs::WriteRecord(std::ostream& out, const Rule& rule) {
  Time* time = rule.TimeResolved();
  out << (time != nullptr ? time->UniqueId() : 0) << '\n' << rule.Log() << '\n';
  out << rule.Source().Ranges().Length() << '\n' << rule.Destination().Ranges().Length() << '\n';
  rule.Source().DumpRanges(out, "", 0);
  rule.Destination().DumpRanges(out, "", 0);
  Verdict(out, rule) << '\n';
  // The SMTP proxy serves anybody; the others name the user they let in,
  // which verification has made sure the FTP and Telnet rules have.
  if (rule.Proxy()->Type() == PROXY_SMTP) return;
  if (rule.Use() == nullptr) out << "0\n";
  else out << "1\n\"" << rule.Use()->Name() << "\"\n";
}

std::ostream& ProxyConfigs::Verdict(std::ostream& out, const Rule& rule) {
  if (rule.Action() != ACTION_ALLOW) return out << "DENY";
  const ProxyData& proxy = *rule.Proxy();
  if (proxy.Type() == PROXY_TELNET) return out << "AUTHENTICATE";
  bool authenticates = proxy.Type() == PROXY_FTP || (proxy.Type() == PROXY_HTTP && rule.Use() != nullptr);
  return proxy.Enumerate(out << (authenticates ? "AUTHENTICATE " : "ALLOW "));
}
