// The variable store: settings of the product's programs kept as one file a
// variable below the etc directory.
#ifndef FW_SUPPORT_VARS_H
#define FW_SUPPORT_VARS_H

// Selects the root of the store and of the user data below it; `active`
// chooses the active configuration over a domain's.
int user_setroot(const char* root, int active, const char* domain);

#endif
