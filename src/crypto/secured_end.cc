#include "crypto/secured_end.h"

#include <utility>

#include "crypto/certificate.h"
#include "crypto/named_links.h"
#include "model/address.h"

SecuredEnd::SecuredEnd(const char* address, const char* certificate, const char* tunnel)
    : address_(NewNameReference(address != nullptr ? address : "Missing Address")),
      certificate_(NewNameReference(certificate != nullptr ? certificate : "Missing Certificate")),
      tunnel_(NewNameReference(tunnel)) {}

SecuredEnd::~SecuredEnd() {
  delete address_;
  delete certificate_;
  delete tunnel_;
}

int SecuredEnd::Resolve(Config_Objects kind, TList<Entity>& list, IPSEC_TYPE type, const char* wrong_type,
                        const Entity& owner, std::ostream& out) {
  if (kind == CO_ADDRESS) {
    int errors = 0;
    for (auto [reference, resolved] :
         {std::pair{address_, &address_resolved_}, std::pair{tunnel_, &tunnel_resolved_}}) {
      if (reference == nullptr) continue;
      *resolved = dynamic_cast<Address*>(FindNamed(reference, list));
      if (*resolved == nullptr) owner.NotDefined(out, reference->Name(), "ADDRESS");
      errors += *resolved == nullptr;
    }
    return errors;
  }
  if (kind != CO_CERTIFICATE) return 0;
  Certificate* found = dynamic_cast<Certificate*>(FindNamed(certificate_, list));
  if (found == nullptr) {
    owner.NotDefined(out, certificate_->Name(), "CERTIFICATE");
    return 1;
  }
  if (found->IPsecType() != type) {
    out << wrong_type << '"' << certificate_->Name() << '"' << std::endl;
    return 1;
  }
  certificate_resolved_ = found;
  return 0;
}

bool SecuredEnd::RefersTo(Config_Objects kind, const char* name) const {
  if (kind == CO_ADDRESS) return NameReferenceIs(address_, name) || NameReferenceIs(tunnel_, name);
  return kind == CO_CERTIFICATE && NameReferenceIs(certificate_, name);
}

void SecuredEnd::Rename(Config_Objects kind, const char* old_name, const char* new_name) {
  if (kind == CO_ADDRESS) {
    RenameNameReference(address_, old_name, new_name);
    RenameNameReference(tunnel_, old_name, new_name);
  }
  if (kind == CO_CERTIFICATE) RenameNameReference(certificate_, old_name, new_name);
}
