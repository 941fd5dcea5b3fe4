#include "policy/policy.h"

#include "driver/fw_file.h"

Policy::Policy(FWFile* file) : Entity(file->Versname(), nullptr, nullptr, 0), file_(file) {}

Policy::~Policy() {
  delete file_;
  delete load_file_;
  delete ether_rules_;
}

void Policy::LoadFile(FWFile* file) {
  if (file == load_file_) return;
  delete load_file_;
  load_file_ = file;
}

int Policy::Verify(Ferrowall*, std::ostream&, Registry&) { return 0; }

void Policy::SetHARules(Entity&) {}

TList<Entity>* Policy::GenerateAdminRules(Ferrowall&, Registry&) { return new TList<Entity>; }

int Policy::GenerateOutput(Registry&) { return 0; }

int Policy::GenerateMoreOutput(Ferrowall*, Registry&, TList<Entity>*, TList<Entity>*) { return 0; }
