#include "support/fwlog.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/fwi18n.h"
#include "support/settings.h"
#include "support/vars.h"

const fwlog_map fwlog_sevmap[] = {
    {"NONE", 0},  {"ALERT", 1},  {"CRIT", 2}, {"CRIT*", 2},  {"ERR", 3},   {"ERR*", 3},  {"WARNING", 4},
    {"WARN*", 4}, {"NOTICE", 5}, {"NOTE", 5}, {"NOTI*", 5},  {"INFO", 6},  {"INFO*", 6}, {"DEBUG", 7},
    {nullptr, -1},
};

const fwlog_map fwlog_facmap[] = {
    {"KERN*", 0},    {"USER", 8},     {"MAIL", 16},    {"DAEMON", 24},  {"AUTH*", 32},   {"SYSLOG", 40},
    {"LPR", 48},     {"UUCP", 64},    {"CRON", 120},   {"LOCAL0", 128}, {"LOCAL1", 136}, {"LOCAL2", 144},
    {"LOCAL3", 152}, {"LOCAL4", 160}, {"LOCAL5", 168}, {"LOCAL6", 176}, {"LOCAL7", 184}, {nullptr, -1},
};

int app_severity = 5;
int auth_severity = 5;
unsigned logextenders = 0;

namespace {

constexpr size_t kPacketSize = 4096;
constexpr size_t kHeaderSize = 88;
constexpr size_t kTextSize = kPacketSize - kHeaderSize;
constexpr size_t kAppnameSize = 32;
constexpr uint32_t kMarker = 0x54869523;
constexpr uint16_t kPacketType = 8;
constexpr int kDefaultPort = 3853;
constexpr unsigned kLibraryError = 0x18 | 3;

// Offsets of the header fields.
enum : size_t {
  kOffMarker = 0,
  kOffType = 4,
  kOffLength = 6,
  kOffSourceAddress = 24,
  kOffDestinationAddress = 28,
  kOffSourcePort = 32,
  kOffDestinationPort = 34,
  kOffSession = 36,
  kOffProtocol = 40,
  kOffSev = 41,
  kOffPrio = 42,
  kOffExtenderFlags = 43,
  kOffAppname = 56,
};

int app_sev = 5;
int auth_sev = 5;
int logport = 0;
char appname[kAppnameSize + 1];

// Attribute texts for the extenders, filled in by the set-up.
std::string srcip = " src_ip:ipV4=";
std::string dstip = " dst_ip:ipV4=";
std::string srcport = " src_port:unsigned32=";
std::string dstport = " dst_port:unsigned32=";
std::string sessid = " sess_ID:unsigned32=";
std::string protoip = " proto_ip:unsigned32=";

enum class FieldKind { kAddress, kPort, kSession, kProtocol };

struct Extender {
  unsigned bit;
  const char* prefix;
  uint8_t flag;
  size_t offset;
  FieldKind kind;
};

const Extender fwlog_xtnders[] = {
    {fwlog_src_ip, "src_ip:ipV4=", 1, kOffSourceAddress, FieldKind::kAddress},
    {fwlog_dst_ip, "dst_ip:ipV4=", 2, kOffDestinationAddress, FieldKind::kAddress},
    {fwlog_src_port, "src_port:unsigned32=", 4, kOffSourcePort, FieldKind::kPort},
    {fwlog_dst_port, "dst_port:unsigned32=", 8, kOffDestinationPort, FieldKind::kPort},
    {fwlog_session, "sess_ID:unsigned32=", 16, kOffSession, FieldKind::kSession},
    {fwlog_protocol, "proto_ip:unsigned32=", 32, kOffProtocol, FieldKind::kProtocol},
};

const char* program_name() { return program_invocation_short_name; }

template <typename T>
void put(unsigned char* packet, size_t offset, T value) {
  memcpy(packet + offset, &value, sizeof value);
}

const Extender* fwlog_xfind(const char* text) {
  for (const Extender& extender : fwlog_xtnders) {
    if (strncasecmp(text, extender.prefix, strlen(extender.prefix)) == 0) return &extender;
  }
  return nullptr;
}

void set_field(unsigned char* packet, const Extender& extender, const std::string& value) {
  const char* text = value.c_str();
  switch (extender.kind) {
    case FieldKind::kAddress:
      put<uint32_t>(packet, extender.offset, inet_addr(text));
      break;
    case FieldKind::kPort:
      put<uint16_t>(packet, extender.offset, htons(static_cast<uint16_t>(atoi(text))));
      break;
    case FieldKind::kSession:
      put<uint32_t>(packet, extender.offset, htonl(static_cast<uint32_t>(strtoul(text, nullptr, 10))));
      break;
    case FieldKind::kProtocol:
      put<uint8_t>(packet, extender.offset, static_cast<uint8_t>(atoi(text)));
      break;
  }
  packet[kOffExtenderFlags] |= extender.flag;
}

// Copies the known attributes of `text` whose bits are in `wanted` into the
// header.  An attribute starts behind a ";" or a blank; the text itself is
// left as it is.
void fill_extenders(unsigned char* packet, const char* text, unsigned wanted) {
  if (wanted == 0) return;
  const char* from = text;
  while (const char* colon = strchr(from, ':')) {
    const char* start = colon;
    while (start > text && start[-1] != ';' && !isspace(static_cast<unsigned char>(start[-1]))) --start;
    const Extender* extender = fwlog_xfind(start);
    if (extender != nullptr && (extender->bit & wanted) != 0) {
      const char* value = start + strlen(extender->prefix);
      set_field(packet, *extender, std::string(value, strcspn(value, ";")));
    }
    const char* semicolon = strchr(colon, ';');
    if (semicolon == nullptr) break;
    from = semicolon + 1;
  }
}

// Lays out the header and the text; returns the packet's length.
size_t build_packet(unsigned char* packet, const std::string& text, bool auth, int severity, const char* app) {
  size_t length = text.size() < kTextSize ? text.size() : kTextSize - 1;
  memset(packet, 0, kHeaderSize);
  put<uint32_t>(packet, kOffMarker, kMarker);
  put<uint16_t>(packet, kOffType, kPacketType);
  put<uint16_t>(packet, kOffLength, static_cast<uint16_t>(length + kHeaderSize + 1));
  packet[kOffSev] = auth ? 3 : 4;
  packet[kOffPrio] = static_cast<uint8_t>(severity & fwlog_severity);
  // The field is fixed-width: a name that fills it has no terminating NUL.
  memcpy(packet + kOffAppname, app, strnlen(app, kAppnameSize));
  memcpy(packet + kHeaderSize, text.data(), length);
  packet[kHeaderSize + length] = '\0';
  return length + kHeaderSize + 1;
}

void send_text(const std::string& text, bool auth, int severity, const char* app, unsigned wanted) {
  unsigned char packet[kPacketSize];
  build_packet(packet, text, auth, severity, app);
  fill_extenders(packet, reinterpret_cast<const char*>(packet + kHeaderSize), wanted);
  fwlog_io(packet);
}

std::string extender_text(unsigned mask) {
  const struct {
    unsigned bit;
    const std::string& text;
  } order[] = {{fwlog_session, sessid}, {fwlog_protocol, protoip}, {fwlog_src_ip, srcip},
               {fwlog_src_port, srcport}, {fwlog_dst_ip, dstip}, {fwlog_dst_port, dstport}};
  std::string text;
  for (const auto& entry : order) {
    if ((mask & entry.bit) != 0) text += entry.text;
  }
  return text;
}

// `text` quoted and, when longer than `room`, cut to it and "...", between
// `head` and `";`.
std::string quoted_attribute(const char* head, const char* text, size_t room) {
  std::string quoted = Xs_enquote(text).c_str();
  std::string ending;
  if (quoted.size() > room) {
    quoted.resize(room);
    ending = "...";
  }
  return head + quoted + ending + "\";";
}

// A port number that fills the whole text, or 0.
int whole_port(const char* text) {
  if (text == nullptr || !isdigit(static_cast<unsigned char>(*text))) return 0;
  char* end = nullptr;
  long port = strtol(text, &end, 10);
  return *end == '\0' && port > 0 && port <= 65535 ? static_cast<int>(port) : 0;
}

// A variable of the store for `sys`, or, failing that, for all systems.
int vget(const char* sys, const char* prg, const char* name, Xstring& value) {
  if (vars_get_value(sys, prg, nullptr, name, value, nullptr) == 0) return 0;
  return vars_get_value(nullptr, prg, nullptr, name, value, nullptr);
}

void complain_default(const char* variable, const char* value_in_force) {
  a_syslog(kLibraryError, fwi18n_text(168, 9, "default '%s' to '%s'"), variable, value_in_force);
}

// A severity from the store, for `prg` or for all programs.  A value that
// the map doesn't know is reported and the severity stays.
void syslogmap(const char* sys, const char* prg, const char* variable, int& severity) {
  Xstring value;
  if (vget(sys, prg, variable, value) != 0 && vget(sys, nullptr, variable, value) != 0) return;
  if (const fwlog_map* entry = fwlog_mapname(fwlog_sevmap, value)) {
    severity = entry->value;
    return;
  }
  const fwlog_map* in_force = fwlog_mapvalue(fwlog_sevmap, severity);
  complain_default(variable, in_force != nullptr ? in_force->name : "?");
}

// One end of the socket on descriptor 0 into the extender texts of its
// address and port; false clears both bits.
void describe_end(int (*query)(int, sockaddr*, socklen_t*), unsigned ip_bit, unsigned port_bit, std::string& ip,
                  std::string& port, const std::string& protocol) {
  if ((logextenders & (ip_bit | port_bit)) == 0) return;
  sockaddr_in address{};
  socklen_t length = sizeof address;
  if (query(0, reinterpret_cast<sockaddr*>(&address), &length) != 0 || address.sin_family != AF_INET) {
    logextenders &= ~(ip_bit | port_bit);
    return;
  }
  if ((logextenders & ip_bit) != 0) ip += std::string(inet_ntoa(address.sin_addr)) + ";";
  if ((logextenders & port_bit) != 0) {
    port += std::to_string(ntohs(address.sin_port)) + ";";
    if ((logextenders & fwlog_protocol) == 0) {
      protoip += protocol;
      logextenders |= fwlog_protocol;
    }
  }
}

// A network daemon has its connection on descriptor 0; the extenders it
// asked for describe that connection in every message.
void syslogext() {
  std::string protocol;
  if ((logextenders & (fwlog_src_port | fwlog_dst_port)) != 0) {
    int type = 0;
    socklen_t length = sizeof type;
    if (getsockopt(0, SOL_SOCKET, SO_TYPE, &type, &length) == 0 && (type == SOCK_STREAM || type == SOCK_DGRAM)) {
      protocol = type == SOCK_STREAM ? "6;" : "17;";
    } else {
      logextenders &= ~(fwlog_src_port | fwlog_dst_port);
    }
  }
  describe_end(getpeername, fwlog_dst_ip, fwlog_dst_port, dstip, dstport, protocol);
  describe_end(getsockname, fwlog_src_ip, fwlog_src_port, srcip, srcport, protocol);
  if ((logextenders & fwlog_session) != 0) sessid += std::to_string(getpid()) + ";";
}

enum BindResult { kNoRight = -1, kNoSocket = -2 };

// A datagram socket on a reserved port, which tells the daemon that the
// message comes from a program of the product.  Ports that other processes
// hold are passed over; when all are taken it waits for one to come free.
int reserved_socket() {
  static int port_counter = 1000;
  for (;;) {
    for (; port_counter > 512; --port_counter) {
      int sock = socket(AF_INET, SOCK_DGRAM, 0);
      // Without descriptors the process can't cure itself by waiting; the
      // message is lost rather than the program hung.
      if (sock < 0) {
        if (spewit) fprintf(stderr, fwi18n_text(168, 10, "%s: log socket bind error: %s\n"), program_name(), strerror(errno));
        return kNoSocket;
      }
      sockaddr_in address{};
      address.sin_family = AF_INET;
      address.sin_port = htons(static_cast<uint16_t>(port_counter));
      address.sin_addr.s_addr = htonl(INADDR_ANY);
      if (bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return sock;
      int error = errno;
      close(sock);
      if (error == EADDRINUSE) continue;
      if (error == EACCES || error == EPERM) return kNoRight;
      if (spewit) fprintf(stderr, fwi18n_text(168, 10, "%s: log socket bind error: %s\n"), program_name(), strerror(error));
      exit(1);
    }
    sleep(1);
    port_counter = 1000;
  }
}

}  // namespace

const fwlog_map* fwlog_mapname(const fwlog_map* map, const char* text) {
  if (text == nullptr) return nullptr;
  for (; map->name != nullptr; ++map) {
    size_t length = strlen(map->name);
    bool matches = map->name[length - 1] == '*' ? strncasecmp(text, map->name, length - 1) == 0
                                                : strcasecmp(text, map->name) == 0;
    if (matches) return map;
  }
  return nullptr;
}

const fwlog_map* fwlog_mapvalue(const fwlog_map* map, int value) {
  for (; map->name != nullptr; ++map) {
    if (map->value == value) return map;
  }
  return nullptr;
}

int a_syslogset_c(const char* app, int* port) {
  set_from_env();
  snprintf(appname, sizeof appname, "%s", app != nullptr ? app : "");
  if (const fwlog_map* entry = fwlog_mapname(fwlog_sevmap, getenv("FERROWALL_LogSeverity"))) {
    app_sev = entry->value;
    auth_sev = entry->value;
  }
  app_severity = app_sev;
  auth_severity = auth_sev;
  int chosen = port != nullptr ? *port : 0;
  if (chosen == 0) chosen = whole_port(getenv("FERROWALL_LogPort"));
  if (chosen == 0) chosen = kDefaultPort;
  logport = chosen;
  if (port != nullptr) *port = chosen;
  return 0;
}

int a_syslogset(const char* sys, const char* prg, const char* app) {
  set_from_env();
  vars_setroot(nullptr, 1, nullptr);
  int port = 0;
  bool port_complaint = false;
  Xstring value;
  if (vget(sys, "log", "LogPort", value) == 0) {
    port = whole_port(value);
    port_complaint = port == 0;
  }
  a_syslogset_c(app, &port);
  syslogext();
  syslogmap(sys, prg, "LogSeverity", app_sev);
  syslogmap(sys, "auth", "LogSeverity", auth_sev);
  app_severity = app_sev;
  auth_severity = auth_sev;
  if (port_complaint) complain_default("LogPort", std::to_string(port).c_str());
  return 0;
}

void a_syslog(unsigned priority, const char* format, ...) {
  char text[kTextSize];
  va_list arguments;
  va_start(arguments, format);
  int needed = vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  int severity = priority & fwlog_severity;
  bool auth = (priority & fwlog_auth) != 0;
  bool overflow = needed >= static_cast<int>(sizeof text);
  const char* reason = fwi18n_text(168, 128, "log buffer overflow - application unstable");

  if (debug != 0 || (spewit != 0 && severity < 7)) {
    if (overflow) fprintf(stderr, "%s %s: %s\n", program_name(), a_syslogsevstr(1), reason);
    fprintf(stderr, "%s%s %s: %s\n", program_name(), auth ? "(auth)" : "", a_syslogsevstr(severity), text);
  }

  unsigned mask = logextenders & ~(priority & fwlog_extenders);
  std::string extenders = extender_text(mask);
  std::string body = text;
  if ((priority & fwlog_wrap) != 0) body = quoted_attribute("msg:utf8=\"", text, 3989 - extenders.size());
  if (mask != 0 && body.size() + extenders.size() < kTextSize) body += extenders;
  unsigned wanted = (priority & fwlog_extenders) | mask;

  if (overflow) send_text(std::string("reason:utf8=\"") + reason + "\";", auth, 1, appname, 0);
  if ((priority & fwlog_always) == 0 && severity > (auth ? auth_sev : app_sev)) return;
  send_text(body, auth, severity, appname, wanted);
}

const char* a_syslogsevstr(int severity) {
  static const char* const kWords[8] = {"*!*EMERG*!*", "**ALERT!**", "**CRIT**", "*ERR*",
                                        "+WARN+",      "-NOTE-",     "INFO",     "<DBG>"};
  static std::string words[8];
  static bool copied[8];
  int index = severity & 7;
  if (!copied[index]) {
    words[index] = fwi18n_text(168, index + 1, kWords[index]);
    copied[index] = true;
  }
  return words[index].c_str();
}

unsigned a_syslogopt(const char* option, unsigned* mask) {
  if (option == nullptr || option[0] == '\0' || option[1] == '\0') return 0;
  char first = option[1];
  char second = option[2];
  unsigned bit = 0;
  if (first == 'a' && second == 'd') bit = fwlog_dst_ip;
  else if (first == 'a' && second == 's') bit = fwlog_src_ip;
  else if (first == 'p' && second == 'd') bit = fwlog_dst_port;
  else if (first == 'p' && second == 's') bit = fwlog_src_port;
  else if (first == 's') bit = fwlog_session;
  *(mask != nullptr ? mask : &logextenders) |= bit;
  return bit;
}

int fwlog_io(const void* packet) {
  // A process without the right to a reserved port (an ordinary
  // administrator's) still logs, from an ordinary port; the daemon then
  // decides what to make of it.
  static bool ordinary_port = false;
  int sock = kNoRight;
  if (!ordinary_port) {
    sock = reserved_socket();
    if (sock == kNoSocket) return 0;
    if (sock == kNoRight) {
      ordinary_port = true;
      if (spewit) {
        fprintf(stderr, fwi18n_text(168, 11, "%s: no right to a reserved port, logging from an ordinary port\n"),
                program_name());
      }
    }
  }
  if (sock < 0) sock = socket(AF_INET, SOCK_DGRAM, 0);
  if (sock < 0) return 0;
  sockaddr_in daemon{};
  daemon.sin_family = AF_INET;
  // A program that logs before its set-up still reaches the daemon.
  daemon.sin_port = htons(static_cast<uint16_t>(logport != 0 ? logport : kDefaultPort));
  daemon.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(sock, reinterpret_cast<sockaddr*>(&daemon), sizeof daemon) != 0) {
    if (spewit) fprintf(stderr, fwi18n_text(168, 12, "%s: log socket connect error: %s\n"), program_name(), strerror(errno));
    exit(1);
  }
  uint16_t length;
  memcpy(&length, static_cast<const unsigned char*>(packet) + kOffLength, sizeof length);
  ssize_t sent = send(sock, packet, length, 0);
  if (debug > 1 && sent != length) fprintf(stderr, "%s: log send %zd of %u\n", program_name(), sent, length);
  close(sock);
  return 0;
}

