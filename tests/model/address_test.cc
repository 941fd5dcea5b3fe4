#include "model/address.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <sstream>
#include <utility>
#include <vector>

#include "model/model_fixture.h"

namespace {

Range span(uint32_t start, uint32_t end) { return Range(start, end, RT_ADDRESS, RS_ADDRESSES); }

Bounds listed(const Address& address) { return listed(address.Ranges()); }

std::unique_ptr<Address> set_of(const char* name, const Bounds& bounds) {
  std::unique_ptr<Address> address(new Address(name, nullptr, nullptr, ADDRESS_SINGLE));
  for (const auto& bound : bounds) address->Include(span(bound.first, bound.second));
  return address;
}

TEST(AddressTest, ExcludeSplitsTrimsAndDeletes) {
  auto address = set_of("a", {{1, 9}, {20, 30}});
  address->Exclude(span(5, 5));
  EXPECT_EQ(listed(*address), (Bounds{{1, 4}, {20, 30}, {6, 9}}));
  address->Exclude(span(1, 1));
  address->Exclude(span(25, 40));
  EXPECT_EQ(listed(*address), (Bounds{{2, 4}, {20, 24}, {6, 9}}));
  address->Exclude(span(6, 9));
  EXPECT_EQ(listed(*address), (Bounds{{2, 4}, {20, 24}}));
  address->Exclude(span(0, 0xFFFFFFFFu));
  EXPECT_TRUE(address->Ranges().Empty());
  address->Exclude(span(3, 3));
  EXPECT_TRUE(address->Ranges().Empty());
  // One cut across several ranges, and cuts at both ends of the space.
  auto ends = set_of("ends", {{0, 10}, {20, 30}, {0xFFFFFFF0u, 0xFFFFFFFFu}});
  ends->Exclude(span(5, 25));
  ends->Exclude(span(0xFFFFFFFFu, 0xFFFFFFFFu));
  ends->Exclude(span(0, 0));
  EXPECT_EQ(listed(*ends), (Bounds{{1, 4}, {26, 30}, {0xFFFFFFF0u, 0xFFFFFFFEu}}));
}

// Copies share ranges: a change to either side, a split whose upper piece
// joins the end of the list included, must leave the other as it was, and a
// later change must keep the list order the unshared ranges would have.
TEST(AddressTest, CopiesAreIndependentOfTheirOriginal) {
  auto original = set_of("a", {{1, 9}, {20, 30}});
  Address copy(*original);
  copy.Exclude(span(5, 5));
  EXPECT_EQ(listed(*original), (Bounds{{1, 9}, {20, 30}}));
  EXPECT_EQ(listed(copy), (Bounds{{1, 4}, {20, 30}, {6, 9}}));
  Address second(copy);
  copy.Include(span(31, 40));
  second.Exclude(span(0, 0xFFFFFFFFu));
  EXPECT_EQ(listed(copy), (Bounds{{1, 4}, {6, 9}, {20, 40}}));
  EXPECT_TRUE(second.Ranges().Empty());
  // A written style is not what a copy keeps: the copy prints plainly.
  simplerange prefix{0x0A000000u, 0x0A0000FFu, RS_PREFIX};
  Address written("net", &prefix, nullptr, nullptr);
  Address plain(written);
  std::ostringstream text;
  written.Ranges().Head()->Data()->Print(text << ' ');
  plain.Ranges().Head()->Data()->Print(text << ' ');
  EXPECT_EQ(text.str(), " 10.0.0.0/24 10.0.0.0 - 10.0.0.255");
}

TEST(AddressTest, SizeOfCountsTheWholeSpace) {
  Address all("*", 0u, 0xFFFFFFFFu, nullptr, nullptr, RS_PREFIX);
  EXPECT_EQ(all.SizeOf(), 4294967296ULL);
  EXPECT_EQ(set_of("two", {{1, 2}, {10, 19}})->SizeOf(), 12ULL);
  EXPECT_EQ(Address("none", nullptr, nullptr, ADDRESS_SINGLE).SizeOf(), 0ULL);
}

TEST(AddressTest, IntersectionAnswersWithOperandsWhenItCan) {
  auto big = set_of("big", {{0, 100}});
  auto small = set_of("small", {{10, 20}});
  auto apart = set_of("apart", {{200, 300}});
  EXPECT_EQ(small->Intersection(*big), small.get());
  EXPECT_EQ(big->Intersection(*small), small.get());
  EXPECT_EQ(big->Intersection(*big), big.get());
  std::unique_ptr<Address> none(big->Intersection(*apart));
  ASSERT_NE(none, nullptr);
  EXPECT_STREQ(none->Name(), "big ^ apart");
  EXPECT_TRUE(none->Ranges().Empty());
  auto left = set_of("l", {{50, 60}, {0, 10}});
  auto right = set_of("r", {{5, 55}});
  std::unique_ptr<Address> common(left->Intersection(*right));
  EXPECT_EQ(listed(*common), (Bounds{{50, 55}, {5, 10}}));
}

TEST(AddressTest, RangeIntersectionKeepsListOrder) {
  auto address = set_of("a", {{50, 60}, {0, 10}, {30, 40}});
  std::unique_ptr<TList<Range>> pieces(address->Intersection(span(5, 55)));
  ASSERT_NE(pieces, nullptr);
  EXPECT_EQ(listed(*pieces), (Bounds{{50, 55}, {5, 10}, {30, 40}}));
  pieces->Delete_Data();
  EXPECT_EQ(address->Intersection(span(11, 29)), nullptr);
}

TEST(AddressTest, ExclusionAndMerge) {
  auto a = set_of("a", {{0, 100}});
  auto same = set_of("same", {{0, 100}});
  auto apart = set_of("apart", {{200, 300}});
  auto middle = set_of("m", {{40, 60}});
  EXPECT_EQ(a->Exclusion(*same), nullptr);
  EXPECT_EQ(a->Exclusion(*apart), a.get());
  std::unique_ptr<Address> rest(a->Exclusion(*middle));
  EXPECT_STREQ(rest->Name(), "a - m");
  EXPECT_EQ(listed(*rest), (Bounds{{0, 39}, {61, 100}}));
  std::unique_ptr<Address> empty(middle->Exclusion(*a));  // a superset that isn't equal
  EXPECT_TRUE(empty->Ranges().Empty());
  EXPECT_EQ(a->Merge(*middle), a.get());
  EXPECT_EQ(a->Merge(*same), a.get());
  EXPECT_EQ(middle->Merge(*a), a.get());
  std::unique_ptr<Address> both(a->Merge(*apart));
  EXPECT_STREQ(both->Name(), "a + apart");
  EXPECT_EQ(both->SizeOf(), 202ULL);
}

TEST(AddressTest, ComparisonsIgnoreNamesTypesAndStyles) {
  Address styled("x", ip("10.0.0.0"), ip("10.0.0.255"), "s1", nullptr, RS_PREFIX);
  auto plain = set_of("y", {{ip("10.0.0.0"), ip("10.0.0.127")}, {ip("10.0.0.128"), ip("10.0.0.255")}});
  Address group("g", nullptr, nullptr, ADDRESS_GROUP);
  group.Include(plain->Ranges());
  EXPECT_TRUE(styled.Equal(*plain));
  EXPECT_TRUE(group.Equal(styled));
  auto narrower = set_of("z", {{ip("10.0.0.0"), ip("10.0.0.254")}});
  EXPECT_FALSE(styled.Equal(*narrower));
  EXPECT_TRUE(narrower->SubsetOf(styled));
  EXPECT_FALSE(styled.SubsetOf(*narrower));
  Address empty("e", nullptr, nullptr, ADDRESS_SINGLE);
  EXPECT_TRUE(empty.SubsetOf(*narrower));
  EXPECT_TRUE(empty.Intersects(empty));
  EXPECT_FALSE(empty.Intersects(*narrower));
  EXPECT_FALSE(styled.Intersects(Range(ip("10.0.0.1"), ip("10.0.0.1"), RT_NUMBER, RS_ADDRESSES)));
  EXPECT_TRUE(styled.Contains(Range(ip("10.0.0.1"), ip("10.0.0.1"), RT_NUMBER, RS_ADDRESSES)));
}

// The index must not change what the plain list walks of the set operations
// give, down to the order of the ranges.  This reference does those walks.
class ListWalk {
 public:
  void Include(uint32_t start, uint32_t end) {
    Range grown = span(start, end);
    for (auto it = ranges_.begin(); it != ranges_.end();) {
      if (it->Intersects(grown) || it->Adjacent(grown)) {
        grown.Consume(*it);
        it = ranges_.erase(it);
      } else {
        ++it;
      }
    }
    ranges_.push_back(grown);
  }
  void Exclude(uint32_t start, uint32_t end) {
    Range cut = span(start, end);
    size_t count = ranges_.size();
    for (size_t i = 0; i < count;) {
      Range& range = ranges_[i];
      if (cut.SupersetOf(range)) {
        ranges_.erase(ranges_.begin() + i);
        --count;
        continue;
      }
      if (cut.ProperSubsetOf(range)) {
        std::unique_ptr<Range> upper(range.Split(cut));
        ranges_.push_back(*upper);
      } else if (cut.Intersects(range)) {
        range.Exclude(cut);
      }
      ++i;
    }
  }
  Bounds Listed() const {
    Bounds bounds;
    for (const Range& range : ranges_) bounds.emplace_back(range.Start(), range.End());
    return bounds;
  }

