#include "support/host.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "support/host_description.h"
#include "support/host_query.h"
#include "support/linux_host.h"

namespace {

std::unique_ptr<Host>& Chosen() {
  static std::unique_ptr<Host> host;
  return host;
}

// The devices of the encryption modules, as the chosen host answers for them.
int HostIs64() { return Host::Current().Wide() ? 1 : 0; }

int HostIpsecQuery(int operation, int value) { return Host::Current().IpsecAlgorithmLoaded(operation, value); }

// The key device answers the key request with the version 2 and version 1
// key lists, the traffic request with the version 2 and version 1 data lists
// and the MAC list.
int HostSkipLists(int request, uint32_t lists[3][SKIP_ALG_VALUES]) {
  struct List {
    int type;
    int version;
  };
  const List key_lists[3] = {{0, 2}, {0, 1}, {-1, 0}};
  const List traffic_lists[3] = {{1, 2}, {1, 1}, {2, 2}};
  const List* answer = request == SKIP_LIST_KEY_ALGS ? key_lists : traffic_lists;
  for (int list = 0; list < 3; ++list)
    for (int value = 0; value < SKIP_ALG_VALUES; ++value)
      lists[list][value] = answer[list].type >= 0 &&
                           Host::Current().SkipAlgorithmSupported(value, answer[list].type, answer[list].version);
  return 0;
}

int HostSkipLocalKeys(int nsid, int first, int wanted, skip_local_key* keys) {
  std::vector<std::vector<unsigned char>> local = Host::Current().SkipLocalKeys(nsid);
  int count = 0;
  for (size_t at = first; at < local.size() && count < wanted; ++at, ++count) {
    keys[count].length = static_cast<int>(std::min<size_t>(local[at].size(), SKIP_KEYID_MAX));
    std::copy(local[at].begin(), local[at].begin() + keys[count].length, keys[count].keyid);
  }
  return count;
}

int HostAddressQuery(const char* name, unsigned char address[4]) {
  uint32_t found;
  if (!Host::Current().HostAddressOf(name, &found)) return 0;
  std::memcpy(address, &found, 4);
  return 1;
}

const HostDevices kHostDevices = {HostIs64, HostIpsecQuery, HostSkipLists, HostSkipLocalKeys, HostAddressQuery};

void Choose(std::unique_ptr<Host> host) {
  Chosen() = std::move(host);
  host_query_use(&kHostDevices);
}

}  // namespace

bool Host::ValidDeviceName(const std::string& name) {
  return !name.empty() && name.find('/') == std::string::npos && name.find('.') == std::string::npos;
}

std::string Host::PhysicalDevice(const std::string& name) { return name.substr(0, name.find(':')); }

bool Host::Select(std::string* error) {
  const char* path = getenv("FERROWALL_HOST");
  if (path == nullptr || *path == '\0') {
    Choose(std::make_unique<LinuxHost>());
    return true;
  }
  auto description = std::make_unique<HostDescription>();
  if (!description->Read(path, error)) return false;
  Choose(std::move(description));
  return true;
}

void Host::Use(std::unique_ptr<Host> host) { Choose(host ? std::move(host) : std::make_unique<LinuxHost>()); }

// Without a choice the running system answers the interface questions;
// the encryption devices stay as they were until a host is chosen.
const Host& Host::Current() {
  if (!Chosen()) Chosen() = std::make_unique<LinuxHost>();
  return *Chosen();
}
