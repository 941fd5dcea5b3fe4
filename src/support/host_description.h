// HostDescription answers the host questions from a text file instead of
// the running system.  One statement a line, words separated by blanks,
// "#" to the end of a line a comment:
//
//   interface NAME [A.B.C.D/N ...]   a device and its addresses, in order
//   release N                        the operating system release
//   wide                             the kernel is 64-bit
//   skip-local-key NSID HEX          a local SKIP key
//   ike-local-id TEXT                a private IKE identity (rest of line)
//   ipsec-unavailable NAME           the IPsec module of NAME isn't loaded
//   skip-unavailable NAME            the SKIP algorithm NAME isn't supported
//
// A device that isn't listed doesn't exist.
#ifndef FW_SUPPORT_HOST_DESCRIPTION_H
#define FW_SUPPORT_HOST_DESCRIPTION_H

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/host.h"

class HostDescription : public Host {
 public:
  // Reads the file; false with "PATH:LINE: reason" (or "PATH: reason") in
  // `error` when it can't be read or a line is malformed.
  bool Read(const std::string& path, std::string* error);
  // The same from text already in memory; `path` only names it in errors.
  bool Parse(const std::string& text, const std::string& path, std::string* error);

  bool InterfaceExists(const std::string& name) const override;
  std::vector<HostAddress> InterfaceAddresses(const std::string& name) const override;
  int Release() const override { return release_; }
  bool Wide() const override { return wide_; }
  std::vector<std::vector<unsigned char>> SkipLocalKeys(int nsid) const override;
  bool IpsecAlgorithmLoaded(int operation, int value) const override;
  bool SkipAlgorithmSupported(int value, int type, int version) const override;
  // A described host resolves no host names.
  bool HostAddressOf(const std::string&, uint32_t*) const override { return false; }
  int LocalIdentity(const std::vector<std::string>& includes,
                    const std::vector<std::string>& excludes) const override;
  bool IpsecUnavailable(const std::string& algorithm) const { return ipsec_unavailable_.count(algorithm) > 0; }
  bool SkipUnavailable(const std::string& algorithm) const { return skip_unavailable_.count(algorithm) > 0; }

 private:
  struct Device {
    std::string name;
    std::vector<HostAddress> addresses;
  };
  // Each returns an empty string or the reason the line is refused.
  std::string ParseLine(const std::string& line);
  std::string ParseInterface(const std::vector<std::string>& words);
  std::string ParseRelease(const std::vector<std::string>& words);
  std::string ParseSkipLocalKey(const std::vector<std::string>& words);

  std::vector<Device> devices_;
  int release_ = 0;
  bool wide_ = false;
  std::vector<std::pair<int, std::vector<unsigned char>>> skip_keys_;
  std::vector<std::string> ike_identities_;
  std::set<std::string> ipsec_unavailable_;
  std::set<std::string> skip_unavailable_;
};

#endif
