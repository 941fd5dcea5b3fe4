// The token kinds of the configuration language and the values the scanner
// hands to the parser with them.  A character that is no other token is its
// own kind, by its byte value; 0 is the end of the input.
#ifndef FW_LANG_TOKEN_H
#define FW_LANG_TOKEN_H

// Every reserved word, with the enumerator it becomes (TOK_ and the first
// argument) and its spelling.
#define FW_KEYWORDS(X) \
  X(ADDRESS, "ADDRESS") \
  X(SERVICE, "SERVICE") \
  X(SERVICE_GROUP, "SERVICE_GROUP") \
  X(STATE_ENGINE, "STATE_ENGINE") \
  X(CERTIFICATE, "CERTIFICATE") \
  X(KEY, "KEY") \
  X(INTERFACE, "INTERFACE") \
  X(TIME, "TIME") \
  X(SCREEN, "SCREEN") \
  X(COMMENT, "COMMENT") \
  X(MASTER, "MASTER") \
  X(NSID, "NSID") \
  X(MKID, "MKID") \
  X(G, "G") \
  X(P, "P") \
  X(KEY_LENGTH, "KEY_LENGTH") \
  X(IKE, "IKE") \
  X(MANUAL, "MANUAL") \
  X(ADMIN_IP, "ADMIN_IP") \
  X(KEYS, "KEYS") \
  X(DATAS, "DATAS") \
  X(MACS, "MACS") \
  X(COMPRESSIONS, "COMPRESSIONS") \
  X(TUNNEL, "TUNNEL") \
  X(TIMEOUT, "TIMEOUT") \
  X(CERTIFICATE_DISCOVERY, "CERTIFICATE_DISCOVERY") \
  X(DEST_CHECK, "DEST_CHECK") \
  X(ROUTING, "ROUTING") \
  X(DNS, "DNS") \
  X(NIS, "NIS") \
  X(LOGSIZE, "LOGSIZE") \
  X(HA_PRIMARY, "HA_PRIMARY") \
  X(HA_SECONDARY, "HA_SECONDARY") \
  X(HA_ADMIN_IP, "HA_ADMIN_IP") \
  X(HA_ETHER, "HA_ETHER") \
  X(SNMP_TIMER, "SNMP_TIMER") \
  X(CLK, "CLK") \
  X(CLKNET, "CLKNET") \
  X(ADMIN, "ADMIN") \
  X(DISABLED, "DISABLED") \
  X(GWY, "GWY") \
  X(HA, "HA") \
  X(COMPLETE, "COMPLETE") \
  X(BROADCAST, "BROADCAST") \
  X(PARAMS, "PARAMS") \
  X(REVERSE, "REVERSE") \
  X(FORWARD, "FORWARD") \
  X(LOG, "LOG") \
  X(SUMMARY, "SUMMARY") \
  X(DETAIL, "DETAIL") \
  X(SESSION, "SESSION") \
  X(LOG_NONE, "LOG_NONE") \
  X(LOG_SUMMARY, "LOG_SUMMARY") \
  X(LOG_DETAIL, "LOG_DETAIL") \
  X(LOG_SESSION, "LOG_SESSION") \
  X(SNMP, "SNMP") \
  X(SNMP_NONE, "SNMP_NONE") \
  X(ICMP, "ICMP") \
  X(NET_UNREACHABLE, "NET_UNREACHABLE") \
  X(HOST_UNREACHABLE, "HOST_UNREACHABLE") \
  X(PORT_UNREACHABLE, "PORT_UNREACHABLE") \
  X(NET_FORBIDDEN, "NET_FORBIDDEN") \
  X(HOST_FORBIDDEN, "HOST_FORBIDDEN") \
  X(ICMP_NONE, "ICMP_NONE") \
  X(ICMP_NET_UNREACHABLE, "ICMP_NET_UNREACHABLE") \
  X(ICMP_HOST_UNREACHABLE, "ICMP_HOST_UNREACHABLE") \
  X(ICMP_PORT_UNREACHABLE, "ICMP_PORT_UNREACHABLE") \
  X(ICMP_NET_FORBIDDEN, "ICMP_NET_FORBIDDEN") \
  X(ICMP_HOST_FORBIDDEN, "ICMP_HOST_FORBIDDEN") \
  X(EVERYDAY, "EVERYDAY") \
  X(SUNDAY, "SUNDAY") \
  X(MONDAY, "MONDAY") \
  X(TUESDAY, "TUESDAY") \
  X(WEDNESDAY, "WEDNESDAY") \
  X(THURSDAY, "THURSDAY") \
  X(FRIDAY, "FRIDAY") \
  X(SATURDAY, "SATURDAY") \
  X(RULE, "RULE") \
  X(USER, "USER") \
  X(VPN, "VPN") \
  X(ALLOW, "ALLOW") \
  X(DENY, "DENY") \
  X(SKIP_VERSION_1, "SKIP_VERSION_1") \
  X(SKIP_VERSION_2, "SKIP_VERSION_2") \
  X(ESP, "ESP") \
  X(AH, "AH") \
  X(TRANSPORT, "TRANSPORT") \
  X(SOURCE_SCREEN, "SOURCE_SCREEN") \
  X(DESTINATION_SCREEN, "DESTINATION_SCREEN") \
  X(SOURCE_TUNNEL, "SOURCE_TUNNEL") \
  X(DESTINATION_TUNNEL, "DESTINATION_TUNNEL") \
  X(PROXY_FTP, "PROXY_FTP") \
  X(PROXY_HTTP, "PROXY_HTTP") \
  X(PROXY_SMTP, "PROXY_SMTP") \
  X(PROXY_Telnet, "PROXY_Telnet") \
  X(FTP_GET, "FTP_GET") \
  X(FTP_PUT, "FTP_PUT") \
  X(FTP_CHDIR, "FTP_CHDIR") \
  X(FTP_MKDIR, "FTP_MKDIR") \
  X(FTP_RENAME, "FTP_RENAME") \
  X(FTP_REMOVE_DIR, "FTP_REMOVE_DIR") \
  X(FTP_DELETE, "FTP_DELETE") \
  X(RELAY, "RELAY") \
  X(COOKIES, "COOKIES") \
  X(ACTIVE_X, "ACTIVE_X") \
  X(SSL, "SSL") \
  X(JAVA, "JAVA") \
  X(JAVA_SIGNATURE, "JAVA_SIGNATURE") \
  X(JAVA_HASH, "JAVA_HASH") \
  X(JAVA_SIG_HASH, "JAVA_SIG_HASH") \
  X(NAT, "NAT") \
  X(STATIC, "STATIC") \
  X(DYNAMIC, "DYNAMIC") \
  X(ACCESS, "ACCESS") \
  X(STATUS, "STATUS") \
  X(READ, "READ") \
  X(WRITE, "WRITE") \
  X(ALL, "ALL") \
  X(VPNGATEWAY, "VPNGATEWAY") \
  X(POLICY_VERSION, "POLICY_VERSION") \
  X(REGISTRY_VERSION, "REGISTRY_VERSION") \
  X(REGISTRY_USED_VERSION, "REGISTRY_USED_VERSION") \
  X(LOAD, "LOAD") \
  X(NETMASK, "NETMASK") \
  X(IKE_CERTIFICATE, "IKE_CERTIFICATE") \
  X(DASH, "-")

enum Token {
  TOK_STRING = 258,  // unquoted name or quoted string: value.string
  TOK_NUMBER,        // decimal or hexadecimal: value.number
  TOK_IPADDR,        // dotted address, network byte order: value.address
  TOK_IPRANGE,       // address range, host byte order: start, end, style
  TOK_ALIENLINE,     // text behind an @ at line start: value.string
#define FW_KEYWORD_ENUMERATOR(name, spelling) TOK_##name,
  FW_KEYWORDS(FW_KEYWORD_ENUMERATOR)
#undef FW_KEYWORD_ENUMERATOR
};

// The value of the last token.  The parser owns the strings.
struct TokenValue {
  union {
    char* string;
    int number;
    unsigned address;
    unsigned start;
  };
  unsigned end;
  int style;  // 0 a-b, 1 a/n, 2 a/dotted mask, 3 a/0xhex mask
};

#endif
