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
  // Whether the SKIP key device holds a local key with this name space id
  // and key id.
  virtual bool SkipLocalKey(int nsid, const std::vector<unsigned char>& key_id) const = 0;
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
  // else the running system.  False, with a one-line reason in `error`, when
  // the description can't be read.
  static bool Select(std::string* error);
  // The host chosen by Select; the running system if Select wasn't called.
  static const Host& Current();
  // Makes `host` the current host, so that a test can describe the machine
  // it needs; null puts the running system back.
  static void Use(std::unique_ptr<Host> host);
};

#endif
