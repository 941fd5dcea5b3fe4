#include "policy/proxy_data_ftp.h"

namespace {

const char* const kCommandWords[] = {"FTP_GET",    "FTP_PUT",        "FTP_CHDIR", "FTP_MKDIR",
                                     "FTP_RENAME", "FTP_REMOVE_DIR", "FTP_DELETE"};

}  // namespace

Proxy_Type ProxyDataFTP::Type() const { return PROXY_FTP; }

ProxyData* ProxyDataFTP::Clone() const { return new ProxyDataFTP(commands_); }

std::ostream& ProxyDataFTP::Enumerate(std::ostream& out) const {
  return EnumerateOptions(out << " PROXY_FTP", kCommandWords, commands_.data(), commands_.size(), false);
}

std::ostream& ProxyDataFTP::Print(std::ostream& out) const {
  return PrintOptions(out << " PROXY_FTP", kCommandWords, commands_.data(), commands_.size());
}
