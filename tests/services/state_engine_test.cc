#include "services/state_engine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(StateEngineTest, InternalIdsFollowDefinitionOrder) {
  StateEngineInternal::ResetUniqueId();
  StateEngineInternal first("tcp_engine", 1), placeholder("x", 0), second("udp_engine", 1);
  EXPECT_EQ(first.UniqueID(), 0);
  EXPECT_EQ(placeholder.UniqueID(), -1);
  EXPECT_EQ(second.UniqueID(), 1);
}

TEST(StateEngineTest, ResolveLinksTheInternalRoutineOrReportsIt) {
  StateEngineInternal routine("tcp_engine", 1);
  TList<Entity> internals;
  internals.Append(routine);
  StateEngine tcp("tcp", "tcp_engine", "port", 1, 1, 65535, 2, nullptr, 1, 0);
  StateEngine web("web", "tcp_engine", "port", 1, 2, 65535, 2, nullptr, 1, 1);
  StateEngine lost("lost", "nothing", "port", 1, 1, 0, 0, nullptr, 0, 1);
  std::ostringstream errors;
  EXPECT_EQ(tcp.Resolve(CO_STATE_ENGINE, internals, errors), 0);
  EXPECT_EQ(web.Resolve(CO_STATE_ENGINE, internals, errors), 0);
  EXPECT_EQ(tcp.Internal(), &routine);
  EXPECT_EQ(web.Internal(), &routine);
  EXPECT_EQ(lost.Resolve(CO_SERVICE, internals, errors), 0);
  EXPECT_EQ(lost.Resolve(CO_STATE_ENGINE, internals, errors), 1);
  EXPECT_EQ(lost.Internal(), nullptr);
  EXPECT_EQ(errors.str(), "Error: \"lost\" refers to undefined STATEENGINEINTERNAL: \"nothing\".\n");
}

TEST(StateEngineTest, SubtypeIsNotSymmetric) {
  StateEngine narrow("a", "i", "l", 3, 1, 0, 0, nullptr, 1, 0);
  StateEngine wide("b", "i", "l", 3, 2, 0, 0, nullptr, 1, 0);
  StateEngine other("c", "i", "l", 4, 1, 0, 0, nullptr, 1, 0);
  EXPECT_TRUE(narrow.SubtypeOf(wide));
  EXPECT_FALSE(wide.SubtypeOf(narrow));
  EXPECT_TRUE(narrow.SubtypeOf(narrow));
  EXPECT_FALSE(narrow.SubtypeOf(other));
}

}  // namespace
