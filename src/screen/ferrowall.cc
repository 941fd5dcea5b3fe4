#include "screen/ferrowall.h"

#include <netinet/ether.h>

#include <cstring>
#include <iostream>

#include "crypto/algorithm.h"
#include "crypto/certificate.h"
#include "crypto/ike_text.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "model/address.h"
#include "model/address_list.h"
#include "model/entity_text.h"
#include "model/name_reference.h"
#include "model/registry.h"
#include "policy/rule.h"
#include "screen/interface.h"
#include "services/service.h"
#include "support/fwi18n.h"

namespace {

const int kSet = 50;

Algorithm* NewSkipAlgorithm(const char* name, screen_alg_type type) {
  return name != nullptr ? new Algorithm(name, type, SKIP_V2) : nullptr;
}

unsigned char* NewEtherAddress(const char* text) {
  if (text == nullptr) return nullptr;
  const ether_addr* parsed = ether_aton(text);
  if (parsed == nullptr) return nullptr;
  unsigned char* bytes = new unsigned char[sizeof parsed->ether_addr_octet];
  memcpy(bytes, parsed->ether_addr_octet, sizeof parsed->ether_addr_octet);
  return bytes;
}

bool NamedAs(const Entity* reference, const char* name) {
  return reference != nullptr && name != nullptr && strcmp(reference->Name(), name) == 0;
}

// Whether a linked certificate belongs to another key management than
// `wanted`.
bool CertificateTypeDiffers(Entity* resolved, IPSEC_TYPE wanted) {
  return resolved != nullptr && static_cast<Certificate*>(resolved)->IPsecType() != wanted;
}

// Ends a message with the quoted name; counts as one error.
int ReportName(std::ostream& out, const Entity& reference) {
  out << '"' << reference.Name() << '"' << std::endl;
  return 1;
}

void Rename(Entity* reference, const char* old_name, const char* new_name) {
  if (NamedAs(reference, old_name)) reference->Name(new_name);
}

// Links one placeholder to the object of its name in `list`: with scope
// (`any` 0) or by name alone (`any` 1).  An absent placeholder is no error.
template <class T>
int Link(const Entity& self, const Entity* reference, TList<Entity>& list, int any, const char* word,
         T** resolved, std::ostream& out) {
  if (reference == nullptr) return 0;
  Entity* found = reference->FindSelf(list, any);
  *resolved = static_cast<T*>(found);
  if (found != nullptr) return 0;
  self.NotDefined(out, reference->Name(), word);
  return 1;
}

}  // namespace

Ferrowall::Ferrowall(const char* name, const FerrowallSettings& settings)
    : Entity(name, nullptr, settings.comment, 0),
      admin_ip_(settings.admin_ip),
      ike_certificate_(NewNameReference(settings.ike_certificate)),
      skip_certificate_(NewNameReference(settings.skip_certificate)),
      key_algorithm_(NewSkipAlgorithm(settings.key_algorithm, ALG_KEY)),
      data_algorithm_(NewSkipAlgorithm(settings.data_algorithm, ALG_DATA)),
      mac_algorithm_(NewSkipAlgorithm(settings.mac_algorithm, ALG_MAC)),
      compression_algorithm_(NewSkipAlgorithm(settings.compression_algorithm, ALG_COMPRESSION)),
      ike_encryption_(NewNameReference(settings.ike_encryption)),
      ike_hash_(NewNameReference(settings.ike_hash)),
      ike_authentication_(NewNameReference(settings.ike_authentication)),
      ah_params_(settings.ah_params),
      esp_params_(settings.esp_params),
      oakley_group_(settings.oakley_group),
      tunnel_(NewNameReference(settings.tunnel)),
      master_(NewNameReference(settings.master)),
      timeout_(settings.timeout),
      certificate_discovery_(settings.certificate_discovery),
      dest_check_(settings.dest_check),
      routing_(settings.routing),
      dns_(settings.dns),
      nis_(settings.nis),
      log_size_(settings.log_size),
      ha_primary_(settings.ha_primary),
      ha_secondary_(settings.ha_secondary),
      ha_ip_(settings.ha_ip),
      ha_ether_(NewEtherAddress(settings.ha_ether)),
      snmp_recipients_(settings.snmp_recipients),
      snmp_timer_(settings.snmp_timer),
      clk_network_(settings.stealth_network != nullptr ? new Range(settings.stealth_network) : nullptr) {}

