// LinuxHost answers the host questions from the running Linux system.  The
// firewall's own key device doesn't exist here, so no SKIP key is local; the
// IKE identities come from the product's certificate library when it is
// installed under the library directory.
#ifndef FW_SUPPORT_LINUX_HOST_H
#define FW_SUPPORT_LINUX_HOST_H

#include "support/host.h"

class LinuxHost : public Host {
 public:
  bool InterfaceExists(const std::string& name) const override;
  std::vector<HostAddress> InterfaceAddresses(const std::string& name) const override;
  int Release() const override;
  bool Wide() const override;
  std::vector<std::vector<unsigned char>> SkipLocalKeys(int nsid) const override;
  bool HostAddressOf(const std::string& name, uint32_t* address) const override;
  int LocalIdentity(const std::vector<std::string>& includes,
                    const std::vector<std::string>& excludes) const override;

  // The release number that a kernel release text means: one digit from 6
  // to 9 behind its last point, else 0.
  static int ReleaseOf(const char* release_text);
};

#endif
