// ACLRemoteSkip is a remote access entry protected by SKIP: the key,
// data, MAC and compression algorithms of its version.  Its line in
// Remote.Access carries the certificate's key ids.
#ifndef FW_CRYPTO_ACL_REMOTE_SKIP_H
#define FW_CRYPTO_ACL_REMOTE_SKIP_H

#include "crypto/acl_remote.h"
#include "crypto/skip_algorithms.h"

class ACLRemoteSkip : public ACLRemote {
 public:
  // `algorithms` are the key, data, MAC and compression names, in this
  // order; version 1 has no MAC and no compression.  `tunnel` may be null.
  ACLRemoteSkip(const char* user, Access_Level level, const char* address, Skip_Version version,
                const char* certificate, const char* const algorithms[4], const char* tunnel, const char* screen,
                const char* comment);

  // Besides the base's kinds: the certificate pass refuses an entry of
  // version 1, which the key managers no longer support, as rules are
  // refused.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // The algorithm of the list of `kind`, when `version` is the entry's;
  // all but compression must be installed.
  int ResolveAlgorithms(Config_Objects kind, TList<Entity>& list, Skip_Version version,
                        std::ostream& out) override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  // Null when the entry's certificate is local: the administrator sits at
  // this screen.
  Rule* GenerateRule(Certificate& local_certificate, Service& service, const Address& local_address) override;
  IPSEC_TYPE IPsecType() const override { return IPSEC_SKIP; }
  std::ostream& Print(std::ostream& out) const override;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;

 protected:
  bool RefersTo(Config_Objects kind, const char* name) const override;
  // The certificate's entries, each behind "\tSKIP_VERSION_2", then "\t;".
  void GenerateDataRest(std::ostream& out, const Registry& registry) const override;

 private:
  // The version word, the certificate and the algorithms of the version,
  // each behind a blank.
  std::ostream& PrintSkip(std::ostream& out) const;

  Skip_Version version_;
  SkipAlgorithms algorithms_;
};

#endif
