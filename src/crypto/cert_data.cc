#include "crypto/cert_data.h"

#include <strings.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/box_id.h"
#include "support/host_query.h"

namespace {

char* copy_or_null(const char* text) { return text != nullptr ? strdup(text) : nullptr; }

bool same_text(const char* a, const char* b, bool ignore_case) {
  if (a == nullptr || b == nullptr) return a == b;
  return (ignore_case ? strcasecmp(a, b) : strcmp(a, b)) == 0;
}

const char* or_empty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

CertData::CertData(IPSEC_TYPE type, int nsid, const char* text)
    : type_(type), nsid_(nsid), text_(copy_or_null(text)) {}

CertData::CertData(const CertData& other)
    : type_(other.type_), nsid_(other.nsid_), text_(copy_or_null(other.text_)) {}

CertData::~CertData() { free(text_); }

bool CertData::Equal(const CertData& other) const {
  if (this == &other) return true;
  if (type_ != other.type_) return false;
  switch (type_) {
    case IPSEC_SKIP:
      return nsid_ == other.nsid_ && same_text(text_, other.text_, true);
    case IPSEC_MANUAL:
      return same_text(text_, other.text_, false);
    case IPSEC_IKE:
      return same_text(text_, other.text_, true);
    default:
      return false;
  }
}

bool CertData::IsLocal() const {
  if (type_ == IPSEC_IKE) return text_ != nullptr && strstr(text_, "_local") != nullptr;
  if (type_ != IPSEC_SKIP) return false;
  std::string box_text = std::to_string(nsid_) + " " + or_empty(text_);
  screen_box_id box;
  if (!screen_box_id_internalize(&box, box_text.c_str())) return false;
  return screenadm_skip_local_id(box) != 0;
}

std::ostream& CertData::EmitData(std::ostream& out) const {
  if (type_ == IPSEC_SKIP) return out << " " << nsid_ << " \"" << or_empty(text_) << "\" ";
  if (type_ == IPSEC_MANUAL || type_ == IPSEC_IKE) return out << " \"" << or_empty(text_) << "\" ";
  return out;
}

bool CertData::Contains(const TList<CertData>& list, const CertData& data) {
  for (TList_Cell<CertData>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Equal(data)) return true;
  return false;
}

void CertData::Include(TList<CertData>& list, const CertData& data) {
  if (!Contains(list, data)) list.Append(*new CertData(data));
}
