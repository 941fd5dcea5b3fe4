// The product's tables of encryption algorithms: the numbers of the SKIP
// algorithm names and the packages that hold the kernel modules.  Names are
// the administrator's; numbers are what the kernel modules understand.
#ifndef FW_SUPPORT_SCREENADM_TABLES_H
#define FW_SUPPORT_SCREENADM_TABLES_H

// The value of SKIP algorithm `name` in the list of `type` (0 key, 1 data,
// 2 MAC, 3 compression) of SKIP `version`, compared without regard to case;
// "NONE" is 0 in every list.  -1 for a name the list doesn't hold.  The
// product's extra algorithms count only when the key device has told which
// algorithms it supports.
int screenadm_skip_alg_name_to_id(const char* name, int version, int type);

// The value of SKIP algorithm `name` in the full tables, the product's
// extra algorithms included whatever the key device said; -1 for none.
int screenadm_skip_alg_known_value(const char* name, int version, int type);

// Whether `name` (either spelling, any case) is the IPsec algorithm of
// `value` for the kernel request `operation`: 15 asks for an encryption,
// 14 for an authentication algorithm.
bool screenadm_ipsec_alg_is(const char* name, int operation, int value);

// The package that holds the module of algorithm `name` for the family word
// "SKIP" or any other word for IPsec; names are compared exactly.  Null for a
// name without a package.
const char* screenadm_alg_name_to_pkg(const char* name, const char* family);

#endif
