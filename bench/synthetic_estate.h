// A synthetic estate for timing whole compiles: one screen "gate" with a
// given number of interfaces, address objects, services and rules, and the
// host description that goes with it.  The text is what an administrator
// would write; sizes are what a large site has.
#ifndef FW_BENCH_SYNTHETIC_ESTATE_H
#define FW_BENCH_SYNTHETIC_ESTATE_H

#include <sstream>
#include <string>

struct EstateSize {
  int interfaces;
  int addresses;
  int services;
  int rules;
};

// The engines that the built-in service "*" names, and an IP engine for the
// services of the screen's own traffic.
inline void WriteStateEngines(std::ostream& out) {
  out << "tcp_engine STATE_ENGINE ;\nudp_engine STATE_ENGINE ;\nicmp_engine STATE_ENGINE ;\nip_engine STATE_ENGINE ;\n";
  const char* const tcp[] = {"tcp", "tcpall", "ftp", "rsh", "realaudio", "pmap_tcp", "rpc_tcp"};
  const char* const udp[] = {"udp", "udpall", "udp_datagram", "dns", "rpc_udp", "pmap_udp", "nis", "pmap_nis"};
  const char* const icmp[] = {"icmp", "ping", "ipmobile"};
  int rank = 0;
  for (const char* engine : tcp) out << engine << " STATE_ENGINE tcp_engine port FORWARD 1 " << ++rank << " 0xffff 0 ;\n";
  for (const char* engine : udp)
    out << engine << " STATE_ENGINE udp_engine port FORWARD 2 " << ++rank << " 0xffff 3 60 -1 0 ;\n";
  for (const char* engine : icmp) out << engine << " STATE_ENGINE icmp_engine type FORWARD 3 " << ++rank << " 0xff 0 ;\n";
  out << "ip STATE_ENGINE ip_engine protocol FORWARD 4 " << ++rank << " 0xff 0 ;\n";
}

// Interface k protects 10.k.0.0/16; the last one leads to everything else.
inline std::string EstateText(const EstateSize& size) {
  std::ostringstream out;
  WriteStateEngines(out);
  out << "\"remote administration\" SERVICE tcp 3852 ;\nskip SERVICE ip 57 ;\n";
  for (int s = 0; s < size.services; ++s) out << "svc" << s << " SERVICE tcp " << 1000 + s << " udp " << 1000 + s << " ;\n";
  int networks = size.interfaces - 1;
  for (int k = 0; k < networks; ++k) out << "net" << k << " ADDRESS 10." << k << ".0.0/16 ;\n";
  out << "world ADDRESS ";
  for (int k = 0; k < networks; ++k) out << "! net" << k << ' ';
  out << ";\n";
  for (int a = 0; a < size.addresses; ++a) {
    int k = a % networks;
    out << "host" << a << " ADDRESS 10." << k << '.' << (a / 250) % 250 + 1 << '.' << a % 250 + 1 << " ;\n";
  }
  out << "gate SCREEN ADMIN_IP 10.0.0.1 ;\n";
  out << "if0 INTERFACE ADMIN net0 SCREEN gate ;\n";
  for (int k = 1; k < networks; ++k) out << "if" << k << " INTERFACE GWY net" << k << " COMPLETE SCREEN gate ;\n";
  out << "if" << networks << " INTERFACE GWY world LOG_SUMMARY SCREEN gate ;\n";
  for (int r = 0; r < size.rules; ++r) {
    out << "RULE svc" << r % size.services << " host" << r % size.addresses << ' ';
    if (r % 7 == 0) out << "world"; else out << "host" << (r * 13 + 5) % size.addresses;
    out << (r % 5 == 0 ? " DENY LOG_DETAIL ICMP_HOST_UNREACHABLE ;\n" : " ALLOW LOG_SUMMARY ;\n");
  }
  return out.str();
}

inline std::string EstateHost(const EstateSize& size) {
  std::ostringstream out;
  for (int k = 0; k < size.interfaces - 1; ++k) out << "interface if" << k << " 10." << k << ".0.1/16\n";
  out << "interface if" << size.interfaces - 1 << " 192.0.2.1/24\n";
  return out.str();
}

#endif
