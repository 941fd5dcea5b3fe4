// SKIP box ids: a name space id and a key id of up to 24 bytes, with their
// text forms.  A certificate names its SKIP identity as "NSID MKID" text;
// these functions turn that text into the binary id that the key manager
// knows.
#ifndef FW_SUPPORT_BOX_ID_H
#define FW_SUPPORT_BOX_ID_H

enum { SKIP_KEYID_MAX = 24, SKIP_NSID_COUNT = 12 };

struct skip_keyid {
  int length;
  unsigned char bytes[SKIP_KEYID_MAX];
};

struct screen_box_id {
  unsigned char nsid;
  skip_keyid keyid;
};

// The key id length of name space `nsid` in bytes, or 0 outside 0 to 11.
int skip_nsid_keyid_length(int nsid);

// Parses `text` as the key id of name space `nsid`.  For the IPv4 name
// spaces 0 and 1 a dotted address or a host name gives its four bytes;
// otherwise the first word is read as hexadecimal, "0x" allowed, and
// right-aligned in the id.  0 on success, -1 on failure.
int skip_s_to_keyid(const char* text, int nsid, skip_keyid* keyid);

// Parses "<name space> <key id>" into `box`.  The name space is one of the
// names "NONE", "IP", "IPv4", "IPV4", "DH", "DH_PUB" or their numbers 0, 1
// and 8.  1 on success, 0 on failure.
int screen_box_id_internalize(screen_box_id* box, const char* text);

#endif
