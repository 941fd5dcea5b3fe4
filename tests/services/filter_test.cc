#include "services/filter.h"

#include <gtest/gtest.h>

#include <sstream>

#include "services/services_fixture.h"

namespace {

// Owns the generated sets of one filter.
class Generated {
 public:
  explicit Generated(const Filter& filter) : sets_(filter.GenerateFilterParams()) {}
  ~Generated() {
    sets_->Delete_Data();
    delete sets_;
  }
  int Length() const { return sets_->Length(); }
  const FilterParams& At(int index) const {
    TList_Cell<FilterParams>* cell = sets_->Head();
    while (index-- > 0) cell = cell->Next();
    return *cell->Data();
  }

 private:
  TList<FilterParams>* sets_;
};

Discriminator* values(unsigned long start, unsigned long end, int broadcast = 0, TList<int>* params = nullptr) {
  return new Discriminator(start, end, 0, params, broadcast);
}

class FilterTest : public ::testing::Test {
 protected:
  FilterTest() {
    engines_list_.Append(engines_.tcp);
    engines_list_.Append(engines_.udp);
    engines_list_.Append(zero_);
  }

  Filter* Resolved(const char* engine, std::initializer_list<Discriminator*> discriminators) {
    TList<Discriminator>* list = new TList<Discriminator>;
    for (Discriminator* discriminator : discriminators) list->Append(*discriminator);
    Filter* filter = new Filter(engine, list);
    std::ostringstream errors;
    EXPECT_EQ(filter->Resolve(engines_list_, errors), 0);
    return filter;
  }

  Engines engines_;
  StateEngine zero_{"zero", "z", "port", 5, 1, 0, 0, nullptr, 1, 0};
  TList<Entity> engines_list_;
};

TEST_F(FilterTest, ResolveReportsWithTheConstantServiceWord) {
  Filter filter("nowhere", nullptr);
  std::ostringstream errors;
  EXPECT_EQ(filter.Resolve(engines_list_, errors), 1);
  EXPECT_EQ(errors.str(), "Error: \"nowhere\" refers to undefined STATEENGINE:\"Service\".\n");
  EXPECT_EQ(filter.EngineResolved(), nullptr);
  EXPECT_EQ(Generated(filter).Length(), 0);
}

TEST_F(FilterTest, StarCoversTheEngineSpaceAndNoDiscriminatorMeansNoSet) {
  std::unique_ptr<Filter> bare(Resolved("tcp", {}));
  EXPECT_EQ(Generated(*bare).Length(), 0);
  std::unique_ptr<Filter> wide(Resolved("tcp", {new Discriminator(0, 0, 1, nullptr, 0)}));
  EXPECT_EQ(listed(Generated(*wide).At(0).Ranges()), (Bounds{{0, 65535}}));
  std::unique_ptr<Filter> narrow(Resolved("zero", {new Discriminator(0, 0, 1, nullptr, 0)}));
  EXPECT_EQ(listed(Generated(*narrow).At(0).Ranges()), (Bounds{{0, 0}}));
}

TEST_F(FilterTest, DefaultDiscriminatorsCollapsePerBroadcastFlag) {
  std::unique_ptr<Filter> filter(Resolved("tcp", {values(1, 5), values(9, 6), values(20, 20), values(7, 7, -1)}));
  Generated sets(*filter);
  ASSERT_EQ(sets.Length(), 2);
  EXPECT_EQ(listed(sets.At(0).Ranges()), (Bounds{{1, 9}, {20, 20}}));
  EXPECT_EQ(sets.At(0).Broadcast(), 0);
  EXPECT_EQ(sets.At(0).Params().Length(), 1);
  EXPECT_EQ(sets.At(1).Broadcast(), -1);
  EXPECT_EQ(sets.At(1).Direction(), FD_FORWARD);
}

TEST_F(FilterTest, ParamsCountOnlyWhereNoDefaultSetExistsYet) {
  std::unique_ptr<Filter> late(Resolved("tcp", {values(1, 1), values(2, 2, 0, ints({9}))}));
  Generated merged(*late);
  ASSERT_EQ(merged.Length(), 1);
  EXPECT_EQ(*merged.At(0).Params().Head()->Data(), 0);
  EXPECT_EQ(listed(merged.At(0).Ranges()), (Bounds{{1, 2}}));

  std::unique_ptr<Filter> early(Resolved("tcp", {values(1, 1, 0, ints({9})), values(5, 5), values(6, 6, 0, ints({9}))}));
  Generated apart(*early);
  ASSERT_EQ(apart.Length(), 2);
  EXPECT_EQ(*apart.At(0).Params().Head()->Data(), 9);
  EXPECT_EQ(listed(apart.At(0).Ranges()), (Bounds{{1, 1}}));
  EXPECT_EQ(listed(apart.At(1).Ranges()), (Bounds{{5, 6}}));
}

}  // namespace
