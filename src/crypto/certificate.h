// A Certificate names the identity of a party in key management: a SKIP key
// id, a manual key or an IKE identity, held as CertData.  A certificate
// built with the name only is the placeholder of a reference.  MASTER names
// a screen on which the certificate is local.  Groups (CertificateList)
// share the interface; their data is the reduced list of members.
#ifndef FW_CRYPTO_CERTIFICATE_H
#define FW_CRYPTO_CERTIFICATE_H

#include <cstdint>
#include <ostream>

#include "crypto/cert_data.h"
#include "crypto/crypto_types.h"
#include "model/entity.h"

class Certificate : public Entity {
 public:
  static constexpr uint32_t kNoUniqueId = 0xFFFFFFFFu;

  // A reference: the name only, type unknown, no data.
  explicit Certificate(const char* name);
  // A single certificate; a null `data` gives type unknown and no data.
  // `master` names the screen on which it is local, or is null.
  Certificate(const char* name, IPSEC_TYPE type, int nsid, const char* data, const char* master,
              const char* screen, const char* comment);
  ~Certificate() override;

  // 0 single, 1 group.
  virtual int Type() const { return 0; }
  // The certificate as a SKIP rule's table line names it: name and first id.
  virtual std::ostream& EmitData(std::ostream& out);
  // The line of the CertificateGroups table; nothing for a single one.
  virtual std::ostream& GenerateDataFile(std::ostream& out);
  virtual IPSEC_TYPE IPsecType() { return type_; }
  // Each data entry's EmitData, behind `prefix` and followed by a newline,
  // or by a tab when `prefix` is null; nothing when `type_filter` is
  // nonzero and not this certificate's type.
  virtual void Dump(std::ostream& out, const char* prefix, const char* exclude_prefix,
                    int type_filter);
  // Same object, same unique id, or the same type and the same set of data.
  virtual int Equal(Certificate& other);

  // Kind CO_SCREEN: links the MASTER screen.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  // The type word "SINGLE" or "GROUP" selects by Type(); any other selects none.
  int Match(const char* screen, const char* name, const char* type, int exact) const override;
  std::ostream& Print(std::ostream& out) const override;

  // Adds a copy of the data unless an equal entry is there; null adds nothing.
  void Include(const CertData* data);
  // Adds every data entry of `other` in the same way.
  void Include(const Certificate& other);
  // At least one data entry, and every entry local to this host.
  int IsLocal() const;

  const TList<CertData>* Data() const { return data_; }
  const Entity* LocalReference() const { return local_reference_; }
  Entity* LocalResolved() const { return local_resolved_; }
  uint32_t UniqueID() const { return unique_id_; }
  // Gives the next id of the class-wide count, unless the id is set.
  void SetUniqueID();
  void SetIPsecType(IPSEC_TYPE type) { type_ = type; }
  static void ResetUniqueId() { next_unique_id_ = 0; }

 protected:
  // For groups: no data, no MASTER.
  Certificate(const char* name, IPSEC_TYPE type, const char* screen, const char* comment);

  // Dump of one list; shared by the included and the excluded data.
  static void DumpList(std::ostream& out, const TList<CertData>* list, const char* prefix);
  // Writes the Refer line about this certificate to the standard output.
  void ReportReference() const;
  // [TAB SCREEN TAB "screen"] [TAB COMMENT TAB "comment"]
  std::ostream& PrintTail(std::ostream& out) const;
  // [SCREEN SP "screen" SP] "name" SP, the screen left out in name lines.
  std::ostream& EnumerateHead(std::ostream& out, Enumerate_Type type) const;

  TList<CertData>* data_ = nullptr;
  IPSEC_TYPE type_;

 private:
  Entity* local_reference_ = nullptr;
  Entity* local_resolved_ = nullptr;
  uint32_t unique_id_ = kNoUniqueId;
  static uint32_t next_unique_id_;
};

#endif