Ferrowall::Ferrowall(const char* name) : Entity(name, nullptr, nullptr, 0) {}

Ferrowall::~Ferrowall() {
  delete admin_ip_;
  for (Entity* owned : {ike_certificate_, skip_certificate_, ike_encryption_, ike_hash_,
                        ike_authentication_, tunnel_, master_})
    delete owned;
  for (Algorithm* owned : {key_algorithm_, data_algorithm_, mac_algorithm_, compression_algorithm_})
    delete owned;
  delete[] ha_ether_;
  if (snmp_recipients_ != nullptr) snmp_recipients_->Delete_Data();
  delete snmp_recipients_;
  delete clk_network_;
  delete ha_hosts_;
  delete ah_params_;
  delete esp_params_;
}

int Ferrowall::ResolveAdminIP(TList<Entity>& list, std::ostream& out) {
  if (admin_ip_ != nullptr && admin_ip_->Inline()) {
    admin_ip_resolved_ = admin_ip_;
    return 0;
  }
  return Link(*this, admin_ip_, list, 1, "ADDRESS", &admin_ip_resolved_, out);
}

int Ferrowall::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  switch (kind) {
    case CO_SCREEN:
      return Link(*this, master_, list, 0, "SCREEN", &master_resolved_, out);
    case CO_ADDRESS: {
      // Each step reports in its turn, so the sums are built one by one.
      int errors = ResolveAdminIP(list, out);
      return errors + Link(*this, tunnel_, list, 1, "ADDRESS", &tunnel_resolved_, out);
    }
    case CO_CERTIFICATE: {
      int errors = Link(*this, ike_certificate_, list, 1, "CERTIFICATE", &ike_certificate_resolved_, out);
      return errors + Link(*this, skip_certificate_, list, 1, "CERTIFICATE", &skip_certificate_resolved_, out);
    }
    case CO_ALGORITHM: {
      int errors = Link(*this, ike_authentication_, list, 0, "ALGORITHM", &ike_authentication_resolved_, out);
      errors += Link(*this, ike_encryption_, list, 0, "ALGORITHM", &ike_encryption_resolved_, out);
      errors += Link(*this, ike_hash_, list, 0, "ALGORITHM", &ike_hash_resolved_, out);
      errors += ResolveIPsecParams(ah_params_, list, out);
      return errors + ResolveIPsecParams(esp_params_, list, out);
    }
    case CO_ALG_KEY:
      return Link(*this, key_algorithm_, list, 0, "KEY ALGORITHM", &key_algorithm_resolved_, out);
    case CO_ALG_DATA:
      return Link(*this, data_algorithm_, list, 0, "DATA ALGORITHM", &data_algorithm_resolved_, out);
    case CO_ALG_MAC:
      return Link(*this, mac_algorithm_, list, 0, "MAC ALGORITHM", &mac_algorithm_resolved_, out);
    case CO_ALG_COMP:
      return Link(*this, compression_algorithm_, list, 0, "COMPRESSION ALGORITHM",
                  &compression_algorithm_resolved_, out);
    default:
      return 0;
  }
}

// The phase 2 parameters report the algorithm they miss as an undefined
// reference of this screen; one that isn't installed has spoken already.
template <class Params>
int Ferrowall::ResolveIPsecParams(Params* params, TList<Entity>& list, std::ostream& out) {
  if (params == nullptr) return 0;
  const char* missing = nullptr;
  int result = params->Resolve(CO_ALGORITHM, list, &missing);
  if (result == RESOLVE_NOT_FOUND) NotDefined(out, missing, "ALGORITHM");
  return result != RESOLVE_OK;
}

