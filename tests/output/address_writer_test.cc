#include "output/address_writer.h"

#include <sstream>

#include "output/output_fixture.h"

namespace {

class AddressWriterTest : public testing::Test {
 protected:
  void SetUp() override { Address::ResetUniqueId(); }
};

TEST_F(AddressWriterTest, AddressLineListsRangesAscendingAndKeepsItsNumber) {
  auto lan = address_of("lan", {{"192.168.2.0", "192.168.2.255"}, {"192.168.1.5", "192.168.1.5"}});
  auto empty = address_of("none", {});
  std::ostringstream out;
  AddressWriter::GenerateOutput(out, *lan);
  AddressWriter::GenerateOutput(out, *empty);
  AddressWriter::GenerateOutput(out, *lan);
  EXPECT_EQ(out.str(),
            "RANGE_LIST\taddr_0\t192.168.1.5 - 192.168.1.5\t192.168.2.0 - 192.168.2.255\t\n"
            "RANGE_LIST\taddr_1\t\n"
            "RANGE_LIST\taddr_0\t192.168.1.5 - 192.168.1.5\t192.168.2.0 - 192.168.2.255\t\n");
}

TEST_F(AddressWriterTest, AddressesEntryCountsItsRanges) {
  auto lan = address_of("lan", {{"192.168.2.0", "192.168.2.255"}, {"192.168.1.5", "192.168.1.5"}});
  auto empty = address_of("nothing left", {});
  std::ostringstream out;
  AddressWriter::GenerateAddressesFile(out, *lan);
  AddressWriter::GenerateAddressesFile(out, *empty);
  EXPECT_EQ(out.str(),
            "\"lan\"\n2\n192.168.1.5 - 192.168.1.5\n192.168.2.0 - 192.168.2.255\n"
            "\"nothing left\"\n0\n");
}

}  // namespace
