#include "crypto/certificate_list.h"

#include <iostream>

#include "support/fwi18n.h"

namespace {

TList<Entity>* list_or_new(TList<Entity>* list) { return list != nullptr ? list : new TList<Entity>; }

template <class T>
void delete_with_data(TList<T>* list) {
  if (list != nullptr) list->Delete_Data();
  delete list;
}

std::ostream& print_names(std::ostream& out, const TList<Entity>& names, const char* before) {
  for (TList_Cell<Entity>* cell = names.Head(); cell != nullptr; cell = cell->Next())
    out << before << '"' << cell->Data()->Name() << '"';
  return out;
}

void emit_all(std::ostream& out, const TList<CertData>* list, const char* mark) {
  if (list == nullptr) return;
  for (TList_Cell<CertData>* cell = list->Head(); cell != nullptr; cell = cell->Next())
    cell->Data()->EmitData(out << mark);
}

}  // namespace

CertificateList::CertificateList(const char* name, IPSEC_TYPE type, TList<Entity>* includes,
                                 TList<Entity>* excludes, const char* screen, const char* comment)
    : Certificate(name, type, screen, comment),
      includes_(list_or_new(includes)),
      excludes_(list_or_new(excludes)),
      included_(new TList<Entity>),
      excluded_(new TList<Entity>) {}

CertificateList::~CertificateList() {
  delete_with_data(includes_);
  delete_with_data(excludes_);
  delete included_;
  delete excluded_;
  delete_with_data(exclusions_);
}

void CertificateList::Mark() {
  Mark_List(*included_);
  Mark_List(*excluded_);
}

void CertificateList::CleanUp() {
  reduced_ = false;
  delete_with_data(data_);
  data_ = new TList<CertData>;
  delete_with_data(exclusions_);
  exclusions_ = new TList<CertData>;
}

int CertificateList::DetectCycle() { return DetectCycleFromMembers({included_, excluded_}); }

int CertificateList::DetectCycle(Entity& origin) { return DetectCycleThroughMembers(origin, {included_, excluded_}); }

int CertificateList::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_CERTIFICATE) return Certificate::Resolve(kind, list, out);
  delete included_;
  delete excluded_;
  included_ = new TList<Entity>;
  excluded_ = new TList<Entity>;
  int misses = Resolve_Names(*includes_, *included_, list, "CERTIFICATE", out);
  return misses + Resolve_Names(*excludes_, *excluded_, list, "CERTIFICATE", out);
}

IPSEC_TYPE CertificateList::IPsecType() {
  if (type_ != IPSEC_UNKNOWN || scanning_type_) return type_;
  scanning_type_ = true;
  IPSEC_TYPE result = IPSEC_UNKNOWN;
  bool first = true;
  for (TList<Entity>* members : {included_, excluded_}) {
    for (TList_Cell<Entity>* cell = members->Head(); cell != nullptr && result != IPSEC_MIXED;
         cell = cell->Next()) {
      Certificate* member = dynamic_cast<Certificate*>(cell->Data());
      IPSEC_TYPE type = member != nullptr ? member->IPsecType() : IPSEC_UNKNOWN;
      if (first) result = type;
      else if (type != result) result = IPSEC_MIXED;
      first = false;
    }
  }
  scanning_type_ = false;
  type_ = result;
  return result;
}

Certificate* CertificateList::ReducedMember(Entity& member, bool excluding) {
  Certificate* reduced = dynamic_cast<Certificate*>(member.Reduce());
  if (reduced == nullptr) return nullptr;
  const CertificateList* group = dynamic_cast<const CertificateList*>(reduced);
  if (group == nullptr || group->Data_not().Empty()) return reduced;
  std::cerr << fwi18n_text(43, 1, "Error: Certificate group:") << " \"" << Name() << "\""
            << (excluding ? fwi18n_text(43, 3, " cannot exclude group:")
                          : fwi18n_text(43, 2, " cannot include group:"))
            << " \"" << member.Name() << "\""
            << fwi18n_text(43, 4, " because it contains exclusions") << "\n";
  return nullptr;
}

Entity* CertificateList::Reduce() {
  if (reduced_) return IPsecType() == IPSEC_MIXED ? nullptr : this;
  reduced_ = true;
  if (IPsecType() == IPSEC_MIXED) return nullptr;
  for (TList_Cell<Entity>* cell = included_->Head(); cell != nullptr; cell = cell->Next()) {
    Certificate* member = ReducedMember(*cell->Data(), false);
    if (member == nullptr) return nullptr;
    Include(*member);
  }
  for (TList_Cell<Entity>* cell = excluded_->Head(); cell != nullptr; cell = cell->Next()) {
    Certificate* member = ReducedMember(*cell->Data(), true);
    if (member == nullptr) return nullptr;
    Exclude(*member);
  }
  return this;
}

int CertificateList::Member(const char* name, int remove, int excluded) {
  if (name == nullptr) return 0;
  TList<Entity>& names = excluded ? *excludes_ : *includes_;
  Certificate placeholder(name);
  if (remove) placeholder.DeleteSelf(names);
  else if (!placeholder.InList(names)) names.Append(*new Certificate(name));
  return 0;
}

int CertificateList::Refer(Config_Objects kind, const char* name, int print) const {
  if (kind != CO_CERTIFICATE) return Certificate::Refer(kind, name, print);
  int hit = Refer_List(*includes_, name) || Refer_List(*excludes_, name);
  if (hit && print) ReportReference();
  return hit;
}

void CertificateList::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_CERTIFICATE) {
    Rename_Reference_List(*includes_, old_name, new_name);
    Rename_Reference_List(*excludes_, old_name, new_name);
  }
  Certificate::RenameReference(kind, old_name, new_name);
}

std::ostream& CertificateList::Enumerate(std::ostream& out, Enumerate_Type type) const {
  EnumerateHead(out, type) << "GROUP";
  if (type != ENUM_NAME) {
    print_names(out << " {", *includes_, " ") << " } {";
    print_names(out, *excludes_, " ") << " }";
    if (Description() != nullptr) out << " COMMENT \"" << Description() << '"';
  }
  return out << '\n';
}

std::ostream& CertificateList::Print(std::ostream& out) const {
  out << '"' << Name() << "\"\tCERTIFICATE";
  print_names(out, *includes_, "\t");
  print_names(out, *excludes_, "\t!");
  return PrintTail(out);
}

std::ostream& CertificateList::EmitData(std::ostream& out) {
  SetUniqueID();
  return out << " \"" << Name() << "\" 255 \"" << UniqueID() << "\" ";
}

std::ostream& CertificateList::GenerateDataFile(std::ostream& out) {
  out << '"' << Name() << "\" " << UniqueID();
  emit_all(out, data_, "");
  emit_all(out, exclusions_, "!");
  return out << '\n';
}

void CertificateList::Dump(std::ostream& out, const char* prefix, const char* exclude_prefix,
                           int type_filter) {
  if (type_filter != 0 && type_filter != IPsecType()) return;
  DumpList(out, data_, prefix);
  DumpList(out, exclusions_, exclude_prefix);
}

void CertificateList::Exclude(const Certificate& other) {
  const TList<CertData>* data = other.Data();
  if (data == nullptr) return;
  if (exclusions_ == nullptr) exclusions_ = new TList<CertData>;
  for (TList_Cell<CertData>* cell = data->Head(); cell != nullptr; cell = cell->Next())
    CertData::Include(*exclusions_, *cell->Data());
}

const TList<CertData>& CertificateList::Data_not() const {
  static const TList<CertData> kNoExclusions;
  return exclusions_ != nullptr ? *exclusions_ : kNoExclusions;
}
