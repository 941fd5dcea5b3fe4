#include "output/service_writer.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "model/registry.h"
#include "services/service.h"
#include "services/services_fixture.h"
#include "services/state_engine_internal.h"

namespace {

TEST(ServicesFileTest, GroupListsItsMembersAndEmptyFormsGiveZero) {
  TList<Entity>* members = new TList<Entity>;
  members->Append(*new Entity("smtp", nullptr, nullptr, 0));
  members->Append(*new Entity("pop", nullptr, nullptr, 0));
  Service mail("mail", members, nullptr, nullptr);
  Service bare("bare", nullptr, nullptr, nullptr, nullptr);
  Service nobody("nobody", static_cast<TList<Entity>*>(nullptr), nullptr, nullptr);
  std::ostringstream out;
  ServiceWriter::GenerateServicesFile(out, mail);
  ServiceWriter::GenerateServicesFile(out, bare);
  ServiceWriter::GenerateServicesFile(out, nobody);
  EXPECT_EQ(out.str(), "\"mail\"\n2\n\"smtp\"\n\"pop\"\n\"bare\"\n0\n\"nobody\"\n0\n");
}

TEST(StateEnginesHeaderTest, IncludesTheRoutinesEachEngineHas) {
  Registry registry;
  registry.StateEngines(*new StateEngine("tcp", "tcp_engine", "port", 1, 1, 65535, 0, nullptr, 1, 0));
  registry.StateEngines(*new StateEngine("udp", "udp_engine", "port", 2, 1, 65535, 0, nullptr, 1, 1));
  registry.StateEngines(*new StateEngine("late", "late_engine", "port", 3, 1, 65535, 0, nullptr, 0, 1));
  registry.StateEngines(*new StateEngine("idle", "idle_engine", "port", 4, 1, 65535, 0, nullptr, 0, 0));
  std::ostringstream out;
  ServiceWriter::GenerateStateEnginesHeader(out, registry);
  EXPECT_EQ(out.str(),
            "#include \"tcp.fwd\"\n#include \"udp.fwd\"\n#include \"udp.rev\"\n#include \"late.rev\"\n");
}

// Engines linked to internal routines with ids 0 (tcp_engine) and 1
// (udp_engine); "ranked" runs on the reverse path only.
class ServiceLinesTest : public testing::Test {
 protected:
  void SetUp() override {
    StateEngineInternal::ResetUniqueId();
    FilterParams::ResetUniqueId();
    internals_.Append(*new StateEngineInternal("tcp_engine", 1));
    internals_.Append(*new StateEngineInternal("udp_engine", 1));
    std::ostringstream errors;
    for (StateEngine* engine : {&engines_.tcp, &engines_.udp, &engines_.ranked})
      ASSERT_EQ(engine->Resolve(CO_STATE_ENGINE, internals_, errors), 0) << errors.str();
  }
  void TearDown() override { internals_.Delete_Data(); }

  Engines engines_;
  TList<Entity> internals_;
};

TEST_F(ServiceLinesTest, DirectionPicksTheRoutineAndAMissingRoutineGivesNoCall) {
  std::unique_ptr<FilterParams> back(params_set(engines_.udp, {}, {{53, 53}}, 0, FD_REVERSE));
  std::unique_ptr<FilterParams> forward_only_reverse(params_set(engines_.tcp, {0}, {{80, 80}}, 0, FD_REVERSE));
  std::unique_ptr<FilterParams> reverse_only_forward(params_set(engines_.ranked, {0}, {{25, 25}}));
  std::ostringstream table;
  std::ostringstream program;
  ServiceWriter::GenerateOutput(table, program, *back, 1, 2, 1, false);
  ServiceWriter::GenerateOutput(table, program, *forward_only_reverse, 1, 2, 1, true);
  ServiceWriter::GenerateOutput(table, program, *reverse_only_forward, 1, 2, 1, true);
  EXPECT_EQ(program.str(), "\t\t\tudp_rev(svc_0, 1, 1, Filter_0, Policy_2, 0x1)\n");
  EXPECT_EQ(table.str(), "RANGE_LIST\tsvc_0\t53 - 53\nSTATE_ENGINE_PARAMS\tFilter_0\n");
}

TEST_F(ServiceLinesTest, EtherEntryAndInternalEngineLines) {
  std::unique_ptr<FilterParams> ether(params_set(engines_.ether, {}, {{0x800, 0x800}, {0x806, 0x806}}));
  std::ostringstream table;
  ServiceWriter::GenerateEtherOutput(table, *ether, 0x800006);
  ServiceWriter::GenerateOutput(table, *static_cast<StateEngineInternal*>(internals_.Tail()->Data()));
  EXPECT_EQ(table.str(),
            "ETHER_ENTRY\t0x800006\tRANGE_LIST\tsvc_0\t2048 - 2048\t2054 - 2054\n"
            "STATE_ENGINE\tudp_engine\t1\n");
}

}  // namespace