int Ferrowall::Resolve2(Config_Objects kind, TList<Entity>&, std::ostream& out) {
  if (kind != CO_CERTIFICATE) return 0;
  int errors = 0;
  if (ike_certificate_ != nullptr && CertificateTypeDiffers(ike_certificate_resolved_, IPSEC_IKE)) {
    out << fwi18n_text(kSet, 1, "Error: Screen refers to non-IKE Certificate type: ");
    errors += ReportName(out, *ike_certificate_);
  }
  if (skip_certificate_ != nullptr && CertificateTypeDiffers(skip_certificate_resolved_, IPSEC_SKIP)) {
    out << fwi18n_text(kSet, 2, "Error: Screen refers to non-SKIP Certificate type: ");
    errors += ReportName(out, *skip_certificate_);
  }
  return errors;
}

int Ferrowall::Refer(Config_Objects kind, const char* name, int print) const {
  bool refers = (kind == CO_SCREEN && NamedAs(master_, name)) ||
                (kind == CO_ADDRESS && NamedAs(tunnel_, name)) ||
                (kind == CO_CERTIFICATE && (NamedAs(ike_certificate_, name) || NamedAs(skip_certificate_, name)));
  if (refers && print) std::cout << "SCREEN \"" << Name() << '"' << std::endl;
  return refers;
}

void Ferrowall::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  switch (kind) {
    case CO_SCREEN: {
      // The virtual name may be the master's text, which the rename frees.
      bool virtual_is_reference = master_ != nullptr && virtual_name_ == master_->Name();
      Rename(master_, old_name, new_name);
      if (virtual_is_reference) virtual_name_ = master_->Name();
      break;
    }
    case CO_ADDRESS:
      Rename(tunnel_, old_name, new_name);
      break;
    case CO_CERTIFICATE:
      Rename(ike_certificate_, old_name, new_name);
      Rename(skip_certificate_, old_name, new_name);
      break;
    default:
      break;
  }
}

int Ferrowall::FigureVirtualName(Registry&, std::ostream& out) {
  if (!ha_secondary_) return 0;
  if (master_ != nullptr && master_resolved_ == nullptr) virtual_name_ = master_->Name();
  if (master_resolved_ != nullptr) virtual_name_ = master_resolved_->Name();
  if (virtual_name_ != nullptr) return 0;
  out << fwi18n_text(kSet, 3, "Error: HA Secondary with no Master") << std::endl;
  return 1;
}

const char* Ferrowall::VirtualName() const { return virtual_name_ != nullptr ? virtual_name_ : Name(); }

int Ferrowall::CountHAInterfaces(const Registry& registry) {
  int count = 0;
  for (TList_Cell<Entity>* cell = registry.GWYInterfaces().Head(); cell != nullptr; cell = cell->Next())
    if (static_cast<Interface*>(cell->Data())->Type() == INTERFACE_HA) ++count;
  return count;
}

int Ferrowall::Verify(Registry& registry, std::ostream& out) {
  int ha_interfaces = CountHAInterfaces(registry);
  const char* failure = nullptr;
  if (ha_secondary_ && master_resolved_ == nullptr) {
    failure = fwi18n_text(kSet, 3, "Error: HA Secondary with no Master");
  } else if (ha_primary_ || ha_secondary_) {
    if (ha_ip_ == 0)
      failure = fwi18n_text(kSet, 4, "Error: HA Screen is missing HA_IP parameter.");
    else if (ha_interfaces == 0)
      failure = fwi18n_text(kSet, 5, "Error: HA enabled with no HA Interface defined.");
    else if (ha_interfaces > 1)
      failure = fwi18n_text(kSet, 6, "Error: HA enabled with multiple Interfaces defined.");
  } else if (ha_interfaces > 0) {
    failure = fwi18n_text(kSet, 7, "Error: HA not enabled but HA Interface(s) defined.");
  }
  if (failure != nullptr) {
    out << failure << std::endl;
    return 1;
  }
  if (ha_primary_ || ha_secondary_) {
    const Ferrowall& primary = ha_primary_ ? *this : *master_resolved_;
    delete ha_hosts_;
    ha_hosts_ = primary.ComputeHA(registry.Screens());
  }
  return 0;
}

