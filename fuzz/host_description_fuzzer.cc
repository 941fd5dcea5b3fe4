// Fuzz target: the host description reader, and the questions a compile
// asks of what it read.
#include <string>

#include "support/host_description.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  HostDescription host;
  std::string error;
  if (!host.Parse(text, "host", &error)) return 0;
  for (const char* device : {"le0", "qfe0", "qfe0:1", "eth0"}) {
    host.InterfaceExists(device);
    host.InterfaceAddresses(device);
  }
  host.SkipLocalKeys(1);
  host.IpsecAlgorithmLoaded(15, 3);
  host.SkipAlgorithmSupported(1, 0, 2);
  host.LocalIdentity({"CN=gate"}, {});
  return 0;
}
