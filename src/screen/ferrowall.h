// Ferrowall is one screen: how it is administered (ADMIN_IP, certificates,
// key-management algorithms, TUNNEL, MASTER), which services it runs for
// itself, its high-availability role, its SNMP trap receivers and its
// stealth network.  Names that the statement gives stay placeholders until
// the resolve passes link them; the placeholders are owned, the objects
// they resolve to are not.
//
// A screen compiles under its virtual name: an HA secondary takes its
// primary's name, so that it compiles exactly what the primary compiles.
#ifndef FW_SCREEN_FERROWALL_H
#define FW_SCREEN_FERROWALL_H

#include <cstdint>
#include <ostream>

#include "model/entity.h"
#include "model/range.h"

class Address;
class Algorithm;
class IPsecIKEahParams;
class IPsecIKEespParams;
class Registry;
class Rule;
class SecurityParameters;
class Service;
struct IkeTextValues;

// What a screen statement says, in the order of its options.  Texts are
// copied by the screen; `admin_ip` and `snmp_recipients` pass to it;
// `stealth_network` is copied.  Absent options stay at their defaults.
struct FerrowallSettings {
  Address* admin_ip = nullptr;  // inline or a placeholder of an address name
  const char* ike_encryption = nullptr;
  const char* ike_hash = nullptr;
  int oakley_group = 0;
  const char* ike_authentication = nullptr;
  const char* ike_certificate = nullptr;
  IPsecIKEespParams* esp_params = nullptr;  // passes to the screen
  IPsecIKEahParams* ah_params = nullptr;    // passes to the screen
  const char* skip_certificate = nullptr;
  const char* key_algorithm = nullptr;
  const char* data_algorithm = nullptr;
  const char* mac_algorithm = nullptr;
  const char* compression_algorithm = nullptr;
  const char* tunnel = nullptr;
  const char* master = nullptr;
  int timeout = 0;
  int certificate_discovery = 0;
  int dest_check = 0;
  int routing = 0;
  int dns = 0;
  int nis = 0;
  int log_size = 0;
  int ha_primary = 0;
  int ha_secondary = 0;
  uint32_t ha_ip = 0;  // host byte order
  const char* ha_ether = nullptr;  // text for ether_aton
  TList<unsigned>* snmp_recipients = nullptr;  // host byte order
  unsigned long snmp_timer = 0;
  const simplerange* stealth_network = nullptr;
  const char* comment = nullptr;
};

class Ferrowall : public Entity {
 public:
  // The screen of a screen statement.
  Ferrowall(const char* name, const FerrowallSettings& settings);
  // A screen that holds nothing but its name.
  explicit Ferrowall(const char* name);
  ~Ferrowall() override;