Address* Ferrowall::ComputeHA(const TList<Entity>& screens) const {
  Address* hosts = new Address("HA_HOSTS", ha_ip_, nullptr, nullptr);
  for (TList_Cell<Entity>* cell = screens.Head(); cell != nullptr; cell = cell->Next()) {
    const Ferrowall& screen = *static_cast<Ferrowall*>(cell->Data());
    if (strcmp(screen.Name(), Name()) == 0) continue;
    if (screen.master_resolved_ != nullptr && strcmp(screen.master_resolved_->Name(), Name()) == 0)
      hosts->Include(Range(screen.ha_ip_, screen.ha_ip_, RT_ADDRESS, RS_ADDRESSES));
  }
  return hosts;
}

namespace {

// The words in which statements and listings differ.
struct ScreenWords {
  const char* skip_certificate;
  const char* keys;
  const char* datas;
  const char* macs;
  const char* compressions;
  const char* certificate_discovery;
  const char* routing;
  const char* ha_ip;
};

const ScreenWords kStatementWords = {" CERTIFICATE ", " KEYS ", " DATAS ", " MACS ", " COMPRESSIONS ",
                                          " CERTIFICATE_DISCOVERY", " ROUTING", " HA_ADMIN_IP "};
const ScreenWords kListingWords = {" ADMIN_CERTIFICATE ", " KEY ", " DATA ", " MAC ", " COMPRESSION ",
                                        " CDP", " RIP", " HA_IP "};

}  // namespace

bool Ferrowall::HasIKE() const {
  return ike_encryption_ != nullptr || ike_hash_ != nullptr || oakley_group_ != 0 ||
         ike_authentication_ != nullptr || ike_certificate_ != nullptr || ah_params_ != nullptr ||
         esp_params_ != nullptr;
}

IkeTextValues Ferrowall::IkeValues() const {
  return {ike_encryption_, ike_hash_, oakley_group_, ike_authentication_, ike_certificate_};
}

std::ostream& Ferrowall::PrintIKE(std::ostream& out) const {
  ike_text_values(out << " IKE ", IkeValues(), " ") << ' ';
  return ike_text_phase2(out, esp_params_, ah_params_, false);
}

// A listing names the certificate alone when phase 1 has nothing else.
std::ostream& Ferrowall::EnumerateIKE(std::ostream& out) const {
  ike_text_phase2(out << ' ', esp_params_, ah_params_, true) << "IKE(";
  if (ike_encryption_ != nullptr || ike_hash_ != nullptr || oakley_group_ != 0 || ike_authentication_ != nullptr)
    ike_text_values(out, IkeValues(), ", ");
  else
    out << '"' << (ike_certificate_ != nullptr ? ike_certificate_->Name() : "NONE") << '"';
  return out << ") ";
}

std::ostream& Ferrowall::PrintStealthNetwork(std::ostream& out, bool listing) const {
  if (clk_network_ == nullptr) return out;
  if (listing) return clk_network_->Enumerate(out << " STEALTH_NET ");
  if (clk_network_->Style() != RS_DOTTED_MASK) return clk_network_->Print(out << " CLKNET ");
  uint32_t mask = ~(clk_network_->Start() ^ clk_network_->End());
  return out << " CLK " << dotted_address(clk_network_->Start()) << ' ' << dotted_address(mask);
}

