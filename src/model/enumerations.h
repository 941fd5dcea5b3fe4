// The enumerations that every part of the object model shares.
#ifndef FW_MODEL_ENUMERATIONS_H
#define FW_MODEL_ENUMERATIONS_H

// The kind of a configuration object.  A kind also travels as the first
// argument of Resolve, Refer and RenameReference to say which sort of
// reference a call is about.  12 and 20 are unused.
enum Config_Objects {
  CO_ADDRESS = 1,
  CO_SCREEN = 2,
  CO_SERVICE = 3,
  CO_STATE_ENGINE = 4,
  CO_INTERFACE = 5,
  CO_CERTIFICATE = 6,
  CO_TIME = 7,
  CO_RULE = 8,
  CO_NAT = 9,
  CO_ACL_LOCAL = 10,
  CO_ACL_REMOTE = 11,
  CO_VPN_NODE = 13,
  CO_VPN = 14,
  CO_ALG_KEY = 15,
  CO_ALG_DATA = 16,
  CO_ALG_MAC = 17,
  CO_ALG_COMP = 18,
  CO_ALGORITHM = 19,
  CO_USER = 21,
  CO_KEY = 22
};

// The detail of a listing line.
enum Enumerate_Type {
  ENUM_FULL = 0,    // the whole object with its comment
  ENUM_NAME = 1,    // the name alone, without a screen
  ENUM_SEARCH = 2   // a search result line: screen, name and kind
};

// The role of a network interface; it decides the family an interface
// belongs to: admin (0), routing (2 and 3) or stealth (4).  A disabled
// interface belongs to none.
enum Interface_Type {
  INTERFACE_ADMIN = 0,
  INTERFACE_DISABLED = 1,
  INTERFACE_GWY = 2,
  INTERFACE_HA = 3,
  INTERFACE_CLK = 4
};

// What is logged of the packets of a rule or an interface.
enum Log_Type { LOG_NONE = 0, LOG_SUMMARY = 1, LOG_DETAIL = 2, LOG_DYNAMIC = 3, LOG_SESSION = 4 };

// Whether a trap is sent.
enum SNMP_Type { SNMP_NONE = 0, SNMP_TRAP = 1 };

// The answer that a refused packet gets.
enum ICMP_Type {
  ICMP_NONE = 0,
  ICMP_NET_UNREACHABLE = 1,
  ICMP_HOST_UNREACHABLE = 2,
  ICMP_PORT_UNREACHABLE = 3,
  ICMP_NET_FORBIDDEN = 4,
  ICMP_HOST_FORBIDDEN = 5
};

// The SKIP version whose algorithm lists a name is looked up in.
enum Skip_Version { SKIP_V1 = 1, SKIP_V2 = 2 };

// The outcome of resolving one reference.
enum Resolve_Error {
  RESOLVE_OK = 0,
  RESOLVE_NOT_FOUND = 1,        // the caller reports the name
  RESOLVE_WRONG_TYPE = 2,
  RESOLVE_ALREADY_REPORTED = 3
};

#endif
