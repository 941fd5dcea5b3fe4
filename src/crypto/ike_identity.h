// Whether this host holds the private identity of an IKE certificate, as
// the host's certificate store answers it: the identities a certificate
// (or group) includes, less those it excludes, are matched against the
// local identities.
#ifndef FW_CRYPTO_IKE_IDENTITY_H
#define FW_CRYPTO_IKE_IDENTITY_H

#include <string>

class Certificate;

// 1 local, 0 not local, -1 when the host can't tell.
int IsLocal(const Certificate& certificate);

// The identity text with its escapes taken out: a backslash is dropped and
// the character after it kept as it is; a trailing backslash is dropped.
std::string Escapism(const char* text);

#endif
