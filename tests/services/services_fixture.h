// Engines and list builders shared by the tests of the services classes.
#ifndef FW_TESTS_SERVICES_FIXTURE_H
#define FW_TESTS_SERVICES_FIXTURE_H

#include <initializer_list>
#include <utility>
#include <vector>

#include "services/filter_params.h"
#include "services/int_list.h"
#include "services/state_engine.h"

using Bounds = std::vector<std::pair<uint32_t, uint32_t>>;

inline TList<int>* ints(std::initializer_list<int> values) {
  TList<int>* list = new TList<int>;
  for (int value : values) list->Append(*new int(value));
  return list;
}

inline TList<Range>* numbers(const Bounds& bounds) {
  TList<Range>* list = new TList<Range>;
  for (const auto& bound : bounds) list->Append(*new Range(bound.first, bound.second, RT_NUMBER, RS_ADDRESSES));
  return list;
}

inline Bounds listed(const TList<Range>& list) {
  Bounds bounds;
  for (TList_Cell<Range>* cell = list.Head(); cell != nullptr; cell = cell->Next())
    bounds.emplace_back(cell->Data()->Start(), cell->Data()->End());
  return bounds;
}

// tcp and its competitor share class 1 and subclass 1; udp is class 2.
struct Engines {
  StateEngine tcp{"tcp", "tcp_engine", "port", 1, 1, 65535, 1, ints({0}), 1, 0};
  StateEngine rival{"rival", "tcp_engine", "port", 1, 1, 65535, 1, ints({0}), 1, 1};
  StateEngine ranked{"ranked", "tcp_engine", "port", 1, 2, 65535, 1, ints({0}), 0, 1};
  StateEngine udp{"udp", "udp_engine", "port", 2, 1, 65535, 0, nullptr, 1, 1};
  StateEngine ether{"ether", "ether_engine", "type", 9, 1, 0xFFFF, 0, nullptr, 1, 0};
};

inline FilterParams* params_set(StateEngine& engine, std::initializer_list<int> params, const Bounds& bounds,
                                int broadcast = 0, Filter_Direction direction = FD_FORWARD) {
  return new FilterParams(&engine, ints(params), numbers(bounds), broadcast, direction);
}

#endif
