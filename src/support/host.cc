#include "support/host.h"

#include <cstdlib>
#include <memory>
#include <utility>

#include "support/host_description.h"
#include "support/linux_host.h"

namespace {

std::unique_ptr<Host>& Chosen() {
  static std::unique_ptr<Host> host;
  return host;
}

}  // namespace

bool Host::ValidDeviceName(const std::string& name) {
  return !name.empty() && name.find('/') == std::string::npos && name.find('.') == std::string::npos;
}

std::string Host::PhysicalDevice(const std::string& name) { return name.substr(0, name.find(':')); }

bool Host::Select(std::string* error) {
  const char* path = getenv("FERROWALL_HOST");
  if (path == nullptr || *path == '\0') {
    Chosen() = std::make_unique<LinuxHost>();
    return true;
  }
  auto description = std::make_unique<HostDescription>();
  if (!description->Read(path, error)) return false;
  Chosen() = std::move(description);
  return true;
}

void Host::Use(std::unique_ptr<Host> host) {
  Chosen() = host ? std::move(host) : std::make_unique<LinuxHost>();
}

const Host& Host::Current() {
  if (!Chosen()) Chosen() = std::make_unique<LinuxHost>();
  return *Chosen();
}
