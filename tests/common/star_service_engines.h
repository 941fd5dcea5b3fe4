// The state engines that the built-in service "*" names, which every
// configuration that gets through verification must define.
#ifndef FW_TESTS_COMMON_STAR_SERVICE_ENGINES_H
#define FW_TESTS_COMMON_STAR_SERVICE_ENGINES_H

const char kStarServiceEngines[] =
    "tcp_engine STATE_ENGINE ;\n"
    "udp_engine STATE_ENGINE ;\n"
    "icmp_engine STATE_ENGINE ;\n"
    "tcp STATE_ENGINE tcp_engine port FORWARD 1 1 0xffff 0 ;\n"
    "tcpall STATE_ENGINE tcp_engine port FORWARD 1 2 0xffff 0 ;\n"
    "ftp STATE_ENGINE tcp_engine port FORWARD REVERSE 1 3 0xffff 0 ;\n"
    "rsh STATE_ENGINE tcp_engine port FORWARD REVERSE 1 4 0xffff 0 ;\n"
    "realaudio STATE_ENGINE tcp_engine port FORWARD REVERSE 1 5 0xffff 0 ;\n"
    "pmap_tcp STATE_ENGINE tcp_engine program FORWARD 1 6 0xffffffff 0 ;\n"
    "rpc_tcp STATE_ENGINE tcp_engine program FORWARD 1 7 0xffffffff 0 ;\n"
    "udp STATE_ENGINE udp_engine port FORWARD 2 1 0xffff 3 60 -1 0 ;\n"
    "udpall STATE_ENGINE udp_engine port FORWARD 2 2 0xffff 3 60 -1 0 ;\n"
    "udp_datagram STATE_ENGINE udp_engine port FORWARD 2 3 0xffff 3 60 -1 0 ;\n"
    "dns STATE_ENGINE udp_engine port FORWARD 2 4 0xffff 3 60 -1 0 ;\n"
    "rpc_udp STATE_ENGINE udp_engine program FORWARD 2 5 0xffffffff 3 60 -1 0 ;\n"
    "pmap_udp STATE_ENGINE udp_engine program FORWARD 2 6 0xffffffff 3 60 -1 0 ;\n"
    "nis STATE_ENGINE udp_engine program FORWARD 2 7 0xffffffff 3 60 -1 0 ;\n"
    "pmap_nis STATE_ENGINE udp_engine program FORWARD 2 8 0xffffffff 3 60 -1 0 ;\n"
    "icmp STATE_ENGINE icmp_engine type FORWARD REVERSE 3 1 0xff 0 ;\n"
    "ping STATE_ENGINE icmp_engine type FORWARD REVERSE 3 2 0xff 0 ;\n"
    "ipmobile STATE_ENGINE icmp_engine type FORWARD 3 3 0xff 0 ;\n";

#endif
