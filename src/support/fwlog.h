// Logging to the product's log daemon.  Each message is one UDP datagram to
// 127.0.0.1:logport, sent from a reserved port: an 88-byte header, then the
// text with its NUL.  The text may carry typed attributes; those the library
// knows (addresses, ports, session, protocol) are also copied into fixed
// header fields so that the daemon can filter without parsing text.
//
// The set-up also reads the settings from the environment, so it is the
// first call of every program.
#ifndef FW_SUPPORT_FWLOG_H
#define FW_SUPPORT_FWLOG_H

#include <cstdarg>
#include <cstdint>

// Bits of the priority word of a_syslog; the low three are the severity.
constexpr unsigned fwlog_severity = 0x7;
constexpr unsigned fwlog_auth = 0x20;          // authentication stream
constexpr unsigned fwlog_wrap = 0x10000;       // wrap the text as msg:utf8="..."
constexpr unsigned fwlog_always = 0x20000;     // send whatever the severity
constexpr unsigned fwlog_src_ip = 0x40000;     // extender bits: the text
constexpr unsigned fwlog_dst_ip = 0x80000;     // carries these attributes
constexpr unsigned fwlog_src_port = 0x100000;
constexpr unsigned fwlog_dst_port = 0x200000;
constexpr unsigned fwlog_session = 0x400000;
constexpr unsigned fwlog_protocol = 0x800000;
constexpr unsigned fwlog_extenders = 0xFC0000;

// Words and their numbers; a name ending in "*" matches every text that
// begins with the rest.  Case is ignored.  A map ends with a null name.
struct fwlog_map {
  const char* name;
  int value;
};
extern const fwlog_map fwlog_sevmap[];
extern const fwlog_map fwlog_facmap[];
// The first entry that matches `text`, or null.
const fwlog_map* fwlog_mapname(const fwlog_map* map, const char* text);
// The first entry with `value`, or null.
const fwlog_map* fwlog_mapvalue(const fwlog_map* map, int value);

// The highest severities sent, for the application and the authentication
// stream (5 until a set-up says otherwise).
extern int app_severity;
extern int auth_severity;
// Extender bits whose attributes (prepared by the set-up from the socket on
// descriptor 0) are appended to every message.
extern unsigned logextenders;

// Full set-up for system `sys` (a leading "?" means this screen), program
// `prg` and application `appname`: the port and severities come from the
// variable store, the environment and the defaults.
int a_syslogset(const char* sys, const char* prg, const char* appname);
// Set-up from the environment alone: FERROWALL_LogSeverity and, when
// `*port` is 0, FERROWALL_LogPort (default 3853); `*port` gets the port.
int a_syslogset_c(const char* appname, int* port);

// Logs one printf-style message: echoes it to stderr when tracing, and
// sends it when its severity passes the limit.
void a_syslog(unsigned priority, const char* format, ...) __attribute__((format(printf, 2, 3)));

// The word that the echo prints for `severity`.
const char* a_syslogsevstr(int severity);

// Adds the extender bit that a command-line option such as "-as" names to
// `mask` (null: logextenders); returns the bit, 0 for other options.
unsigned a_syslogopt(const char* option, unsigned* mask);

// Sends one packet, whose header gives its length.  Returns 0.
int fwlog_io(const void* packet);

// Builds and sends a proxy's packet: reason, message and the name/value
// pairs that follow `msg` up to a null name (a name ending in a double
// quote opens a quoted value), then the given connection fields, which also
// fill the header.  Addresses are in network order, the rest in host order.
// -1 with errno EINVAL when there is no text at all.
int fwlog_x(const uint32_t* session, const uint8_t* proto, const uint32_t* srcip, const uint16_t* srcport,
            const uint32_t* dstip, const uint16_t* dstport, const char* appname, int auth, int severity,
            const char* reason, const char* msg, ...);
int fwlog_vx(const uint32_t* session, const uint8_t* proto, const uint32_t* srcip, const uint16_t* srcport,
             const uint32_t* dstip, const uint16_t* dstport, const char* appname, int auth, int severity,
             const char* reason, const char* msg, va_list pairs);

#endif
