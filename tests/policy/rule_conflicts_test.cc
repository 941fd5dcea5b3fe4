#include <gtest/gtest.h>

#include <sstream>

#include "driver/fw_file.h"
#include "model/registry.h"
#include "policy/policy.h"
#include "policy/rule_fixture.h"
#include "screen/ferrowall.h"

namespace {

// Only rules that decrypt manual IPsec at the screen are compared; rules
// without such parameters pass the conflict stage of the verification
// whatever their addresses, down to the last rule of the list.
TEST_F(PolicyVerifyInScratchTest, RulesWithoutManualParametersPassTheConflictStage) {
  Policy policy(new FWFile(nullptr, nullptr));
  for (int copies = 0; copies < 3; ++copies) policy.Rules(*parsed_rule("www", "*", "localhost").release());
  Registry registry;
  // A service with nothing in it would leave no rule behind the reverse pass.
  Engines engines;
  registry.ServicesCompile(*service_of("www", {params_set(engines.tcp, {0}, {{80, 80}})}).release());
  Ferrowall screen("gate");
  std::ostringstream out;
  testing::internal::CaptureStderr();
  EXPECT_EQ(policy.Verify(screen, out, registry), 0) << out.str();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

  TList_Cell<Entity>* first = policy.Rules().Items().Head();
  const Rule& rule = *static_cast<const Rule*>(first->Data());
  EXPECT_EQ(rule.Conflicts(first->Next(), screen), 0);
  EXPECT_EQ(rule.Conflicts(*static_cast<const Rule*>(first->Next()->Data())), 0);
}

}  // namespace
