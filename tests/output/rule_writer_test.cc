#include "output/rule_writer.h"

#include <memory>

#include "output/output_fixture.h"
#include "policy/rule.h"
#include "services/service.h"

namespace {

class RuleWriterTest : public testing::Test {
 protected:
  std::unique_ptr<Rule> Tagged(Action_Type action, std::initializer_list<int> tags) {
    auto rule = std::make_unique<Rule>(service_, *any_, *any_, nullptr, nullptr, nullptr, nullptr, action,
                                       LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
    for (int tag : tags) rule->SetInterface(tag);
    return rule;
  }

  Service service_{"svc", nullptr, nullptr};
  std::unique_ptr<Address> any_ = address_of("any", {{"0.0.0.0", "255.255.255.255"}});
};

TEST_F(RuleWriterTest, InterfaceWordIsTheIdAloneOrBit23WithOneBitPerId) {
  EXPECT_EQ(RuleWriter::OutputInterfaceData(*Tagged(ACTION_ALLOW, {5})), 5u);
  // Ids wrap at 32: 33 sets the same bit as 1.
  EXPECT_EQ(RuleWriter::OutputInterfaceData(*Tagged(ACTION_ALLOW, {33, 2})), 0x800006u);
  EXPECT_EQ(RuleWriter::OutputInterfaceData(*Tagged(ACTION_ALLOW, {})), 0x800000u);
}

TEST_F(RuleWriterTest, ActionCodeIsZeroForDenyAndOneForAPlainAllow) {
  EXPECT_EQ(RuleWriter::ActionCode(*Tagged(ACTION_DENY, {0})), 0);
  EXPECT_EQ(RuleWriter::ActionCode(*Tagged(ACTION_ALLOW, {0})), 1);
}

}  // namespace
