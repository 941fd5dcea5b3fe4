#include "crypto/ike_bag.h"

#include <cstdint>
#include <memory>

#include "crypto/certificate.h"
#include "crypto/security_parameters_ike.h"
#include "model/address.h"
#include "model/range.h"

namespace {

// The most entries one rule may put into the secret file.
const int kPresharedBudget = 256;

const int kTooManyResults = 218;
const int kInvalidIkeParameters = 221;

bool SameTunnel(const Address* a, const Address* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return a->Equal(*b);
}

std::unique_ptr<TList<Range>> Ordered(const Address& address) {
  return std::unique_ptr<TList<Range>>(address.CreateOrderedRangeList());
}

void Entry(std::ostream& out, uint32_t local, uint32_t remote, const char* key) {
  out << "{\tlocalidtype IP\n\tlocalid " << dotted_address(local) << "\n\tremoteidtype IP\n\tremoteid "
      << dotted_address(remote) << "\n\tike_mode both\n\tkey " << key << "\n}\n";
}

void Skipping(std::ostream& out, uint32_t local, const Range& locals, uint32_t remote, const Range& remotes) {
  out << "# !!! SKIPPING: localid " << dotted_address(local) << " - " << dotted_address(locals.End()) << " !!!\n"
      << "# !!!          remoteid " << dotted_address(remote) << " - " << dotted_address(remotes.End())
      << " !!!\n";
}

}  // namespace

IKEBag::IKEBag(unsigned label, const SecurityParametersIKE& parameters, const IKEBagEnd& local,
               const IKEBagEnd& remote, int origin_id)
    : label_(label), parameters_(&parameters), local_(local), remote_(remote), origin_id_(origin_id) {}

bool IKEBag::Equal(const IKEBag& other) const {
  if (label_ == other.label_) return true;
  bool pre_shared = parameters_->PreShared();
  return pre_shared == other.parameters_->PreShared() && SameTunnel(local_.tunnel, other.local_.tunnel) &&
         SameTunnel(remote_.tunnel, other.remote_.tunnel) && local_.address->Equal(*other.local_.address) &&
         remote_.address->Equal(*other.remote_.address) && local_.certificate->Equal(*other.local_.certificate) &&
         (pre_shared || remote_.certificate->Equal(*other.remote_.certificate));
}

const char* IKEBag::Key() const {
  const TList<CertData>* data = local_.certificate->Data();
  if (local_.certificate->IPsecType() != IPSEC_MANUAL || data == nullptr || data->Empty()) return nullptr;
  return data->Head()->Data()->Text();
}

// Addresses are counted in 64 bits, so a range that ends at
// 255.255.255.255 ends the walk instead of wrapping around.
int IKEBag::GenerateIKEPreshared(std::ostream& out) const {
  if (!parameters_->PreShared()) return 0;
  out << "\n# IKEconf RULE label \"" << label_ << "\"\n";
  int status = 0;
  const char* key = Key();
  if (key == nullptr) {
    key = "???";
    status = kInvalidIkeParameters;
  }
  std::unique_ptr<TList<Range>> locals = Ordered(*local_.address);
  std::unique_ptr<TList<Range>> remotes = Ordered(*remote_.address);
  int budget = kPresharedBudget;
  for (TList_Cell<Range>* l = locals->Head(); l != nullptr; l = l->Next()) {
    const Range& local_range = *l->Data();
    for (uint64_t local = local_range.Start(); local <= local_range.End(); ++local) {
      for (TList_Cell<Range>* r = remotes->Head(); r != nullptr; r = r->Next()) {
        const Range& remote_range = *r->Data();
        uint64_t remote = remote_range.Start();
        for (; remote <= remote_range.End() && budget > 0; ++remote, --budget)
          Entry(out, static_cast<uint32_t>(local), static_cast<uint32_t>(remote), key);
        if (remote > remote_range.End()) continue;
        Skipping(out, static_cast<uint32_t>(local), local_range, static_cast<uint32_t>(remote), remote_range);
        if (status == 0) status = kTooManyResults;
        break;
      }
    }
  }
  return status;
}