  // One pass of name resolution for the references of sort `kind`; returns
  // the number of names not found, each reported on `out`.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // Kind CO_CERTIFICATE: each resolved certificate must be of the key
  // management it is named for.  Returns the number of mismatches.
  int Resolve2(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // Kind CO_SCREEN: the master; CO_ADDRESS: the tunnel; CO_CERTIFICATE:
  // either certificate.
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // The name; in a full line also the settings, in the words of listings.
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The screen statement without its final ';'.
  std::ostream& Print(std::ostream& out) const override;

  // Works out the virtual name before anything is resolved; 1, with the
  // message on `out`, for an HA secondary without a master, else 0.
  int FigureVirtualName(Registry& registry, std::ostream& out);
  // The virtual name when one was figured, else the screen's name.
  const char* VirtualName() const;
  // The high-availability checks, run after the policy is verified; on
  // success an HA screen gets its HA hosts.  1 with the message on `out`
  // at the first failure, else 0.
  int Verify(Registry& registry, std::ostream& out);
  // A new address "HA_HOSTS": this screen's HA address and that of every
  // screen of `screens` whose master is this screen.  The caller owns it.
  Address* ComputeHA(const TList<Entity>& screens) const;
  // The screen's own administrative rules, in this order and as the
  // settings ask: the encrypted rules from its master and to the screens
  // it masters, SNMP traps, key management, certificate discovery,
  // routing, name service, NIS.  Null, with the message on the standard
  // error stream, when a service they need isn't in the registry or a rule
  // between screens can't be made.  The caller owns the list and its rules.
  TList<Entity>* GenerateAdminRules(Registry& registry);
  // The rule by which this screen administers `administered`: from this
  // screen's ADMIN_IP (or, without one, "localhost" when this screen is
  // `compiling`, "*" otherwise) to `administered`'s, encrypted with IKE
  // when both screens have IKE certificates, else with SKIP, the direction
  // seen from `compiling`.  0 with `result` set; 1 after a report on the
  // standard error stream.
  int GenerateScreenToScreen(Ferrowall& administered, Service& service, Rule*& result, const Registry& registry,
                             const Ferrowall& compiling);

  Address* AdminIP() const { return admin_ip_resolved_; }
  Entity* AdminCertificateIKE() const { return ike_certificate_resolved_; }
  Entity* AdminCertificateSkip() const { return skip_certificate_resolved_; }
  Algorithm* KeyAlgorithm() const { return key_algorithm_resolved_; }
  Algorithm* DataAlgorithm() const { return data_algorithm_resolved_; }
  Algorithm* MacAlgorithm() const { return mac_algorithm_resolved_; }
  Algorithm* CompressionAlgorithm() const { return compression_algorithm_resolved_; }
  Algorithm* IKEEncryption() const { return ike_encryption_resolved_; }
  Algorithm* IKEHash() const { return ike_hash_resolved_; }
  Algorithm* IKEAuthentication() const { return ike_authentication_resolved_; }
  int OakleyGroup() const { return oakley_group_; }
  IPsecIKEahParams* AHParams() const { return ah_params_; }
  IPsecIKEespParams* ESPParams() const { return esp_params_; }
  Address* Tunnel() const { return tunnel_resolved_; }
  const Entity* MasterReference() const { return master_; }
  Ferrowall* MasterResolved() const { return master_resolved_; }
  int Timeout() const { return timeout_; }
  int CertificateDiscovery() const { return certificate_discovery_; }
  int dest_check() const { return dest_check_; }
  int Routing() const { return routing_; }
  int DNS() const { return dns_; }
  int NIS() const { return nis_; }
  int LogSize() const { return log_size_; }
  int HA_Primary() const { return ha_primary_; }
  int HA_Secondary() const { return ha_secondary_; }
  // Host byte order; 0 when none was given.
  uint32_t HA_IP() const { return ha_ip_; }
  // Six bytes, or null.
  const unsigned char* HA_Ether() const { return ha_ether_; }
  // Null when the statement listed none.
  const TList<unsigned>* SNMP_Recipients() const { return snmp_recipients_; }
  unsigned long SNMP_Timer() const { return snmp_timer_; }
  const Range* CLKNetwork() const { return clk_network_; }
  Address* HA_HOSTS() const { return ha_hosts_; }

 private:
  // Everything behind the name, as a statement or as a listing.
  std::ostream& PrintSettings(std::ostream& out, bool listing) const;
  // The values of the phase 1 clause.
  IkeTextValues IkeValues() const;
  std::ostream& PrintIKE(std::ostream& out) const;
  std::ostream& EnumerateIKE(std::ostream& out) const;
  std::ostream& PrintStealthNetwork(std::ostream& out, bool listing) const;
  bool HasIKE() const;

  // Steps of GenerateAdminRules; each non-zero answer has been reported.
  static bool ScreenToScreenPossible(const Registry& registry);
  int AppendScreenToScreenRules(TList<Entity>& rules, Registry& registry);
  static void ReportScreenRuleFailure(const char* message, const Ferrowall& other);
  // The steps of GenerateScreenToScreen: the ends of the rule and the
  // parameters of each kind of key management, or null after a report.
  const Address* ScreenToScreenSource(const Ferrowall& administered, const Registry& registry,
                                      const Ferrowall& compiling) const;
  SecurityParameters* ScreenToScreenIKE(const Ferrowall& administered) const;
  SecurityParameters* ScreenToScreenSkip(const Ferrowall& administered) const;
  // An address "SNMP_Recipients" holding every trap receiver; the caller
  // owns it.
  Address* NewSNMPRecipients() const;
  int AppendSNMPRule(TList<Entity>& rules, const Registry& registry) const;
  int AppendOwnTrafficRules(TList<Entity>& rules, const Registry& registry) const;

  // The HA interfaces among the routing interfaces.
  static int CountHAInterfaces(const Registry& registry);
  // Links the ADMIN_IP: an inline address is its own object.
  int ResolveAdminIP(TList<Entity>& list, std::ostream& out);
  // Resolves the IKE phase 2 parameters; 1 when they fail.
  template <class Params>
  int ResolveIPsecParams(Params* params, TList<Entity>& list, std::ostream& out);

  Address* admin_ip_ = nullptr;
  Address* admin_ip_resolved_ = nullptr;
  Entity* ike_certificate_ = nullptr;
  Entity* skip_certificate_ = nullptr;
  // Certificate objects.
  Entity* ike_certificate_resolved_ = nullptr;
  Entity* skip_certificate_resolved_ = nullptr;
  Algorithm* key_algorithm_ = nullptr;
  Algorithm* data_algorithm_ = nullptr;
  Algorithm* mac_algorithm_ = nullptr;
  Algorithm* compression_algorithm_ = nullptr;
  Algorithm* key_algorithm_resolved_ = nullptr;
  Algorithm* data_algorithm_resolved_ = nullptr;
  Algorithm* mac_algorithm_resolved_ = nullptr;
  Algorithm* compression_algorithm_resolved_ = nullptr;
  Entity* ike_encryption_ = nullptr;
  Entity* ike_hash_ = nullptr;
  Entity* ike_authentication_ = nullptr;
  // Owned: the phase 2 parameters of the IKE form, null without one.
  IPsecIKEahParams* ah_params_ = nullptr;
  IPsecIKEespParams* esp_params_ = nullptr;
  Algorithm* ike_encryption_resolved_ = nullptr;
  Algorithm* ike_hash_resolved_ = nullptr;
  int oakley_group_ = 0;
  Algorithm* ike_authentication_resolved_ = nullptr;
  Entity* tunnel_ = nullptr;
  Address* tunnel_resolved_ = nullptr;
  Entity* master_ = nullptr;
  Ferrowall* master_resolved_ = nullptr;
  int timeout_ = 0;
  int certificate_discovery_ = 0;
  int dest_check_ = 0;
  int routing_ = 0;
  int dns_ = 0;
  int nis_ = 0;
  int log_size_ = 0;
  int ha_primary_ = 0;
  int ha_secondary_ = 0;
  uint32_t ha_ip_ = 0;
  unsigned char* ha_ether_ = nullptr;
  TList<unsigned>* snmp_recipients_ = nullptr;
  unsigned long snmp_timer_ = 0;
  Range* clk_network_ = nullptr;
  Address* ha_hosts_ = nullptr;
  const char* virtual_name_ = nullptr;
};

#endif
