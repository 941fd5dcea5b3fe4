#include "support/host_query.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

// The host without the product's kernel modules: no device can be opened,
// no name is known, and the kernel is taken to be 32-bit.
int absent_is64() { return 0; }

int absent_device() {
  errno = ENOENT;
  return -1;
}

int absent_ipsec_alg_query(int, int) { return absent_device(); }
int absent_skip_alg_lists(int, uint32_t[3][SKIP_ALG_VALUES]) { return absent_device(); }
int absent_skip_local_keys(int, int, int, skip_local_key*) { return absent_device(); }
int absent_host_address(const char*, unsigned char[4]) { return 0; }

const HostDevices kAbsentDevices = {absent_is64, absent_ipsec_alg_query, absent_skip_alg_lists,
                                    absent_skip_local_keys, absent_host_address};

const HostDevices* devices = &kAbsentDevices;
unsigned generation = 0;

// The SKIP key device's lists of supported algorithms, read once per set of
// devices.  Index 0 of the key and data lists is version 2, index 1
// version 1, as the device answers them.
struct SkipSupported {
  bool valid = false;
  unsigned generation = 0;
  bool read_both = false;
  uint32_t key[3][SKIP_ALG_VALUES];
  uint32_t traffic[3][SKIP_ALG_VALUES];
};

SkipSupported supported;

enum { LIST_V2 = 0, LIST_V1 = 1, LIST_MAC = 2 };
enum { IPSEC_OP_AUTHENTICATION = 14, IPSEC_OP_ENCRYPTION = 15 };
enum { MAC_MD5 = 1, MAC_MD5_NAT = 251 };

bool read_lists(int request, uint32_t lists[3][SKIP_ALG_VALUES]) {
  if (devices->skip_alg_lists(request, lists) == 0) return true;
  memset(lists, 0, sizeof(uint32_t) * 3 * SKIP_ALG_VALUES);
  return false;
}

const SkipSupported& skip_supported() {
  if (supported.valid && supported.generation == generation) return supported;
  bool key_read = read_lists(SKIP_LIST_KEY_ALGS, supported.key);
  bool traffic_read = read_lists(SKIP_LIST_TRAFFIC_ALGS, supported.traffic);
  // Data without encryption is always possible in version 2.
  if (traffic_read) supported.traffic[LIST_V2][0] = 1;
  supported.read_both = key_read && traffic_read;
  if (supported.read_both) {
    supported.traffic[LIST_MAC][MAC_MD5] = 1;
    supported.traffic[LIST_MAC][MAC_MD5_NAT] = 1;
  }
  supported.valid = true;
  supported.generation = generation;
  return supported;
}

// The index of the local key that matches, or -1.  The key device answers
// in pages; a full page without a match asks for the next one.
int skip_get_local_key(const screen_box_id& box) {
  skip_local_key keys[SKIP_LOCAL_KEYS_PER_REQUEST];
  int first = 0;
  for (;;) {
    int count = devices->skip_local_keys(box.nsid, first, SKIP_LOCAL_KEYS_PER_REQUEST, keys);
    if (count < 0) return -1;
    for (int i = 0; i < count && i < SKIP_LOCAL_KEYS_PER_REQUEST; ++i) {
      const skip_local_key& key = keys[i];
      if (key.length < SKIP_KEYID_MAX && key.length == box.keyid.length &&
          memcmp(key.keyid, box.keyid.bytes, key.length) == 0)
        return first + i;
    }
    if (count < SKIP_LOCAL_KEYS_PER_REQUEST) return -1;
    first += count;
  }
}

int ipsec_module_loaded(int value, int type) {
  if (type != 4 && type != 5) return 0;
  int operation = type == 4 ? IPSEC_OP_ENCRYPTION : IPSEC_OP_AUTHENTICATION;
  int answer = devices->ipsec_alg_query(operation, value);
  if (answer >= 0) return answer;
  // A module that cannot be asked must not stop a compile that may well be
  // meant for another machine.
  perror("/dev/screen_ipsec");
  return 1;
}

}  // namespace

void host_query_use(const HostDevices* replacement) {
  devices = replacement != nullptr ? replacement : &kAbsentDevices;
  ++generation;
}

const HostDevices& host_query_devices() { return *devices; }

int screenadm_is64() { return devices->is64() != 0; }

int screenadm_skip_alg_supported(int value, int type, int version) {
  if (value < 0 || value >= SKIP_ALG_VALUES) return 0;
  const SkipSupported& lists = skip_supported();
  int list = version == 2 ? LIST_V2 : LIST_V1;
  switch (type) {
    case 0:
      return lists.key[list][value] != 0;
    case 1:
      return (version == 1 || version == 2) && lists.traffic[list][value] != 0;
    case 2:
      if (value == 0) return 1;
      return version == 2 && lists.traffic[LIST_MAC][value] != 0;
    default:
      return 0;
  }
}

int screenadm_skip_lists_read() { return skip_supported().read_both; }

int screenadm_is_module_loaded(int value, const char* family, int type, int version) {
  if (family != nullptr && strcmp(family, "SKIP") == 0)
    return screenadm_skip_alg_supported(value, type, version);
  return ipsec_module_loaded(value, type);
}

int screenadm_skip_local_id(const screen_box_id& box) {
  if (box.nsid >= SKIP_NSID_COUNT) return 0;
  return skip_get_local_key(box) >= 0;
}
