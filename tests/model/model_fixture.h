// Address and range helpers shared by the tests of the object model.
#ifndef FW_TESTS_MODEL_FIXTURE_H
#define FW_TESTS_MODEL_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "model/range.h"
#include "model/t_list.h"

using Bounds = std::vector<std::pair<uint32_t, uint32_t>>;

// The value of a dotted address that must parse.
inline uint32_t ip(const char* text) {
  uint32_t value = 0;
  EXPECT_EQ(parse_ipv4addr(text, &value), 0) << text;
  return value;
}

// The ranges in list order.
inline Bounds listed(const TList<Range>& list) {
  Bounds bounds;
  for (TList_Cell<Range>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    bounds.emplace_back(cell->Data()->Start(), cell->Data()->End());
  return bounds;
}

#endif
