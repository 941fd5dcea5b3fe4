#include "support/fwlog.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include "support/settings.h"

// Until messages are sent to the daemon, the set-up only reads the settings.
int a_syslogset(const char*, const char*, const char*) {
  set_from_env();
  return 0;
}

// Until messages are sent to the daemon, they are only echoed.
void a_syslog(unsigned priority, const char* format, ...) {
  int severity = priority & 7;
  if (debug == 0 && (spewit == 0 || severity >= 7)) return;
  char text[4008];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  fprintf(stderr, "%s: %s\n", program_invocation_short_name, text);
}
