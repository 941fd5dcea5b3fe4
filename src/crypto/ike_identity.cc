#include "crypto/ike_identity.h"

#include <vector>

#include "crypto/certificate.h"
#include "crypto/certificate_list.h"
#include "support/host.h"

namespace {

std::vector<std::string> Identities(const TList<CertData>* data) {
  std::vector<std::string> texts;
  if (data == nullptr) return texts;
  for (TList_Cell<CertData>* cell = data->Head(); cell != nullptr; cell = cell->Next())
    if (cell->Data()->Text() != nullptr) texts.push_back(Escapism(cell->Data()->Text()));
  return texts;
}

}  // namespace

int IsLocal(const Certificate& certificate) {
  std::vector<std::string> excludes;
  if (const CertificateList* group = dynamic_cast<const CertificateList*>(&certificate))
    excludes = Identities(&group->Data_not());
  return Host::Current().LocalIdentity(Identities(certificate.Data()), excludes);
}

std::string Escapism(const char* text) {
  std::string plain;
  for (const char* at = text; *at != '\0'; ++at) {
    if (*at == '\\' && *++at == '\0') break;
    plain += *at;
  }
  return plain;
}
