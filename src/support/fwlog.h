// Logging to the product's log daemon.  The set-up also reads the settings
// from the environment, so it is the first call of every program.
#ifndef FW_SUPPORT_FWLOG_H
#define FW_SUPPORT_FWLOG_H

// Sets the log up for system `sys`, program `prg` and application `appname`.
int a_syslogset(const char* sys, const char* prg, const char* appname);

// Logs one printf-style message; the low three bits of `priority` are its
// severity.
void a_syslog(unsigned priority, const char* format, ...) __attribute__((format(printf, 2, 3)));

#endif
