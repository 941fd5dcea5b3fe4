#include "crypto/security_parameters_man.h"

#include <cstring>
#include <utility>

#include "crypto/ipsec_man_parameters.h"
#include "screen/ferrowall.h"

namespace {

const char kNoFlow[] = "0 0 0 0 0 \"NONE\" \"NONE\" \"NONE\" ";

bool NamesScreen(const Entity* reference, const Ferrowall& screen) {
  return reference != nullptr && strcmp(reference->Name(), screen.VirtualName()) == 0;
}

IPsecManParameters* CopyOf(const IPsecManParameters* flow) {
  return flow != nullptr ? new IPsecManParameters(*flow) : nullptr;
}

std::ostream& Flow(std::ostream& out, const IPsecManParameters* flow) {
  return flow != nullptr ? flow->GenerateOutput(out) : out << kNoFlow;
}

}  // namespace

SecurityParametersMan::SecurityParametersMan(IPsecManParameters* forward, IPsecManParameters* reverse,
                                             const SecurityEnds& ends)
    : SecurityParameters(IPSEC_MANUAL, ends), forward_(forward), reverse_(reverse) {}

SecurityParametersMan::SecurityParametersMan(const SecurityParametersMan& other)
    : SecurityParameters(other), forward_(CopyOf(other.forward_)) {
  reverse_ = other.Shared() ? forward_ : CopyOf(other.reverse_);
}

SecurityParametersMan::~SecurityParametersMan() {
  ForEachFlow([](IPsecManParameters* flow) { delete flow; });
}

template <class Visit>
void SecurityParametersMan::ForEachFlow(Visit visit) const {
  if (forward_ != nullptr) visit(forward_);
  if (reverse_ != nullptr && !Shared()) visit(reverse_);
}

SecurityParameters* SecurityParametersMan::Clone() const { return new SecurityParametersMan(*this); }

Resolve_Error SecurityParametersMan::Resolve(Config_Objects kind, TList<Entity>& list, const char** name) {
  Resolve_Error answer = SecurityParameters::Resolve(kind, list, name);
  if (answer != RESOLVE_OK || (kind != CO_KEY && kind != CO_ALGORITHM)) return answer;
  ForEachFlow([&](IPsecManParameters* flow) {
    if (answer == RESOLVE_OK) answer = flow->Resolve(kind, list, name);
  });
  return answer;
}

int SecurityParametersMan::Refer(Config_Objects kind, const char* name) const {
  int hit = 0;
  ForEachFlow([&](IPsecManParameters* flow) { hit = hit || flow->Refer(kind, name); });
  return hit || SecurityParameters::Refer(kind, name);
}

void SecurityParametersMan::RenameReference(Config_Objects kind, const char* old_name, const char* new_name) {
  ForEachFlow([&](IPsecManParameters* flow) { flow->RenameReference(kind, old_name, new_name); });
  SecurityParameters::RenameReference(kind, old_name, new_name);
}

std::ostream& SecurityParametersMan::Print(std::ostream& out) const {
  if (Shared()) return PrintEnds(forward_->Print(out << "MANUAL "));
  if (forward_ != nullptr) forward_->Print(out << "MANUAL FORWARD ");
  if (reverse_ != nullptr) reverse_->Print(out << (forward_ == nullptr ? "MANUAL " : "") << "REVERSE ");
  return PrintEnds(out);
}

std::ostream& SecurityParametersMan::Enumerate(std::ostream& out) const {
  out << "IPSEC ";
  if (Shared()) return PrintEnds(forward_->Enumerate(out));
  if (forward_ != nullptr) forward_->Enumerate(out << "FORWARD ");
  if (reverse_ != nullptr) reverse_->Enumerate(out << "REVERSE ");
  return PrintEnds(out);
}

std::ostream& SecurityParametersMan::GenerateOutput(std::ostream& out, SecurityParameters*, unsigned) {
  out << "IPSEC\t" << (Direction() == DIRECTION_DECRYPT ? "1 " : "0 ");
  Flow(out, forward_);
  Flow(out, reverse_);
  return OutputTunnelAddrs(out);
}

Security_Direction SecurityParametersMan::SetDirection(const Ferrowall& screen) {
  Security_Direction found = DIRECTION_UNDECIDED;
  bool source = NamesScreen(SourceScreen(), screen);
  bool destination = NamesScreen(DestinationScreen(), screen);
  if (source != destination) found = source ? DIRECTION_ENCRYPT : DIRECTION_DECRYPT;
  Direction(found);
  return found;
}

void SecurityParametersMan::ReverseDirection() {
  std::swap(forward_, reverse_);
  SecurityParameters::ReverseDirection();
}

void SecurityParametersMan::DumpKeys(std::ostream& out) const {
  ForEachFlow([&](IPsecManParameters* flow) { flow->DumpKeys(out); });
}

int SecurityParametersMan::Conflicts(const SecurityParameters& other) const {
  if (other.Type() != IPSEC_MANUAL) return 0;
  const IPsecManParameters* theirs = static_cast<const SecurityParametersMan&>(other).forward_;
  return forward_ != nullptr && theirs != nullptr ? forward_->Conflicts(*theirs) : 0;
}
