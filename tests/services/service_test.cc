#include "services/service.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "services/services_fixture.h"

namespace {

// Services of one test, with the engines they use; owns everything.
class ServiceTest : public ::testing::Test {
 protected:
  ServiceTest() {
    for (StateEngine* engine : {&engines_.tcp, &engines_.rival, &engines_.ranked, &engines_.udp, &engines_.ether})
      engine_list_.Append(*engine);
  }
  ~ServiceTest() override {
    services_.Delete_Data();
    for (Service* made : made_) delete made;
  }

  // A single service with one set per call of `With`.
  Service& Single(const char* name) {
    Service* service = new Service(name, nullptr, nullptr);
    services_.Append(*service);
    return *service;
  }
  Service& Group(const char* name, std::initializer_list<const char*> members) {
    TList<Entity>* list = new TList<Entity>;
    for (const char* member : members) list->Append(*new Entity(member, nullptr, nullptr, 0));
    Service* group = new Service(name, list, nullptr, nullptr);
    services_.Append(*group);
    return *group;
  }
  static void With(Service& service, StateEngine& engine, const Bounds& bounds, int broadcast = 0,
                   std::initializer_list<int> params = {0}, Filter_Direction direction = FD_FORWARD) {
    std::unique_ptr<FilterParams> set(params_set(engine, params, bounds, broadcast, direction));
    service.Include(*set, 0);
  }
  int ResolveAll(std::ostream& out) {
    int misses = 0;
    for (TList_Cell<Entity>* cell = services_.Head(); cell != nullptr; cell = cell->Next()) {
      misses += cell->Data()->Resolve(CO_SERVICE, services_, out);
      misses += cell->Data()->Resolve(CO_STATE_ENGINE, engine_list_, out);
    }
    return misses;
  }
  void ClearMarks() {
    for (TList_Cell<Entity>* cell = services_.Head(); cell != nullptr; cell = cell->Next()) cell->Data()->Used(0);
  }
  // Keeps a service that an operation made, if it is new.
  Service* Kept(Service* result) {
    if (result != nullptr && result->FindSelf(services_, 1) != result) made_.push_back(result);
    return result;
  }
  static const FilterParams& At(const Service& service, int index) {
    TList_Cell<FilterParams>* cell = service.Filters().Head();
    while (index-- > 0) cell = cell->Next();
    return *cell->Data();
  }

