// The enumerations that the encryption classes share.
#ifndef FW_CRYPTO_CRYPTO_TYPES_H
#define FW_CRYPTO_CRYPTO_TYPES_H

// The key management an identity or a parameter set belongs to.  MIXED is
// only the answer of a certificate group whose members disagree.
enum IPSEC_TYPE {
  IPSEC_UNKNOWN = 0,
  IPSEC_SKIP = 1,
  IPSEC_MANUAL = 2,
  IPSEC_IKE = 3,
  IPSEC_MIXED = 4
};

// What an algorithm is used for: the first four are the SKIP lists, the
// last two belong to IPsec and IKE.
enum screen_alg_type {
  ALG_KEY = 0,
  ALG_DATA = 1,
  ALG_MAC = 2,
  ALG_COMPRESSION = 3,
  ALG_ENCRYPTION = 4,
  ALG_AUTHENTICATION = 5
};

// Where an IPsec or IKE algorithm is used: in the traffic, or in the key
// exchange of IKE's first phase.
enum IKE_phase { IKE_PHASE_IPSEC = 0, IKE_PHASE_IKE = 1 };

#endif
