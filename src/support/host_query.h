// The questions the compiler asks its host about encryption: whether the
// kernel is 64-bit, which algorithms the IPsec and SKIP kernel modules run,
// and which SKIP key ids are local.  The answers come from a small table of
// host devices (HostDevices) that can be replaced as a whole, so a test or a
// host description can stand in for the machine.  Until one is installed,
// every device reports that it is not there.
//
// Results follow the support convention: the screenadm_ questions answer 1
// or 0; a device call answers 0 or more on success and below 0, with errno
// set, on failure.
#ifndef FW_SUPPORT_HOST_QUERY_H
#define FW_SUPPORT_HOST_QUERY_H

#include <cstdint>

#include "support/box_id.h"

enum { SKIP_ALG_VALUES = 256, SKIP_LOCAL_KEYS_PER_REQUEST = 200 };

// Requests of the SKIP key device for its lists of supported algorithms.
enum { SKIP_LIST_KEY_ALGS = 5, SKIP_LIST_TRAFFIC_ALGS = 4 };

// One local key of the SKIP key manager.
struct skip_local_key {
  int length;
  unsigned char keyid[SKIP_KEYID_MAX];
};

// The host's devices as the compiler sees them.  Every member must be set.
struct HostDevices {
  // 1 when the kernel runs the 64-bit instruction set, else 0.
  int (*is64)();
  // Asks the IPsec module whether it runs `value` for `operation` (15
  // encryption, 14 authentication).  The module's answer, or <0 on failure.
  int (*ipsec_alg_query)(int operation, int value);
  // Reads the answer of the SKIP key device to `request` into three arrays of
  // SKIP_ALG_VALUES words, nonzero for a supported value: for the key
  // request the version 2 and the version 1 key lists, for the traffic
  // request the version 2 and version 1 data lists and the MAC list.
  // 0, or <0 on failure.
  int (*skip_alg_lists)(int request, uint32_t lists[3][SKIP_ALG_VALUES]);
  // Reads at most `wanted` local keys of name space `nsid`, beginning at
  // index `first`.  The number read, or <0 on failure.
  int (*skip_local_keys)(int nsid, int first, int wanted, skip_local_key* keys);
  // The first IPv4 address of a host name, in network order.  1 when found.
  int (*host_address)(const char* name, unsigned char address[4]);
};

// Installs the devices to ask from now on; null puts back the table that
// answers "not there".  Knowledge read from the earlier devices is dropped.
void host_query_use(const HostDevices* devices);

// The devices in use.
const HostDevices& host_query_devices();

// 1 on a 64-bit kernel.
int screenadm_is64();

// Whether the kernel can run algorithm `value` of `type` (0 key, 1 data,
// 2 MAC, 4 encryption, 5 authentication) for the family word "SKIP" or
// "IPsec" and the SKIP version.  An IPsec module that cannot be asked is
// reported on stderr and lets the algorithm pass.
int screenadm_is_module_loaded(int value, const char* family, int type, int version);

// The SKIP half of that question: an entry of the supported lists.
int screenadm_skip_alg_supported(int value, int type, int version);

// 1 when both lists of supported SKIP algorithms were read from the key
// device; only then does the device know the product's extra algorithms.
int screenadm_skip_lists_read();

// Whether the SKIP key manager holds a local key for the box id.  A name
// space id of 12 or more gives 0.
int screenadm_skip_local_id(const screen_box_id& box);

#endif
