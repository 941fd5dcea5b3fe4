#include "crypto/ike_proposal.h"

#include <tuple>

#include "crypto/algorithm.h"
#include "crypto/ike_text.h"
#include "crypto/ipsec_ike_ah_params.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "crypto/named_links.h"
#include "crypto/security_parameters_ike.h"

namespace {

Entity* AlgorithmReference(const char* name) { return NewNameReference(name != nullptr ? name : "NONE"); }

}  // namespace

IkeProposal::IkeProposal(const IkeProposalNames& names, IPsecIKEespParams* esp, IPsecIKEahParams* ah)
    : encryption_(AlgorithmReference(names.encryption)),
      hash_(AlgorithmReference(names.hash)),
      method_(AlgorithmReference(names.method)),
      group_(names.group),
      ah_(ah),
      esp_(esp) {}

IkeProposal::~IkeProposal() {
  delete encryption_;
  delete hash_;
  delete method_;
  delete ah_;
  delete esp_;
}

int IkeProposal::Resolve(TList<Entity>& list, bool method_first, const Entity& owner, std::ostream& out) {
  int errors = 0;
  auto link_method = [&] {
    method_resolved_ = static_cast<Algorithm*>(FindNamed(method_, list));
    if (method_resolved_ != nullptr) return 0;
    owner.NotDefined(out, method_->Name(), "ALGORITHM");
    return 1;
  };
  if (method_first) errors += link_method();
  for (auto [reference, type, resolved] : {std::tuple{encryption_, ALG_ENCRYPTION, &encryption_resolved_},
                                           std::tuple{hash_, ALG_AUTHENTICATION, &hash_resolved_}}) {
    bool refused = false;
    *resolved = LinkIkePhase1(reference, type, list, &refused);
    if (*resolved == nullptr) owner.NotDefined(out, reference->Name(), "ALGORITHM");
    errors += (*resolved == nullptr) + refused;
  }
  if (!method_first) errors += link_method();
  const char* missing = nullptr;
  if (ah_ != nullptr) errors += Phase2Errors(ah_->Resolve(CO_ALGORITHM, list, &missing), missing, owner, out);
  if (esp_ != nullptr) errors += Phase2Errors(esp_->Resolve(CO_ALGORITHM, list, &missing), missing, owner, out);
  return errors;
}

int IkeProposal::Phase2Errors(int answer, const char* missing, const Entity& owner, std::ostream& out) {
  if (answer == RESOLVE_NOT_FOUND) owner.NotDefined(out, missing, "ALGORITHM");
  return answer != RESOLVE_OK;
}

bool IkeProposal::Names(const char* name) const {
  return NameReferenceIs(encryption_, name) || NameReferenceIs(hash_, name) || NameReferenceIs(method_, name);
}

void IkeProposal::Rename(const char* old_name, const char* new_name) {
  for (Entity* algorithm : {encryption_, hash_, method_}) RenameNameReference(algorithm, old_name, new_name);
}

std::ostream& IkeProposal::PrintValues(std::ostream& out, const Entity& certificate, const char* separator) const {
  return ike_text_values(out, {encryption_, hash_, group_, method_, &certificate}, separator);
}

std::ostream& IkeProposal::PrintPhase2(std::ostream& out, bool listing, const char* lead) const {
  return ike_text_phase2(out, esp_, ah_, listing, lead);
}

SecurityParametersIKE* IkeProposal::Parameters(const char* source_certificate,
                                               const char* destination_certificate,
                                               const SecurityEnds& ends) const {
  IkeNames names = {encryption_->Name(), hash_->Name(), group_, method_->Name(), source_certificate,
                    destination_certificate};
  SecurityParametersIKE* parameters =
      new SecurityParametersIKE(names, esp_ != nullptr ? new IPsecIKEespParams(*esp_) : nullptr,
                                ah_ != nullptr ? new IPsecIKEahParams(*ah_) : nullptr, ends);
  LinkNamedObjects(*parameters, {{CO_ALGORITHM,
                                  {encryption_resolved_, hash_resolved_, method_resolved_,
                                   esp_ != nullptr ? esp_->EncryptionResolved() : nullptr,
                                   esp_ != nullptr ? esp_->AuthenticationResolved() : nullptr,
                                   ah_ != nullptr ? ah_->AlgorithmResolved() : nullptr}}});
  return parameters;
}
