// The log settings of the IKE daemon, read from the variable store of the
// configuration being activated (the ".temp" tree below the etc directory)
// and written as lines of its configuration file.
#ifndef FW_SUPPORT_IKE_LOG_H
#define FW_SUPPORT_IKE_LOG_H

#include <ostream>

// Writes "log upto <severity>" for the variable LogSeverity of program
// "iked" and a "log <severity> \"<event>\"" line for each pair of LogEvents;
// a setting for this screen wins over the general one, and a variable that
// isn't set writes nothing.  Returns 0, 215 for a severity word that isn't
// known and 216 when a variable can't be read; both are reported on stderr.
int fwlog_ike_settings(std::ostream& out);

#endif