 private:
  std::vector<Range> ranges_;
};

TEST(AddressTest, AgreesWithThePlainListWalk) {
  std::mt19937 random(20261123);
  for (int round = 0; round < 200; ++round) {
    Address address("a", nullptr, nullptr, ADDRESS_SINGLE);
    ListWalk reference;
    for (int step = 0; step < 60; ++step) {
      uint32_t start = random() % 300, end = start + random() % 20;
      if (random() % 3 == 0) {
        address.Exclude(span(start, end));
        reference.Exclude(start, end);
      } else {
        address.Include(span(start, end));
        reference.Include(start, end);
      }
      ASSERT_EQ(listed(address), reference.Listed()) << "round " << round << " step " << step;
    }
    Address probe("p", random() % 300, random() % 300, nullptr, nullptr, RS_ADDRESSES);
    const Range& span_of_probe = *probe.Ranges().Head()->Data();
    bool intersects = false, contained = false;
    for (const auto& bound : reference.Listed()) {
      intersects |= bound.first <= span_of_probe.End() && bound.second >= span_of_probe.Start();
      contained |= bound.first <= span_of_probe.Start() && bound.second >= span_of_probe.End();
    }
    EXPECT_EQ(address.Intersects(span_of_probe), intersects);
    EXPECT_EQ(address.Contains(span_of_probe), contained);
    EXPECT_EQ(probe.SubsetOf(address), contained);
  }
}

}  // namespace
