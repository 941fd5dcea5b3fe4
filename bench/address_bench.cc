// Set algebra of addresses on sets of 10,000 ranges, the size at which rule
// distribution spends its time.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "model/address.h"

namespace {

const int kRanges = 10000;

// Ranges [8i, 8i+3] for i below kRanges, in a shuffled order.
std::vector<Range> spread_ranges(uint32_t offset) {
  std::vector<Range> ranges;
  for (uint32_t i = 0; i < kRanges; ++i)
    ranges.emplace_back(8 * i + offset, 8 * i + offset + 3, RT_ADDRESS, RS_ADDRESSES);
  std::shuffle(ranges.begin(), ranges.end(), std::mt19937(42));
  return ranges;
}

std::unique_ptr<Address> build(const std::vector<Range>& ranges) {
  std::unique_ptr<Address> address(new Address("bench", nullptr, nullptr, ADDRESS_SINGLE));
  for (const Range& range : ranges) address->Include(range);
  return address;
}

void BM_IncludeBuild(benchmark::State& state) {
  std::vector<Range> ranges = spread_ranges(0);
  for (auto _ : state) benchmark::DoNotOptimize(build(ranges));
  state.SetItemsProcessed(state.iterations() * kRanges);
}
BENCHMARK(BM_IncludeBuild)->Unit(benchmark::kMillisecond);

void BM_IncludeMerging(benchmark::State& state) {
  std::vector<Range> gaps = spread_ranges(4);  // each one bridges two ranges
  for (auto _ : state) {
    state.PauseTiming();
    std::unique_ptr<Address> address = build(spread_ranges(0));
    state.ResumeTiming();
    for (const Range& gap : gaps) address->Include(gap);
    benchmark::DoNotOptimize(address->Ranges().Head());
  }
  state.SetItemsProcessed(state.iterations() * kRanges);
}
BENCHMARK(BM_IncludeMerging)->Unit(benchmark::kMillisecond);

void BM_ExcludeSplitting(benchmark::State& state) {
  std::vector<Range> holes;
  for (uint32_t i = 0; i < kRanges; ++i) holes.emplace_back(8 * i + 1, 8 * i + 1, RT_ADDRESS, RS_ADDRESSES);
  for (auto _ : state) {
    state.PauseTiming();
    std::unique_ptr<Address> address = build(spread_ranges(0));
    state.ResumeTiming();
    for (const Range& hole : holes) address->Exclude(hole);
    benchmark::DoNotOptimize(address->Ranges().Head());
  }
  state.SetItemsProcessed(state.iterations() * kRanges);
}
BENCHMARK(BM_ExcludeSplitting)->Unit(benchmark::kMillisecond);

void BM_Intersection(benchmark::State& state) {
  std::unique_ptr<Address> left = build(spread_ranges(0));
  std::unique_ptr<Address> right = build(spread_ranges(2));
  for (auto _ : state) {
    std::unique_ptr<Address> common(left->Intersection(*right));
    benchmark::DoNotOptimize(common->Ranges().Head());
  }
  state.SetItemsProcessed(state.iterations() * kRanges);
}
BENCHMARK(BM_Intersection)->Unit(benchmark::kMillisecond);

void BM_Equal(benchmark::State& state) {
  std::vector<Range> ranges = spread_ranges(0);
  std::unique_ptr<Address> left = build(ranges);
  std::reverse(ranges.begin(), ranges.end());
  std::unique_ptr<Address> right = build(ranges);
  for (auto _ : state) benchmark::DoNotOptimize(left->Equal(*right));
  state.SetItemsProcessed(state.iterations() * kRanges);
}
BENCHMARK(BM_Equal)->Unit(benchmark::kMicrosecond);

}  // namespace
