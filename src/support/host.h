// Host is the one place where the compiler asks about the machine it
// compiles for: which network devices exist with which addresses, which
// operating system release runs, whether the kernel is 64-bit, which keys
// and identities are local and which encryption modules are there.  The
// answers come from the running system, or from a host description file
// when FERROWALL_HOST names one, so that a screen can be compiled on another
// machine and every test can describe the host it needs.
#ifndef FW_SUPPORT_HOST_H
#define FW_SUPPORT_HOST_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// One IPv4 address of a device, both words in network byte order.
struct HostAddress {
  uint32_t address;
  uint32_t netmask;
};

class Host {
 public:
  virtual ~Host() = default;

  // Whether the network device exists; a logical unit ("qfe0:1") asks for
  // its physical device.  A name that can't be a device name never exists.
  virtual bool InterfaceExists(const std::string& name) const = 0;
  // The addresses of the physical device `name` and of its logical units, in
  // the host's order; loopback addresses and unset addresses are left out.
  virtual std::vector<HostAddress> InterfaceAddresses(const std::string& name) const = 0;
  // The operating system release, 6 to 9, or 0 when unknown.
  virtual int Release() const = 0;
  // Whether the kernel is 64-bit.
  virtual bool Wide() const = 0;
  // The key ids of the SKIP key device's local keys in name space `nsid`.
  virtual std::vector<std::vector<unsigned char>> SkipLocalKeys(int nsid) const = 0;
  // Whether the IPsec module runs algorithm `value` for the kernel request
  // `operation` (15 encryption, 14 authentication).  The product's modules
  // are taken to be there unless the host says otherwise.
  virtual bool IpsecAlgorithmLoaded(int, int) const { return true; }
  // Whether the SKIP key device supports algorithm `value` of `type` (0 key,
  // 1 data, 2 MAC) in SKIP `version`; likewise taken to be there.
  virtual bool SkipAlgorithmSupported(int, int, int) const { return true; }
  // The first IPv4 address of a host name, in network byte order.
  virtual bool HostAddressOf(const std::string& name, uint32_t* address) const = 0;
  // 1 when the host holds a private IKE identity that one of `includes` and
  // none of `excludes` names, 0 when it holds none, -1 when it can't tell.
  virtual int LocalIdentity(const std::vector<std::string>& includes,
                            const std::vector<std::string>& excludes) const = 0;

  // Whether a name can be the name of a network device.  Device names end
  // up in file names, so paths and dots are refused.
  static bool ValidDeviceName(const std::string& name);
  // The physical device of a name with a logical unit.
  static std::string PhysicalDevice(const std::string& name);

  // Chooses the host of this run: the description named by FERROWALL_HOST,
  // else the running system.  The encryption questions of the host queries
  // are answered by the chosen host from then on.  False, with a one-line reason in `error`, when
  // the description can't be read.
  static bool Select(std::string* error);
  // The host chosen by Select or Use; the running system if neither was
  // called, without taking over the encryption questions.
  static const Host& Current();
  // Makes `host` the current host, so that a test can describe the machine
  // it needs; null puts the running system back.
  static void Use(std::unique_ptr<Host> host);
};

#endif
