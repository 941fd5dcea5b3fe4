#include "output/nat_writer.h"

#include <sstream>

#include "output/output_fixture.h"

namespace {

class NatWriterTest : public testing::Test {
 protected:
  void SetUp() override {
    addresses_.Append(*address_of("in", {{"10.0.0.0", "10.0.0.255"}}).release());
    addresses_.Append(*address_of("out", {{"192.168.2.0", "192.168.2.255"}, {"192.168.1.5", "192.168.1.5"}}).release());
    addresses_.Append(*address_of("pub", {{"1.2.3.4", "1.2.3.4"}}).release());
  }
  void TearDown() override { addresses_.Delete_Data(); }

  std::string Line(unsigned type) {
    Nat nat("in", "out", "pub", "out", type, nullptr, nullptr);
    std::ostringstream errors;
    EXPECT_EQ(nat.Resolve(CO_ADDRESS, addresses_, errors), 0) << errors.str();
    std::ostringstream out;
    NatWriter::GenerateOutput(out, nat);
    return out.str();
  }

  TList<Entity> addresses_;
};

TEST_F(NatWriterTest, LineNamesItsKindAndJoinsTheFourRangeLists) {
  EXPECT_EQ(Line(NAT_DYNAMIC),
            "NAT\tDYNAMIC\t"
            "RANGE_LIST\t\"in\" 10.0.0.0 - 10.0.0.255\t"
            "\tRANGE_LIST\t\"out\" 192.168.1.5 - 192.168.1.5\t192.168.2.0 - 192.168.2.255\t"
            "RANGE_LIST\t\"pub\" 1.2.3.4 - 1.2.3.4\t"
            "\tRANGE_LIST\t\"out\" 192.168.1.5 - 192.168.1.5\t192.168.2.0 - 192.168.2.255\t\n");
  EXPECT_EQ(Line(NAT_STATIC).substr(0, 11), "NAT\tSTATIC\t");
}

}  // namespace
