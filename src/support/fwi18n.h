// Message catalogues.  Every text meant for a person is fetched where it is
// used, by catalogue set and number, and falls back to its built-in default,
// so no text is ever missing when no catalogue is installed.
#ifndef FW_SUPPORT_FWI18N_H
#define FW_SUPPORT_FWI18N_H

// The open catalogue, or -1 while there is none.
extern int s18n_catd;

// Opens the catalogue of `domain` once; returns the earlier handle.
int fwi18n_set(const char* domain);

// The catalogue's text for (set, number), or `text` when it has none.
const char* fwi18n_catgets(int set, int number, const char* text);

// The calling convention of the whole system in one call: the catalogue's
// text when a catalogue is open, else the default itself.
inline const char* fwi18n_text(int set, int number, const char* text) {
  return s18n_catd != -1 ? fwi18n_catgets(set, number, text) : text;
}

#endif