std::ostream& Ferrowall::PrintSettings(std::ostream& out, bool listing) const {
  const ScreenWords& words = listing ? kListingWords : kStatementWords;
  out << " SCREEN";
  if (admin_ip_ != nullptr) {
    if (admin_ip_->Inline()) out << " ADMIN_IP " << admin_ip_->Name();
    else entity_text_clause(out, " ADMIN_IP ", admin_ip_);
  }
  if (HasIKE()) listing ? EnumerateIKE(out) : PrintIKE(out);
  entity_text_clause(out, words.skip_certificate, skip_certificate_);
  entity_text_clause(out, words.keys, key_algorithm_);
  entity_text_clause(out, words.datas, data_algorithm_);
  entity_text_clause(out, words.macs, mac_algorithm_);
  entity_text_clause(out, words.compressions, compression_algorithm_);
  entity_text_clause(out, " TUNNEL ", tunnel_);
  entity_text_clause(out, " MASTER ", master_);
  if (timeout_ != 0) out << " TIMEOUT " << timeout_;
  if (certificate_discovery_) out << words.certificate_discovery;
  if (dest_check_) out << " DEST_CHECK";
  if (routing_) out << words.routing;
  if (dns_) out << " DNS";
  if (nis_) out << " NIS";
  if (log_size_ != 0) out << " LOGSIZE " << log_size_;
  if (ha_primary_) out << " HA_PRIMARY";
  if (ha_secondary_) out << " HA_SECONDARY";
  if (ha_ip_ != 0) out << words.ha_ip << dotted_address(ha_ip_);
  if (ha_ether_ != nullptr) {
    ether_addr ether;
    memcpy(ether.ether_addr_octet, ha_ether_, sizeof ether.ether_addr_octet);
    const char* quote = listing ? "" : "\"";
    out << " HA_ETHER " << quote << ether_ntoa(&ether) << quote;
  }
  if (snmp_recipients_ != nullptr && !snmp_recipients_->Empty()) {
    if (listing) out << " SNMP";
    for (TList_Cell<unsigned>* cell = snmp_recipients_->Head(); cell != nullptr; cell = cell->Next())
      out << ' ' << dotted_address(*cell->Data());
  }
  if (snmp_timer_ != 0) out << " SNMP_TIMER " << snmp_timer_;
  PrintStealthNetwork(out, listing);
  if (Description() != nullptr) out << " COMMENT \"" << Description() << '"';
  return out;
}

std::ostream& Ferrowall::Print(std::ostream& out) const {
  return PrintSettings(out << '"' << Name() << '"', false);
}

std::ostream& Ferrowall::Enumerate(std::ostream& out, Enumerate_Type type) const {
  out << '"' << Name() << '"';
  if (type != ENUM_NAME) PrintSettings(out, true);
  return out << '\n';
}

namespace {

// The compile copy of a service that the screen's own traffic needs; null,
// with the message on the standard error stream, when the registry lacks it.
Service* RequiredService(const Registry& registry, const char* name) {
  Entity wanted(name, nullptr, nullptr, 0);
  Entity* found = wanted.FindSelf(registry.ServicesCompile(), 0);
  if (found == nullptr)
    std::cerr << fwi18n_text(kSet, 8, "Error: Service not defined") << " (" << name << ")" << std::endl;
  return static_cast<Service*>(found);
}

void AppendAllowRule(TList<Entity>& rules, Service& service, const Address& source, const Address& destination,
                     int ha) {
  rules.Append(*new Rule(service, source, destination, nullptr, nullptr, nullptr, nullptr, ACTION_ALLOW, LOG_NONE,
                         SNMP_NONE, ICMP_NONE, ha, nullptr, nullptr, nullptr, nullptr));
}

// Frees the rules made so far; always null, the answer of a failed
// generation.
TList<Entity>* Discard(TList<Entity>* rules) {
  rules->Delete_Data();
  delete rules;
  return nullptr;
}

// Whether `administrator` administers `screen`.  An HA secondary is
// administered through its primary, never on its own.
bool Administers(const Ferrowall& administrator, const Ferrowall& screen) {
  return !screen.HA_Secondary() && screen.MasterResolved() != nullptr &&
         strcmp(screen.MasterResolved()->Name(), administrator.Name()) == 0;
}

// Traffic of the screen's own that a setting asks for: out from the screen
// to anywhere and, where the peer starts exchanges too, back in.
struct OwnTraffic {
  int (Ferrowall::*wanted)() const;  // null: always
  const char* service;
  bool inbound;
  int ha;  // HAValue of the rules
};

const OwnTraffic kOwnTraffic[] = {
    {nullptr, "skip", false, 0},
    {&Ferrowall::CertificateDiscovery, "certificate discovery", true, 0},
    {&Ferrowall::Routing, "rip", true, 1},
    {&Ferrowall::DNS, "dns", false, 0},
    {&Ferrowall::NIS, "nis", false, 0},
};

}  // namespace