int fwlog_x(const uint32_t* session, const uint8_t* proto, const uint32_t* srcip_value, const uint16_t* srcport_value,
            const uint32_t* dstip_value, const uint16_t* dstport_value, const char* app, int auth, int severity,
            const char* reason, const char* msg, ...) {
  va_list pairs;
  va_start(pairs, msg);
  int result = fwlog_vx(session, proto, srcip_value, srcport_value, dstip_value, dstport_value, app, auth, severity,
                        reason, msg, pairs);
  va_end(pairs);
  return result;
}

int fwlog_vx(const uint32_t* session, const uint8_t* proto, const uint32_t* srcip_value,
             const uint16_t* srcport_value, const uint32_t* dstip_value, const uint16_t* dstport_value,
             const char* app, int auth, int severity, const char* reason, const char* msg, va_list pairs) {
  size_t room = kTextSize - (session ? 34 : 0) - (proto ? 30 : 0) - (srcip_value ? 32 : 0) - (dstip_value ? 32 : 0) -
                (srcport_value ? 30 : 0) - (dstport_value ? 30 : 0);
  std::string text;
  // What a quoted attribute adds to its value: the cut's "..." and `";`.
  constexpr size_t kQuoteOverhead = 5;
  const char* reason_head = "reason:utf8=\"";
  const char* msg_head = " msg:utf8=\"";
  if (reason != nullptr) {
    text += quoted_attribute(reason_head, reason, room - strlen(reason_head) - kQuoteOverhead);
  }
  if (msg != nullptr && text.size() + strlen(msg_head) + kQuoteOverhead < room) {
    text += quoted_attribute(msg_head, msg, room - text.size() - strlen(msg_head) - kQuoteOverhead);
  }
  bool any_pair = false;
  while (const char* name = va_arg(pairs, const char*)) {
    const char* value = va_arg(pairs, const char*);
    size_t name_length = strlen(name);
    std::string pair = std::string(name) + (value != nullptr ? value : "") +
                       (name_length > 0 && name[name_length - 1] == '"' ? "\";" : ";");
    if (text.size() + pair.size() >= room) break;
    text += pair;
    any_pair = true;
  }
  if (reason == nullptr && msg == nullptr && !any_pair) {
    errno = EINVAL;
    return -1;
  }
  // The connection fields go into the text, from where the header takes
  // them as it does for every message.
  unsigned wanted = 0;
  auto field = [&](unsigned bit, const char* head, const std::string& value) {
    text += head + value + ";";
    wanted |= bit;
  };
  if (session) field(fwlog_session, " sess_ID:unsigned32=", std::to_string(*session));
  if (proto) field(fwlog_protocol, " proto_ip:unsigned32=", std::to_string(*proto));
  if (srcip_value) field(fwlog_src_ip, " src_ip:ipV4=", inet_ntoa(in_addr{*srcip_value}));
  if (srcport_value) field(fwlog_src_port, " src_port:unsigned32=", std::to_string(*srcport_value));
  if (dstip_value) field(fwlog_dst_ip, " dst_ip:ipV4=", inet_ntoa(in_addr{*dstip_value}));
  if (dstport_value) field(fwlog_dst_port, " dst_port:unsigned32=", std::to_string(*dstport_value));
  // A proxy's application name always ends within its field.
  char app_field[kAppnameSize];
  snprintf(app_field, sizeof app_field, "%s", app != nullptr ? app : "");
  send_text(text, auth != 0, severity, app_field, wanted);
  return 0;
}
