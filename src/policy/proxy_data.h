// ProxyData is the proxy clause of a rule: the application proxy of the
// screen that takes the rule's traffic instead of the packet filter, and
// the options of that proxy.  This class itself stands for the Telnet
// proxy, which has no options; the FTP, HTTP and SMTP proxies derive from
// it.  A rule owns its ProxyData and copies it with Clone.
#ifndef FW_POLICY_PROXY_DATA_H
#define FW_POLICY_PROXY_DATA_H

#include <ostream>

enum Proxy_Type { PROXY_FTP = 0, PROXY_HTTP = 1, PROXY_SMTP = 2, PROXY_TELNET = 3 };
enum Proxy_On_Off { PROXY_OFF = 0, PROXY_ON = 1 };

class ProxyData {
 public:
  ProxyData() = default;
  virtual ~ProxyData() = default;
  ProxyData& operator=(const ProxyData&) = delete;

  virtual Proxy_Type Type() const;
  virtual ProxyData* Clone() const;
  // The proxy's word and the words of the options that are on, without a
  // line end: the text of listings and of the proxies' own files.
  virtual std::ostream& Enumerate(std::ostream& out) const;
  // The clause as the language writes it, each option present, with "!"
  // in front of one that is off; it starts with a blank.
  virtual std::ostream& Print(std::ostream& out) const;

 protected:
  ProxyData(const ProxyData&) = default;

  // " WORD" for each option, " ! WORD" for one that is off.
  static std::ostream& PrintOptions(std::ostream& out, const char* const words[], const Proxy_On_Off values[],
                                    int count);
  // The words of the options that are on, each with a blank in front, or
  // with `blank_behind` each followed by one.
  static std::ostream& EnumerateOptions(std::ostream& out, const char* const words[],
                                        const Proxy_On_Off values[], int count, bool blank_behind);
};

#endif
