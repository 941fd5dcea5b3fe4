// CertData is what identifies one party in key management: a SKIP key id
// (name space id and master key id text), a manual key text or an IKE
// identity text.  It is a plain value that owns a private copy of its text.
#ifndef FW_CRYPTO_CERT_DATA_H
#define FW_CRYPTO_CERT_DATA_H

#include <ostream>

#include "crypto/crypto_types.h"
#include "model/t_list.h"

class CertData {
 public:
  // `nsid` counts for SKIP only; `text` is the MKID, key or identity.
  CertData(IPSEC_TYPE type, int nsid, const char* text);
  CertData(const CertData& other);
  CertData& operator=(const CertData&) = delete;
  ~CertData();

  IPSEC_TYPE Type() const { return type_; }
  int Nsid() const { return nsid_; }
  const char* Text() const { return text_; }

  // Same identity: SKIP ids by NSID and MKID without regard to case, keys
  // exactly, IKE identities without regard to case.
  bool Equal(const CertData& other) const;
  // Whether this host holds the identity: a SKIP id the local key manager
  // has a key for, or an IKE identity marked "_local".
  bool IsLocal() const;
  // The identity as the generated tables carry it.
  std::ostream& EmitData(std::ostream& out) const;

  // Whether `list` holds an entry equal to `data`.
  static bool Contains(const TList<CertData>& list, const CertData& data);
  // Appends a copy of `data` to `list` unless an equal entry is there.
  static void Include(TList<CertData>& list, const CertData& data);

 private:
  IPSEC_TYPE type_;
  int nsid_;
  char* text_;
};

#endif
