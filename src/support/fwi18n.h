// Message catalogues.  Every text meant for a person is fetched where it is
// used, by catalogue set and number, and falls back to its built-in default,
// so no text is ever missing when no catalogue is installed.
//
// Catalogues are UTF-8 files at "<lib_path>/locale/<locale>/LC_MESSAGES/
// <domain>.cat".  Where the user's locale isn't UTF-8 but only a UTF-8
// catalogue exists, its texts are converted to the user's encoding.
#ifndef FW_SUPPORT_FWI18N_H
#define FW_SUPPORT_FWI18N_H

#include <ctime>

// The open catalogue, or -1 while there is none.
extern int s18n_catd;
// The locale of the messages; null until the first set-up.
extern char* s18n_locale;
// The encoding catalogue text is converted to, and the encoding of dates;
// null when no conversion is needed.
extern char* messages_encoding;
extern char* time_encoding;

// Opens the catalogue of `domain` once; returns the earlier handle.
int fwi18n_set(const char* domain);

// Chooses the locales of messages, time and collation, preferring UTF-8
// where the user's character type is UTF-8 (or `force` is set), and opens
// the catalogue of `domain`.  `*locale`, when given and set, names the
// locale; otherwise it receives the messages locale (the caller frees it).
// Returns the catalogue handle or -1.
int fwi18n_init(const char* domain, char** locale, int force);

// Closes the current catalogue, if any, and makes `handle` current.
void fwi18n_revert(int handle);

// The catalogue's text for (set, number), or `text` when it has none,
// converted to messages_encoding when that is set.
const char* fwi18n_catgets(int set, int number, const char* text);

// The calling convention of the whole system in one call: the catalogue's
// text when a catalogue is open, else the default itself.
inline const char* fwi18n_text(int set, int number, const char* text) {
  return s18n_catd != -1 ? fwi18n_catgets(set, number, text) : text;
}

// The local date and time of `when` as UTF-8, tabs made blanks; the caller
// frees it.
char* utf8time(time_t when);

// The codeset of the current LC_CTYPE, or null when it has none; the caller
// frees it.
char* figure_encoding();

// The name to try with iconv_open when the codeset name itself fails, or
// null when there is none.
const char* nl_langinfo_codeset_name_to_iconv_encoding_name(const char* name);

#endif