  Engines engines_;
  TList<Entity> engine_list_;
  TList<Entity> services_;
  std::vector<Service*> made_;
  std::ostringstream errors_;
};

TEST_F(ServiceTest, ReduceExpandsFiltersAndMergesEqualSetsAcrossMembers) {
  auto web_filter = [] {
    TList<Discriminator>* list = new TList<Discriminator>;
    list->Append(*new Discriminator(80, 80, 0, nullptr, 0));
    TList<Filter>* filters = new TList<Filter>;
    filters->Append(*new Filter("tcp", list));
    return filters;
  };
  TList<Filter>* reverse = new TList<Filter>;
  reverse->Append(*new Filter("udp", nullptr));
  services_.Append(*new Service("www", web_filter(), reverse, nullptr, nullptr));
  services_.Append(*new Service("http", web_filter(), nullptr, nullptr, nullptr));
  Service& pair = Group("pair", {"www", "http"});
  Service& outer = Group("outer", {"pair", "www"});
  ASSERT_EQ(ResolveAll(errors_), 0) << errors_.str();
  outer.Reduce();
  ASSERT_EQ(pair.Filters().Length(), 1);
  EXPECT_EQ(listed(At(pair, 0).Ranges()), (Bounds{{80, 80}}));
  EXPECT_EQ(outer.Filters().Length(), 1);
  EXPECT_TRUE(pair.Reduced());
  EXPECT_TRUE(outer.Equal(pair));
}

TEST_F(ServiceTest, ResolveReportsUnknownEnginesAndMembers) {
  TList<Filter>* filters = new TList<Filter>;
  filters->Append(*new Filter("nowhere", nullptr));
  services_.Append(*new Service("odd", filters, nullptr, nullptr, nullptr));
  Group("g", {"odd", "missing"});
  EXPECT_EQ(ResolveAll(errors_), 2);
  EXPECT_EQ(errors_.str(),
            "Error: \"nowhere\" refers to undefined STATEENGINE:\"Service\".\n"
            "Error: \"g\" refers to undefined SERVICE: \"missing\".\n");
}

TEST_F(ServiceTest, CyclesAreFoundFromGroupsOnThem) {
  Service& self = Group("self", {"self"});
  Service& a = Group("a", {"b"});
  Service& b = Group("b", {"c"});
  Service& c = Group("c", {"b"});
  Service& single = Single("s");
  ASSERT_EQ(ResolveAll(errors_), 0);
  EXPECT_EQ(self.Reduce(), &self);
  a.Reduce();
  const std::pair<Service*, int> expected[] = {{&self, 1}, {&a, 0}, {&b, 1}, {&c, 1}, {&single, 0}};
  for (const auto& [service, cycle] : expected) {
    ClearMarks();
    EXPECT_EQ(service->DetectCycle(), cycle) << service->Name();
  }
}

TEST_F(ServiceTest, IncludeKeepsDirectionsAndBroadcastValuesApart) {
  Service& service = Single("s");
  With(service, engines_.tcp, {{1, 5}});
  With(service, engines_.tcp, {{6, 9}});
  With(service, engines_.tcp, {{1, 5}}, 0, {0}, FD_REVERSE);
  With(service, engines_.tcp, {{1, 5}}, -1);
  With(service, engines_.tcp, {{1, 5}}, 1);
  ASSERT_EQ(service.Filters().Length(), 4);
  EXPECT_EQ(listed(At(service, 0).Ranges()), (Bounds{{1, 9}}));
  EXPECT_EQ(At(service, 1).Direction(), FD_REVERSE);
  EXPECT_EQ(service.Broadcast(), 1);
}

TEST_F(ServiceTest, SetAlgebraAnswersWithOperandsWhenItCan) {
  Service& wide = Single("wide");
  With(wide, engines_.tcp, {{1, 100}});
  Service& narrow = Single("narrow");
  With(narrow, engines_.tcp, {{10, 20}});
  Service& apart = Single("apart");
  With(apart, engines_.udp, {{10, 20}}, 0, {});
  EXPECT_EQ(narrow.Intersection(wide), &narrow);
  EXPECT_EQ(wide.Intersection(narrow), &narrow);
  Service* none = Kept(wide.Intersection(apart));
  EXPECT_STREQ(none->Name(), "wide ^ apart");
  EXPECT_TRUE(none->Filters().Empty());
  EXPECT_EQ(wide.Exclusion(apart), &wide);
  EXPECT_EQ(wide.Exclusion(wide), nullptr);
  Service* emptied = Kept(narrow.Exclusion(wide));
  ASSERT_NE(emptied, nullptr);
  EXPECT_STREQ(emptied->Name(), "narrow - wide");
  ASSERT_EQ(emptied->Filters().Length(), 1);
  EXPECT_TRUE(At(*emptied, 0).Ranges().Empty());
  EXPECT_TRUE(emptied->SubsetOf(apart) == 0);
  Service* holed = Kept(wide.Exclusion(narrow));
  EXPECT_EQ(listed(At(*holed, 0).Ranges()), (Bounds{{1, 9}, {21, 100}}));
  EXPECT_EQ(wide.Merge(wide), &wide);
  Service* both = Kept(wide.Merge(apart));
  EXPECT_STREQ(both->Name(), "wide + apart");
  EXPECT_EQ(both->Filters().Length(), 2);
  Service& overlap = Single("overlap");
  With(overlap, engines_.tcp, {{90, 200}});
  Service* common = Kept(wide.Intersection(overlap));
  EXPECT_EQ(listed(At(*common, 0).Ranges()), (Bounds{{90, 100}}));
}

TEST_F(ServiceTest, EmptiedSetsStillCount) {
  Service& service = Single("s");
  With(service, engines_.tcp, {{1, 5}}, -1);
  std::unique_ptr<FilterParams> all(params_set(engines_.tcp, {0}, {{0, 65535}}, 0));
  service.Exclude(*all);  // broadcast isn't compared by Exclude
  ASSERT_EQ(service.Filters().Length(), 1);
  EXPECT_TRUE(At(service, 0).Ranges().Empty());
  EXPECT_EQ(service.Broadcast(), 1);
  Service& other = Single("o");
  With(other, engines_.tcp, {{7, 7}}, -1);
  EXPECT_TRUE(service.SubsetOf(other));
  Service* plain = nullptr;
  Service* broadcast = nullptr;
  service.BroadcastSplit(&plain, &broadcast);
  EXPECT_EQ(plain, nullptr);
  EXPECT_EQ(broadcast, &service);
}

TEST_F(ServiceTest, CompetingEnginesInOneServiceAreInconsistent) {
  Service& good = Single("good");
  With(good, engines_.tcp, {{1, 100}});
  With(good, engines_.ranked, {{1, 100}});
  EXPECT_EQ(good.Consistent(), 0);
  Service& competing = Single("competing");
  With(competing, engines_.tcp, {{1, 100}});
  With(competing, engines_.rival, {{50, 50}});
  EXPECT_NE(competing.Consistent(), 0);
  EXPECT_NE(good.Conflicts(competing), 0);
}

TEST_F(ServiceTest, OrderByStateEngineIsStableAndLosesNothing) {
  Service& service = Single("s");
  With(service, engines_.udp, {{1, 1}}, 0, {});
  With(service, engines_.tcp, {{2, 2}}, 0, {1});
  With(service, engines_.udp, {{3, 3}}, 0, {5});
  With(service, engines_.tcp, {{4, 4}}, 0, {2});
  TList<Entity> priority;
  priority.Append(engines_.tcp);
  auto order = [&service] {
    std::string starts;
    for (TList_Cell<FilterParams>* cell = service.Filters().Head(); cell; cell = cell->Next())
      starts += std::to_string(cell->Data()->Ranges().Head()->Data()->Start());
    return starts;
  };
  service.OrderByStateEngine(priority);
  EXPECT_EQ(order(), "2413");
  service.OrderByStateEngine(engine_list_);
  EXPECT_EQ(order(), "2413");
}

}  // namespace
