// A host whose encryption devices answer from memory, for the tests of
// everything that asks the host.  Construct one to install it; it removes
// itself when it goes out of scope.
#ifndef FW_TESTS_SUPPORT_FAKE_HOST_DEVICES_H
#define FW_TESTS_SUPPORT_FAKE_HOST_DEVICES_H

#include <cerrno>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/host_query.h"

class FakeHostDevices {
 public:
  FakeHostDevices() {
    current() = this;
    host_query_use(&kDevices);
  }
  ~FakeHostDevices() {
    host_query_use(nullptr);
    current() = nullptr;
  }
  FakeHostDevices(const FakeHostDevices&) = delete;
  FakeHostDevices& operator=(const FakeHostDevices&) = delete;

  // Forgets what was read from the earlier answers, after the test changed them.
  void Reinstall() { host_query_use(&kDevices); }

  int is64 = 0;
  // Answers of the IPsec module by (operation, value); absent ones are 0.
  std::map<std::pair<int, int>, int> ipsec;
  bool ipsec_fails = false;
  // The SKIP key device's algorithm lists by request (5 key, 4 traffic).
  uint32_t key_lists[3][SKIP_ALG_VALUES] = {};
  uint32_t traffic_lists[3][SKIP_ALG_VALUES] = {};
  bool key_lists_fail = false;
  bool traffic_lists_fail = false;
  int skip_list_reads = 0;
  // Local SKIP keys by name space.
  std::map<int, std::vector<skip_local_key>> local_keys;
  int local_key_requests = 0;
  std::map<std::string, std::vector<unsigned char>> hosts;

  void AddLocalKey(int nsid, const std::vector<unsigned char>& keyid) {
    skip_local_key key = {};
    key.length = static_cast<int>(keyid.size());
    memcpy(key.keyid, keyid.data(), keyid.size());
    local_keys[nsid].push_back(key);
  }

 private:
  static FakeHostDevices*& current() {
    static FakeHostDevices* fake = nullptr;
    return fake;
  }

  static int Is64() { return current()->is64; }

  static int IpsecQuery(int operation, int value) {
    if (current()->ipsec_fails) {
      errno = ENXIO;
      return -1;
    }
    auto found = current()->ipsec.find({operation, value});
    return found != current()->ipsec.end() ? found->second : 0;
  }

  static int SkipAlgLists(int request, uint32_t lists[3][SKIP_ALG_VALUES]) {
    FakeHostDevices& fake = *current();
    ++fake.skip_list_reads;
    bool key = request == SKIP_LIST_KEY_ALGS;
    if (key ? fake.key_lists_fail : fake.traffic_lists_fail) {
      errno = EIO;
      return -1;
    }
    memcpy(lists, key ? fake.key_lists : fake.traffic_lists, sizeof fake.key_lists);
    return 0;
  }

  static int SkipLocalKeys(int nsid, int first, int wanted, skip_local_key* keys) {
    FakeHostDevices& fake = *current();
    ++fake.local_key_requests;
    const std::vector<skip_local_key>& all = fake.local_keys[nsid];
    int count = 0;
    for (size_t i = first; i < all.size() && count < wanted; ++i) keys[count++] = all[i];
    return count;
  }

  static int HostAddress(const char* name, unsigned char address[4]) {
    auto found = current()->hosts.find(name);
    if (found == current()->hosts.end()) return 0;
    memcpy(address, found->second.data(), 4);
    return 1;
  }

  static constexpr HostDevices kDevices = {Is64, IpsecQuery, SkipAlgLists, SkipLocalKeys,
                                           HostAddress};
};

#endif
