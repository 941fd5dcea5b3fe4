#include "support/linux_host.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/utsname.h>

#include <cstring>
#include <string>

#include "support/settings.h"

namespace {

// What the certificate library is handed: the identities a specification
// includes and those it excludes, each a null-terminated array.
struct CertificateSpecification {
  char** include;
  unsigned include_count;
  char** exclude;
  unsigned exclude_count;
};

using InitFunction = int (*)(int, int);
using FindFunction = int (*)(CertificateSpecification*);

// Loads the library on first use; a failure is remembered for the run.
FindFunction CertificateLibrary() {
  static bool tried = false;
  static FindFunction find = nullptr;
  if (tried) return find;
  tried = true;
  std::string path = std::string(lib_path) + "/libcertlib.so.1";
  void* library = dlopen(path.c_str(), RTLD_LAZY);
  if (library == nullptr) return nullptr;
  auto init = reinterpret_cast<InitFunction>(dlsym(library, "certlib_init"));
  auto found = reinterpret_cast<FindFunction>(dlsym(library, "certlib_find_local_ident"));
  if (init == nullptr || found == nullptr) return nullptr;
  init(1, 5);
  find = found;
  return find;
}

std::vector<char*> TextArray(const std::vector<std::string>& texts) {
  std::vector<char*> array;
  for (const std::string& text : texts) array.push_back(const_cast<char*>(text.c_str()));
  array.push_back(nullptr);
  return array;
}

}  // namespace

bool LinuxHost::InterfaceExists(const std::string& name) const {
  return ValidDeviceName(name) && if_nametoindex(PhysicalDevice(name).c_str()) != 0;
}

std::vector<HostAddress> LinuxHost::InterfaceAddresses(const std::string& name) const {
  std::vector<HostAddress> addresses;
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0) return addresses;
  for (ifaddrs* entry = all; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET) continue;
    if (PhysicalDevice(entry->ifa_name) != name) continue;
    uint32_t address = reinterpret_cast<sockaddr_in*>(entry->ifa_addr)->sin_addr.s_addr;
    uint32_t netmask =
        entry->ifa_netmask != nullptr ? reinterpret_cast<sockaddr_in*>(entry->ifa_netmask)->sin_addr.s_addr : 0;
    bool loopback = (ntohl(address) >> 24) == 127;
    if (!loopback && address != 0) addresses.push_back({address, netmask});
  }
  freeifaddrs(all);
  return addresses;
}

int LinuxHost::ReleaseOf(const char* release_text) {
  const char* point = strrchr(release_text, '.');
  if (point == nullptr || strlen(point + 1) != 1) return 0;
  char digit = point[1];
  return digit >= '6' && digit <= '9' ? digit - '0' : 0;
}

int LinuxHost::Release() const {
  utsname names;
  return uname(&names) == 0 ? ReleaseOf(names.release) : 0;
}

bool LinuxHost::Wide() const {
  utsname names;
  return uname(&names) == 0 && strstr(names.machine, "64") != nullptr;
}

std::vector<std::vector<unsigned char>> LinuxHost::SkipLocalKeys(int) const { return {}; }

bool LinuxHost::HostAddressOf(const std::string& name, uint32_t* address) const {
  addrinfo hints{};
  hints.ai_family = AF_INET;
  addrinfo* found = nullptr;
  if (getaddrinfo(name.c_str(), nullptr, &hints, &found) != 0 || found == nullptr) return false;
  *address = reinterpret_cast<sockaddr_in*>(found->ai_addr)->sin_addr.s_addr;
  freeaddrinfo(found);
  return true;
}

int LinuxHost::LocalIdentity(const std::vector<std::string>& includes,
                             const std::vector<std::string>& excludes) const {
  FindFunction find = CertificateLibrary();
  if (find == nullptr) return -1;
  std::vector<char*> include = TextArray(includes);
  std::vector<char*> exclude = TextArray(excludes);
  CertificateSpecification specification{include.data(), static_cast<unsigned>(includes.size()),
                                          exclude.data(), static_cast<unsigned>(excludes.size())};
  return find(&specification) != 0 ? 1 : 0;
}
