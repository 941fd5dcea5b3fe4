// Builders of small hand-made objects shared by the output tests.
#ifndef FW_TESTS_OUTPUT_FIXTURE_H
#define FW_TESTS_OUTPUT_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <utility>

#include "model/address.h"

inline uint32_t ip(const char* text) {
  uint32_t value = 0;
  EXPECT_EQ(parse_ipv4addr(text, &value), 0) << text;
  return value;
}

// An address of the given dotted ranges, included in the order given.
inline std::unique_ptr<Address> address_of(const char* name,
                                           std::initializer_list<std::pair<const char*, const char*>> ranges) {
  auto address = std::make_unique<Address>(name, nullptr, nullptr, ADDRESS_SINGLE);
  for (const auto& range : ranges) address->Include(Range(ip(range.first), ip(range.second), RT_ADDRESS, RS_ADDRESSES));
  return address;
}

#endif
