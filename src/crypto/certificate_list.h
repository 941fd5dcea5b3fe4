// A CertificateList is a certificate group: members named for inclusion and,
// behind "!", for exclusion.  Resolve links the names, DetectCycle looks for
// a group that contains itself, and Reduce flattens the group into two sets
// of identities, the included data and the exclusions.  No set subtraction
// takes place: whoever reads the group applies include and exclude.  A group
// cannot take in another group that has exclusions of its own.
#ifndef FW_CRYPTO_CERTIFICATE_LIST_H
#define FW_CRYPTO_CERTIFICATE_LIST_H

#include "crypto/certificate.h"

class CertificateList : public Certificate {
 public:
  // Takes the lists of member placeholders; either may be null.
  CertificateList(const char* name, IPSEC_TYPE type, TList<Entity>* includes, TList<Entity>* excludes,
                  const char* screen, const char* comment);
  ~CertificateList() override;

  void Mark() override;
  // Forgets the reduction, keeping names and links.
  void CleanUp() override;
  int DetectCycle() override;
  int DetectCycle(Entity& origin) override;
  // Kind CO_CERTIFICATE: links the member names anew.
  int Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) override;
  // The group itself, or null when its members mix types or a member group
  // has exclusions; the latter is reported on stderr.
  Entity* Reduce() override;
  // Adds or removes a member name: an excluded one with `excluded`.
  int Member(const char* name, int remove, int excluded) override;
  int Refer(Config_Objects kind, const char* name, int print) const override;
  void RenameReference(Config_Objects kind, const char* old_name, const char* new_name) override;
  std::ostream& Enumerate(std::ostream& out, Enumerate_Type type) const override;
  std::ostream& Print(std::ostream& out) const override;

  int Type() const override { return 1; }
  // Gives the group its unique id on first use; the id stands for the MKID.
  std::ostream& EmitData(std::ostream& out) override;
  std::ostream& GenerateDataFile(std::ostream& out) override;
  // The members' common type, MIXED when they differ; stored once known.
  IPSEC_TYPE IPsecType() override;
  void Dump(std::ostream& out, const char* prefix, const char* exclude_prefix,
            int type_filter) override;
  // Adds the data of `other` to the exclusions.
  virtual void Exclude(const Certificate& other);

  // The reduced exclusions; an empty list when there are none.
  const TList<CertData>& Data_not() const;
  const TList<Entity>& Includes() const { return *includes_; }
  const TList<Entity>& Excludes() const { return *excludes_; }

 private:
  // Reduces a member and refuses a group with exclusions; null on failure.
  Certificate* ReducedMember(Entity& member, bool excluding);


  TList<Entity>* includes_;
  TList<Entity>* excludes_;
  TList<Entity>* included_;
  TList<Entity>* excluded_;
  bool reduced_ = false;
  // Set while the members' types are scanned, so that a cycle ends the scan.
  bool scanning_type_ = false;
  TList<CertData>* exclusions_ = nullptr;
};

#endif
