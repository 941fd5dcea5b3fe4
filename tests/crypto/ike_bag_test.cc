// The pre-shared key entries of one IKE entry: one for each pair of a local
// and a remote address, within the budget, also at the very top of the
// address space; and which entries count as the same.
#include "crypto/ike_bag.h"

#include <gtest/gtest.h>

#include <sstream>

#include "crypto/certificate.h"
#include "crypto/security_parameters_ike.h"
#include "model/address.h"

namespace {

const SecurityEnds kNoEnds = {nullptr, nullptr, nullptr, nullptr, false};

class IKEBagTest : public testing::Test {
 protected:
  SecurityParametersIKE pre_shared_{{"DES", "MD5", 1, "PRE-SHARED", "k", nullptr}, nullptr, nullptr, kNoEnds};
  Certificate key_{"k", IPSEC_MANUAL, 0, "secret", nullptr, nullptr, nullptr};
  Address top_{"top", 0xFFFFFFFEu, 0xFFFFFFFFu, nullptr, nullptr, RS_ADDRESSES};
  Address one_{"one", 0x0A000001u, nullptr, nullptr};
};

TEST_F(IKEBagTest, TheLastAddressOfTheSpaceEndsTheWalk) {
  IKEBag bag(1, pre_shared_, {&top_, &key_, nullptr}, {&one_, &key_, nullptr});
  std::ostringstream out;
  EXPECT_EQ(bag.GenerateIKEPreshared(out), 0);
  EXPECT_EQ(out.str(),
            "\n# IKEconf RULE label \"1\"\n"
            "{\tlocalidtype IP\n\tlocalid 255.255.255.254\n\tremoteidtype IP\n\tremoteid 10.0.0.1\n"
            "\tike_mode both\n\tkey secret\n}\n"
            "{\tlocalidtype IP\n\tlocalid 255.255.255.255\n\tremoteidtype IP\n\tremoteid 10.0.0.1\n"
            "\tike_mode both\n\tkey secret\n}\n");
}

TEST_F(IKEBagTest, EntriesOfTheSameEndsAreOne) {
  IKEBag first(1, pre_shared_, {&one_, &key_, nullptr}, {&top_, &key_, nullptr});
  Address same_one("copy", 0x0A000001u, nullptr, nullptr);
  EXPECT_TRUE(first.Equal(IKEBag(2, pre_shared_, {&same_one, &key_, nullptr}, {&top_, &key_, nullptr})));
  EXPECT_FALSE(first.Equal(IKEBag(3, pre_shared_, {&top_, &key_, nullptr}, {&one_, &key_, nullptr})));
  EXPECT_FALSE(first.Equal(IKEBag(4, pre_shared_, {&one_, &key_, &top_}, {&top_, &key_, nullptr})))
      << "a tunnel on one side only";
  EXPECT_TRUE(first.Equal(IKEBag(1, pre_shared_, {&top_, &key_, nullptr}, {&one_, &key_, nullptr})))
      << "the same label";
}

}  // namespace
