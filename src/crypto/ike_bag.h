// IKEBag is one entry of the IKE daemon's configuration as it was written:
// the label that ties it to an interface table's action line, the rule's
// IKE parameters, and the local and remote end (address, certificate or
// pre-shared key, tunnel).  It points at objects the compile owns.
#ifndef FW_CRYPTO_IKE_BAG_H
#define FW_CRYPTO_IKE_BAG_H

#include <ostream>

class Address;
class Certificate;
class SecurityParametersIKE;

// One end of an entry: the addresses it stands for (its tunnel, or else
// the rule's address on that side), its certificate or key, and its tunnel.
struct IKEBagEnd {
  Address* address;
  Certificate* certificate;
  Address* tunnel;  // null without a tunnel
};

class IKEBag {
 public:
  // `origin_id` is the unique id of the policy or access rule the entry
  // comes from, -1 for none.
  IKEBag(unsigned label, const SecurityParametersIKE& parameters, const IKEBagEnd& local, const IKEBagEnd& remote,
         int origin_id = -1);

  // The same label, or the same kind of authentication between the same
  // ends with the same identities.
  bool Equal(const IKEBag& other) const;
  // The pre-shared key entries of the secret file: one for each pair of a
  // local and a remote address, up to a budget.  0; 218 when the budget
  // ran out; 221 when the local end has no key.  A certificate entry writes
  // nothing.
  int GenerateIKEPreshared(std::ostream& out) const;

  unsigned Label() const { return label_; }
  int OriginId() const { return origin_id_; }

 private:
  // The key text, or null when the local end names no manual key.
  const char* Key() const;

  unsigned label_;
  const SecurityParametersIKE* parameters_;
  IKEBagEnd local_;
  IKEBagEnd remote_;
  int origin_id_;
};

#endif
