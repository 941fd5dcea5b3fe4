// SecurityParameters is what a rule says about encrypting its traffic: the
// kind of key management (SKIP, manual IPsec or IKE, one derived class
// each), the tunnel ends or transport mode, the screens at either end and,
// once the rule is verified, the direction as seen from the compiled screen.
// A rule's block is written without a direction; SetDirection works out
// whether this screen encrypts or decrypts.
//
// A parameter set owns its name references and private copies of its tunnel
// addresses; screens, certificates and algorithms are linked, not owned.
#ifndef FW_CRYPTO_SECURITY_PARAMETERS_H
#define FW_CRYPTO_SECURITY_PARAMETERS_H

#include <ostream>

#include "crypto/crypto_types.h"
#include "model/entity.h"

class Address;
class Ferrowall;

// The screen's role for the packets of a rule.
enum Security_Direction {
  DIRECTION_NOT_SET = 0,
  DIRECTION_DECRYPT = 1,
  DIRECTION_ENCRYPT = 2,
  DIRECTION_UNDECIDED = 3
};

// The tunnel and screen clauses of a block; null names are left out.  With
// `transport` the tunnel names are ignored.
struct SecurityEnds {
  const char* source_tunnel;
  const char* destination_tunnel;
  const char* source_screen;
  const char* destination_screen;
  bool transport;
};

class SecurityParameters {
 public:
  SecurityParameters& operator=(const SecurityParameters&) = delete;
  virtual ~SecurityParameters();

  // Kind CO_SCREEN links the screens, kind CO_ADDRESS copies the tunnels.
  // The first name that can't be found is the answer's `*name`.
  virtual Resolve_Error Resolve(Config_Objects kind, TList<Entity>& list, const char** name);
  // Links the SKIP algorithms of one list; nothing for other kinds.
  virtual Resolve_Error ResolveSKIPAlgorithms(Config_Objects kind, TList<Entity>& list,
                                              Skip_Version version, const char** name);
  // Whether a reference of `kind` names `name`: screens for CO_SCREEN,
  // tunnels for CO_ADDRESS, and in the derived classes their certificates,
  // keys and algorithms.
  virtual int Refer(Config_Objects kind, const char* name) const;
  virtual void RenameReference(Config_Objects kind, const char* old_name, const char* new_name);
  // The block in listings, without a line end.
  virtual std::ostream& Enumerate(std::ostream& out) const = 0;
  // The block as the language writes it.
  virtual std::ostream& Print(std::ostream& out) const = 0;
  // The tail of the rule's action line in an interface table.  `other` is
  // the rule's other block (SKIP puts the decrypting half first); `ike_label`
  // is the IKE number of the rule copy being written.
  virtual std::ostream& GenerateOutput(std::ostream& out, SecurityParameters* other,
                                       unsigned ike_label) = 0;
  // Works out and stores this screen's role; DIRECTION_UNDECIDED when the
  // block doesn't say.
  virtual Security_Direction SetDirection(const Ferrowall& screen) = 0;
  virtual SecurityParameters* Clone() const = 0;
  // The parameters of the same traffic flowing the other way: encrypt and
  // decrypt change places, as do the two tunnels and the two screens.
  virtual void ReverseDirection();
  // The key lines that follow the action line; each key once per table.
  virtual void DumpKeys(std::ostream& out) const;
  // Whether the two blocks claim one security parameter index for
  // different material.
  virtual int Conflicts(const SecurityParameters& other) const;
  // Whether an end is named by a certificate group, which has no single
  // counterpart once the ends change places.
  virtual bool UsesCertificateGroup() const;

  // A reversed copy of `parameters` for the rule that carries the same
  // traffic back; null for null.  The caller owns the copy.
  static SecurityParameters* Reversed(const SecurityParameters* parameters);

  // The tunnel part of an action line tail.
  std::ostream& OutputTunnelAddrs(std::ostream& out) const;

  IPSEC_TYPE Type() const { return type_; }
  Security_Direction Direction() const { return direction_; }
  // For parameters made where the direction is known without asking.
  void Direction(Security_Direction direction) { direction_ = direction; }
  bool TransportMode() const { return transport_; }
  const Entity* SourceTunnel() const { return source_tunnel_; }
  const Entity* DestinationTunnel() const { return destination_tunnel_; }
  const Entity* SourceScreen() const { return source_screen_; }
  const Entity* DestinationScreen() const { return destination_screen_; }
  Address* SourceTunnelResolved() const { return source_tunnel_resolved_; }
  Address* DestinationTunnelResolved() const { return destination_tunnel_resolved_; }
  const Ferrowall* SourceFerrowallResolved() const { return source_screen_resolved_; }
  const Ferrowall* DestinationFerrowallResolved() const { return destination_screen_resolved_; }

 protected:
  SecurityParameters(IPSEC_TYPE type, const SecurityEnds& ends);
  // Copies the names and private copies of the tunnels; links are shared.
  SecurityParameters(const SecurityParameters& other);

  // TRANSPORT, or the tunnel clauses; then the screen clauses.
  std::ostream& PrintEnds(std::ostream& out) const;

 private:
  IPSEC_TYPE type_;
  Security_Direction direction_ = DIRECTION_NOT_SET;
  bool transport_;
  Entity* source_tunnel_ = nullptr;
  Entity* destination_tunnel_ = nullptr;
  Entity* source_screen_;
  Entity* destination_screen_;
  Address* source_tunnel_resolved_ = nullptr;
  Address* destination_tunnel_resolved_ = nullptr;
  const Ferrowall* source_screen_resolved_ = nullptr;
  const Ferrowall* destination_screen_resolved_ = nullptr;
};

#endif
