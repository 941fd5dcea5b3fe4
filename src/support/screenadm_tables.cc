#include "support/screenadm_tables.h"

#include <strings.h>

#include <cstring>

#include "support/host_query.h"

namespace {

struct AlgName {
  const char* name;
  int value;
};

const AlgName kKeyDataV1[] = {{"none", 0},    {"DES-CBC", 1},    {"RC2-40", 2},
                              {"RC4-40", 3},  {"RC4-128", 4},    {"DES-EDE-K2", 5},
                              {"DES-EDE-K3", 6}, {"simplecrypt", 10}};
const AlgName kKeyDataV2[] = {{"none", 0}, {"DES-CBC", 1}, {"DES-EDE-K3", 2}, {"IDEA-CBC", 3}};
const AlgName kMacV1[] = {{"none", 0}};
const AlgName kMacV2[] = {{"none", 0}, {"MD5", 1}, {"DES-CBC", 2}, {"SHA", 3}};

// Algorithms of the product's own modules, which only a key device that
// reports its supported lists can run.
const AlgName kExtraKeyV2[] = {{"Safer-128SK-CBC", 241}, {"RC2-40", 242}, {"simplecrypt", 252}};
const AlgName kExtraDataV2[] = {{"RC4-128", 4},          {"RC4-40", 240},      {"Safer-128SK-CBC", 241},
                                {"RC2-40", 242},         {"simplecrypt", 252}};
const AlgName kExtraMacV2[] = {{"MD5-NAT", 251}};

struct AlgTable {
  const AlgName* names;
  size_t count;
};

template <size_t N>
AlgTable table(const AlgName (&names)[N]) {
  return {names, N};
}

const AlgTable kNoTable = {nullptr, 0};

AlgTable base_table(int version, int type) {
  bool v1 = version == 1, v2 = version == 2;
  if (type == 0 || type == 1) return v1 ? table(kKeyDataV1) : v2 ? table(kKeyDataV2) : kNoTable;
  if (type == 2) return v1 ? table(kMacV1) : v2 ? table(kMacV2) : kNoTable;
  return kNoTable;
}

AlgTable extra_table(int version, int type) {
  if (version != 2) return kNoTable;
  if (type == 0) return table(kExtraKeyV2);
  if (type == 1) return table(kExtraDataV2);
  if (type == 2) return table(kExtraMacV2);
  return kNoTable;
}

int find_value(const AlgTable& table, const char* name) {
  for (size_t i = 0; i < table.count; ++i)
    if (strcasecmp(table.names[i].name, name) == 0) return table.names[i].value;
  return -1;
}

struct AlgPackage {
  const char* name;
  const char* package;
};

const AlgPackage kIpsecPackages[] = {
    {"DES-CBC", "FWPKcryr"}, {"3DES-CBC", "FWPKcryr"}, {"BLOWFISH", "FWPKcryr"},
    {"AES", "FWPKcryr"},     {"NULL", nullptr},
};
const AlgPackage kSkipPackages[] = {
    {"DES-CBC", "FWPKdes"},    {"RC2-40", "FWPKrc2"},     {"RC4-40", "FWPKrc4"},
    {"RC4-128", "FWPKrc4s"},   {"DES-EDE-K3", "FWPK3des"}, {"Safer-128SK-CBC", "FWPKsafe"},
};

template <size_t N>
const char* find_package(const AlgPackage (&packages)[N], const char* name) {
  for (const AlgPackage& entry : packages)
    if (strcmp(entry.name, name) == 0) return entry.package;
  return nullptr;
}

}  // namespace

int screenadm_skip_alg_name_to_id(const char* name, int version, int type) {
  if (name == nullptr) return -1;
  if (strcmp(name, "NONE") == 0) return 0;
  bool device_lists = screenadm_skip_lists_read();
  int value = find_value(base_table(version, type), name);
  if (value < 0 && device_lists) value = find_value(extra_table(version, type), name);
  return value;
}

int screenadm_skip_alg_known_value(const char* name, int version, int type) {
  if (name == nullptr) return -1;
  if (strcmp(name, "NONE") == 0) return 0;
  int value = find_value(base_table(version, type), name);
  return value >= 0 ? value : find_value(extra_table(version, type), name);
}

bool screenadm_ipsec_alg_is(const char* name, int operation, int value) {
  const AlgName encryption[] = {{"DES-CBC", 2}, {"DES", 2},      {"3DES-CBC", 3}, {"3DES", 3},
                                {"BLOWFISH", 7}, {"AES", 12}, {"NULL", 11}};
  const AlgName authentication[] = {{"MD5", 2}, {"SHA1", 3}};
  AlgTable names = operation == 15 ? table(encryption) : table(authentication);
  return find_value(names, name) == value;
}

const char* screenadm_alg_name_to_pkg(const char* name, const char* family) {
  if (name == nullptr) return nullptr;
  if (family != nullptr && strcmp(family, "SKIP") == 0) return find_package(kSkipPackages, name);
  return find_package(kIpsecPackages, name);
}
