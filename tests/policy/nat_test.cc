#include "policy/nat.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "model/address.h"

namespace {

uint32_t ip(const char* text) {
  uint32_t value = 0;
  EXPECT_EQ(parse_ipv4addr(text, &value), 0) << text;
  return value;
}

// The registry's addresses that the entries below name.
struct Addresses {
  std::vector<std::unique_ptr<Address>> owned;
  TList<Entity> list;
  Addresses() {
    add("net", "10.0.0.0", "10.0.0.255");
    add("public", "192.168.1.0", "192.168.1.255");
    add("part", "10.0.0.128", "10.0.0.130");
    add("srv", "172.16.0.1", "172.16.0.1");
    add("one", "192.168.9.1", "192.168.9.1");
    add("srv_part", "172.16.0.0", "172.16.0.3");
    add("*", "0.0.0.0", "255.255.255.255");
    owned.emplace_back(new Address("e1", nullptr, nullptr, ADDRESS_SINGLE));
    owned.emplace_back(new Address("e2", nullptr, nullptr, ADDRESS_SINGLE));
    for (auto& address : owned) list.Append(*address);
  }
  void add(const char* name, const char* start, const char* end) {
    owned.emplace_back(new Address(name, ip(start), ip(end), nullptr, nullptr, RS_ADDRESSES));
  }
};

// A resolved entry and what Inconsistent says about it.
struct Checked {
  int result;
  std::string text;
};

Checked check(const char* os, const char* od, const char* ts, const char* td, Nat_Type type) {
  Addresses addresses;
  Nat nat(os, od, ts, td, type, nullptr, nullptr);
  std::ostringstream resolve_out;
  EXPECT_EQ(nat.Resolve(CO_ADDRESS, addresses.list, resolve_out), 0) << resolve_out.str();
  std::ostringstream out;
  int result = nat.Inconsistent(out);
  return {result, out.str()};
}

TEST(NatTest, InconsistentNamesEachFault) {
  struct Case { const char* os; const char* od; const char* ts; const char* td; Nat_Type type;
                const char* text; };
  const Case cases[] = {
      {"net", "srv", "public", "srv", NAT_STATIC, ""},
      {"net", "one", "net", "srv", NAT_STATIC, ""},
      {"*", "*", "*", "*", NAT_STATIC, ""},
      {"net", "srv", "one", "srv", NAT_DYNAMIC, ""},
      {"net", "srv", "one", "srv", NAT_STATIC,
       "Error: Static NAT, but Addresses are different sizes\n"
       "\tSTATIC \"net\" \"srv\" \"one\" \"srv\"\n"},
      {"net", "srv", "part", "srv", NAT_DYNAMIC,
       "Error: Original and Tranlated Source Addresses Intersect.\n"
       "\tDYNAMIC \"net\" \"srv\" \"part\" \"srv\"\n"},
      {"net", "srv_part", "net", "srv", NAT_DYNAMIC,
       "Error: Original and Tranlated Destination Addresses Intersect.\n"
       "\tDYNAMIC \"net\" \"srv_part\" \"net\" \"srv\"\n"},
      {"net", "srv", "public", "one", NAT_STATIC,
       "Error:  Cannot translate both source and destination addresses.\n"
       "\tSTATIC \"net\" \"srv\" \"public\" \"one\"\n"},
      // Every fault is told, empty addresses named sources first, as one error.
      {"e1", "srv_part", "net", "e2", NAT_STATIC,
       "\"e1\", \"e2\" Address(es) have no value and cannot be used in a NAT Rule.\n"
       "Error: Static NAT, but Addresses are different sizes\n"
       "\tSTATIC \"e1\" \"srv_part\" \"net\" \"e2\"\n"
       "Error:  Cannot translate both source and destination addresses.\n"
       "\tSTATIC \"e1\" \"srv_part\" \"net\" \"e2\"\n"},
  };
  for (const Case& c : cases) {
    Checked checked = check(c.os, c.od, c.ts, c.td, c.type);
    EXPECT_EQ(checked.result, *c.text != '\0') << c.os << c.od << c.ts << c.td;
    EXPECT_EQ(checked.text, c.text);
  }
  Checked sources_first = check("net", "e1", "e2", "net", NAT_DYNAMIC);
  EXPECT_EQ(sources_first.text.substr(0, sources_first.text.find('\n') + 1),
            "\"e2\", \"e1\" Address(es) have no value and cannot be used in a NAT Rule.\n");
}

TEST(NatTest, CountsAreZeroForTheUntranslatedSide) {
  Addresses addresses;
  std::ostringstream out;
  Nat by_source("net", "srv", "public", "srv", NAT_STATIC, nullptr, nullptr);
  by_source.Resolve(CO_ADDRESS, addresses.list, out);
  EXPECT_EQ(by_source.CountSource(), 256u);
  EXPECT_EQ(by_source.CountDest(), 0u);
  Nat by_destination("net", "srv_part", "net", "one", NAT_DYNAMIC, nullptr, nullptr);
  by_destination.Resolve(CO_ADDRESS, addresses.list, out);
  EXPECT_EQ(by_destination.CountSource(), 0u);
  EXPECT_EQ(by_destination.CountDest(), 1u);
  // The whole address space does not fit 32 bits.
  Nat whole("*", "srv", "net", "srv", NAT_DYNAMIC, nullptr, nullptr);
  whole.Resolve(CO_ADDRESS, addresses.list, out);
  EXPECT_EQ(whole.CountSource(), 4294967296ull);
}

TEST(NatTest, MissingNamesBecomePlaceholdersAndResolveReportsEachMiss) {
  Addresses addresses;
  Nat nat(nullptr, nullptr, nullptr, "srv", NAT_DYNAMIC, nullptr, nullptr);
  EXPECT_STREQ(nat.Written(NAT_ORIGINAL_SOURCE).Name(), "Missing original source address");
  EXPECT_STREQ(nat.Written(NAT_ORIGINAL_DESTINATION).Name(), "Misssing original destination address");
  EXPECT_STREQ(nat.Written(NAT_TRANSLATED_SOURCE).Name(), "Missing translated source address");
  std::ostringstream out;
  EXPECT_EQ(nat.Resolve(CO_SERVICE, addresses.list, out), 0);
  EXPECT_EQ(nat.Resolve(CO_ADDRESS, addresses.list, out), 3);
  EXPECT_EQ(out.str(),
            "Error: \"NAT\" refers to undefined ADDRESS: \"Missing original source address\".\n"
            "Error: \"NAT\" refers to undefined ADDRESS: \"Misssing original destination address\".\n"
            "Error: \"NAT\" refers to undefined ADDRESS: \"Missing translated source address\".\n");
  EXPECT_EQ(nat.Resolved(NAT_ORIGINAL_SOURCE), nullptr);
  EXPECT_STREQ(nat.Resolved(NAT_TRANSLATED_DESTINATION)->Name(), "srv");
}

TEST(NatTest, UnresolvedEntryHasNoValues) {
  Nat nat("a", "b", "a", "b", NAT_DYNAMIC, nullptr, nullptr);
  std::ostringstream out;
  EXPECT_EQ(nat.Inconsistent(out), 1);
  EXPECT_EQ(out.str(),
            "\"a\", \"a\", \"b\", \"b\" Address(es) have no value and cannot be used in a NAT Rule.\n");
}

TEST(NatTest, TextForms) {
  Nat nat("net", "srv", "public", "srv", NAT_DYNAMIC, "gate", "hide");
  std::ostringstream printed;
  printed << nat;
  EXPECT_EQ(printed.str(),
            "NAT\tDYNAMIC \"net\" \"srv\" \"public\" \"srv\"\tSCREEN\t\"gate\"\tCOMMENT\t\"hide\";\n");
  std::ostringstream listed;
  nat.Enumerate(listed, ENUM_NAME);
  EXPECT_EQ(listed.str(),
            "SCREEN \"gate\" DYNAMIC \"net\" \"srv\" \"public\" \"srv\" COMMENT \"hide\"\n");
}

TEST(NatTest, ReferAndRenameByAddressAndScreen) {
  Nat nat("net", "srv", "public", "srv", NAT_STATIC, "gate", nullptr);
  EXPECT_EQ(nat.Refer(CO_ADDRESS, "gate", 0), 0);

  testing::internal::CaptureStdout();
  nat.Refer(CO_ADDRESS, "srv", 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "SCREEN \"gate\" NAT\t\"net\" \"srv\" \"public\" \"srv\"\n");

  nat.RenameReference(CO_ADDRESS, "srv", "server");
  nat.RenameReference(CO_SCREEN, "gate", "wall");
  nat.RenameReference(CO_SERVICE, "net", "x");
  std::ostringstream out;
  nat.Print(out);
  EXPECT_EQ(out.str(), "NAT\tSTATIC \"net\" \"server\" \"public\" \"server\"\tSCREEN\t\"wall\"");
}

}  // namespace
