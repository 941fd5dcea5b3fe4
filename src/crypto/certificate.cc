#include "crypto/certificate.h"

#include <cstring>
#include <iostream>

uint32_t Certificate::next_unique_id_ = 0;

namespace {

bool same_name(const char* a, const char* b) { return a != nullptr && b != nullptr && strcmp(a, b) == 0; }

bool contained_in(const TList<CertData>* part, const TList<CertData>* whole) {
  if (part == nullptr) return true;
  for (TList_Cell<CertData>* cell = part->Head(); cell != nullptr; cell = cell->Next())
    if (whole == nullptr || !CertData::Contains(*whole, *cell->Data())) return false;
  return true;
}

const CertData* first_entry(const TList<CertData>* list) {
  return list != nullptr && list->Head() != nullptr ? list->Head()->Data() : nullptr;
}

}  // namespace

Certificate::Certificate(const char* name) : Certificate(name, IPSEC_UNKNOWN, nullptr, nullptr) {}

Certificate::Certificate(const char* name, IPSEC_TYPE type, int nsid, const char* data,
                         const char* master, const char* screen, const char* comment)
    : Certificate(name, data != nullptr ? type : IPSEC_UNKNOWN, screen, comment) {
  if (data != nullptr) {
    CertData entry(type, nsid, data);
    Include(&entry);
  }
  if (master != nullptr) local_reference_ = new Entity(master, nullptr, nullptr, 0);
}

Certificate::Certificate(const char* name, IPSEC_TYPE type, const char* screen, const char* comment)
    : Entity(name, screen, comment, 0), type_(type) {}

Certificate::~Certificate() {
  if (data_ != nullptr) data_->Delete_Data();
  delete data_;
  delete local_reference_;
}

std::ostream& Certificate::EmitData(std::ostream& out) {
  out << " \"" << Name() << "\" ";
  const CertData* first = first_entry(data_);
  if (first != nullptr) first->EmitData(out);
  return out;
}

std::ostream& Certificate::GenerateDataFile(std::ostream& out) { return out; }

void Certificate::DumpList(std::ostream& out, const TList<CertData>* list, const char* prefix) {
  if (list == nullptr) return;
  for (TList_Cell<CertData>* cell = list->Head(); cell != nullptr; cell = cell->Next()) {
    if (prefix != nullptr) out << prefix;
    cell->Data()->EmitData(out);
    out << (prefix != nullptr ? '\n' : '\t');
  }
}

void Certificate::Dump(std::ostream& out, const char* prefix, const char*, int type_filter) {
  if (type_filter != 0 && type_filter != IPsecType()) return;
  DumpList(out, data_, prefix);
}

int Certificate::Equal(Certificate& other) {
  if (this == &other) return 1;
  if (unique_id_ != kNoUniqueId && unique_id_ == other.unique_id_) return 1;
  if (IPsecType() != other.IPsecType()) return 0;
  return contained_in(data_, other.data_) && contained_in(other.data_, data_);
}

int Certificate::Resolve(Config_Objects kind, TList<Entity>& list, std::ostream& out) {
  if (kind != CO_SCREEN || local_reference_ == nullptr) return 0;
  local_resolved_ = local_reference_->FindSelf(list, 1);
  if (local_resolved_ != nullptr) return 0;
  NotDefined(out, local_reference_->Name(), "SCREEN");
  return 1;
}

void Certificate::ReportReference() const {
  // A certificate without a screen holds for every screen, which the
  // language writes as "*".
  std::cout << "SCREEN \"" << (Screen() != nullptr ? Screen() : "*") << "\" "
            << "CERTIFICATE \"" << Name() << "\"\n";
}

int Certificate::Refer(Config_Objects kind, const char* name, int print) const {
  if (kind != CO_SCREEN) return 0;
  bool hit = same_name(Screen(), name) ||
             (local_reference_ != nullptr && same_name(local_reference_->Name(), name));
  if (hit && print) ReportReference();
  return hit;
}

void Certificate::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  Entity::RenameReference(kind, old_name, new_name);
  if (kind == CO_SCREEN && local_reference_ != nullptr && same_name(local_reference_->Name(), old_name))
    local_reference_->Name(new_name);
}

std::ostream& Certificate::EnumerateHead(std::ostream& out, Enumerate_Type type) const {
  if (type != ENUM_NAME && Screen() != nullptr) out << "SCREEN \"" << Screen() << "\" ";
  return out << '"' << Name() << "\" ";
}

std::ostream& Certificate::Enumerate(std::ostream& out, Enumerate_Type type) const {
  EnumerateHead(out, type) << "SINGLE";
  if (type_ == IPSEC_IKE) out << " IKE";
  if (type != ENUM_NAME) {
    const CertData* first = first_entry(data_);
    if (first != nullptr && first->Type() == IPSEC_SKIP)
      out << ' ' << first->Nsid() << " \"" << first->Text() << '"';
    else if (first != nullptr)
      out << " \"" << first->Text() << '"';
    if (local_reference_ != nullptr) out << " LOCAL \"" << local_reference_->Name() << '"';
    if (Description() != nullptr) out << " COMMENT \"" << Description() << '"';
  }
  return out << '\n';
}

int Certificate::Match(const char* screen, const char* name, const char* type, int exact) const {
  if (type != nullptr) {
    int wanted = strcmp(type, "SINGLE") == 0 ? 0 : strcmp(type, "GROUP") == 0 ? 1 : -1;
    if (wanted != Type()) return 0;
  }
  return Entity::Match(screen, name, type, exact);
}

std::ostream& Certificate::PrintTail(std::ostream& out) const {
  if (Screen() != nullptr) out << "\tSCREEN\t\"" << Screen() << '"';
  if (Description() != nullptr) out << "\tCOMMENT\t\"" << Description() << '"';
  return out;
}

std::ostream& Certificate::Print(std::ostream& out) const {
  const CertData* first = first_entry(data_);
  if (first == nullptr) return Entity::Print(out);
  out << '"' << Name() << "\"\t";
  switch (first->Type()) {
    case IPSEC_SKIP:
      out << "CERTIFICATE\tNSID " << first->Nsid() << " MKID \"" << first->Text() << '"';
      break;
    case IPSEC_IKE:
      out << "CERTIFICATE\tIKE \"" << first->Text() << "\" ";
      break;
    default:
      out << "KEY \"" << first->Text() << "\" ";
      break;
  }
  if (local_reference_ != nullptr) out << "\tMASTER\t\"" << local_reference_->Name() << '"';
  return PrintTail(out);
}

void Certificate::Include(const CertData* data) {
  if (data == nullptr) return;
  if (data_ == nullptr) data_ = new TList<CertData>;
  CertData::Include(*data_, *data);
}

void Certificate::Include(const Certificate& other) {
  if (other.data_ == nullptr) return;
  for (TList_Cell<CertData>* cell = other.data_->Head(); cell != nullptr; cell = cell->Next())
    Include(cell->Data());
}

int Certificate::IsLocal() const {
  if (data_ == nullptr || data_->Empty()) return 0;
  for (TList_Cell<CertData>* cell = data_->Head(); cell != nullptr; cell = cell->Next())
    if (!cell->Data()->IsLocal()) return 0;
  return 1;
}

void Certificate::SetUniqueID() {
  if (unique_id_ == kNoUniqueId) unique_id_ = next_unique_id_++;
}