// The built-in screen "*" is always listed, so the compile of any defined
// screen comes this way and needs the service of remote administration.
bool Ferrowall::ScreenToScreenPossible(const Registry& registry) {
  TList_Cell<Entity>* first = registry.Screens().Head();
  return first != nullptr && first->Next() != nullptr;
}

// A screen administers the screens whose master it is, and is administered
// by its own master, so a master in the middle of a chain gets rules both
// ways.
int Ferrowall::AppendScreenToScreenRules(TList<Entity>& rules, Registry& registry) {
  Service* service = RequiredService(registry, "remote administration");
  if (service == nullptr) return 1;
  for (TList_Cell<Entity>* cell = registry.Screens().Head(); cell != nullptr; cell = cell->Next()) {
    Ferrowall& other = *static_cast<Ferrowall*>(cell->Data());
    Rule* rule = nullptr;
    if (Administers(other, *this)) {
      if (other.GenerateScreenToScreen(*this, *service, rule, registry, *this) != 0) {
        ReportScreenRuleFailure(fwi18n_text(kSet, 9, "Error:  could not generate Rule from Screen"), other);
        return 1;
      }
      if (rule != nullptr) rules.Append(*rule);
    }
    rule = nullptr;
    if (Administers(*this, other)) {
      if (GenerateScreenToScreen(other, *service, rule, registry, *this) != 0) {
        ReportScreenRuleFailure(fwi18n_text(kSet, 10, "Error:  could not generate Rule to Screen"), other);
        return 1;
      }
      if (rule != nullptr) rules.Append(*rule);
    }
  }
  return 0;
}

void Ferrowall::ReportScreenRuleFailure(const char* message, const Ferrowall& other) {
  std::cerr << message << ": \"" << other.Name() << "\"" << std::endl;
}

Address* Ferrowall::NewSNMPRecipients() const {
  Address* recipients = new Address("SNMP_Recipients", nullptr, nullptr, ADDRESS_SINGLE);
  for (TList_Cell<unsigned>* cell = snmp_recipients_->Head(); cell != nullptr; cell = cell->Next())
    recipients->Include(Range(*cell->Data(), *cell->Data(), RT_ADDRESS, RS_ADDRESSES));
  return recipients;
}

int Ferrowall::AppendSNMPRule(TList<Entity>& rules, const Registry& registry) const {
  if (snmp_recipients_ == nullptr || snmp_recipients_->Empty()) return 0;
  Address* recipients = NewSNMPRecipients();
  Service* traps = RequiredService(registry, "snmp traps");
  if (traps != nullptr) AppendAllowRule(rules, *traps, *registry.Localhost(), *recipients, 0);
  delete recipients;
  return traps == nullptr;
}

int Ferrowall::AppendOwnTrafficRules(TList<Entity>& rules, const Registry& registry) const {
  for (const OwnTraffic& traffic : kOwnTraffic) {
    if (traffic.wanted != nullptr && !(this->*traffic.wanted)()) continue;
    Service* service = RequiredService(registry, traffic.service);
    if (service == nullptr) return 1;
    AppendAllowRule(rules, *service, *registry.Localhost(), *registry.Star(), traffic.ha);
    if (traffic.inbound) AppendAllowRule(rules, *service, *registry.Star(), *registry.Localhost(), traffic.ha);
  }
  return 0;
}

TList<Entity>* Ferrowall::GenerateAdminRules(Registry& registry) {
  TList<Entity>* rules = new TList<Entity>;
  if (ScreenToScreenPossible(registry) && AppendScreenToScreenRules(*rules, registry) != 0) return Discard(rules);
  if (AppendSNMPRule(*rules, registry) != 0 || AppendOwnTrafficRules(*rules, registry) != 0) return Discard(rules);
  return rules;
}
