// Process-wide settings of the product's libraries: the trace level and the
// directories where configuration, state and programs lie.  They start with
// built-in defaults and are overridden from the environment by set_from_env,
// which every library set-up calls, so reading them twice is harmless.
#ifndef FW_SUPPORT_SETTINGS_H
#define FW_SUPPORT_SETTINGS_H

extern int debug;    // trace level from FERROWALL_DEBUG; 0 traces nothing
extern int spewit;   // echo library failures to stderr
extern const char* etc_path;   // FERROWALL_ETC, default "/etc/ferrowall"
extern const char* var_path;   // FERROWALL_VAR, default "/var/ferrowall"
extern const char* base_path;  // FERROWALL_BASE or the file "location"
extern const char* adm_path;   // base_path + "/fwadm"
extern const char* lib_path;   // base_path + "/lib"

// Reads FERROWALL_DEBUG, FERROWALL_ETC, FERROWALL_VAR, FERROWALL_BASE and
// the etc directory's "location" file into the globals above.
void set_from_env();

// The name of this screen: the first line of the etc directory's "name" file,
// read once and kept.  An unreadable file gives "".
const char* screen_getname();

// The administering user's name: FWADM_USER, the login name, the password
// entry of the real user id, or that id in decimal, whichever comes first.
// The caller frees the result.
char* ferrowall_username();

#endif
