#include "crypto/certificate.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "support/fake_host_devices.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

Certificate* skip_cert(const char* name, const char* mkid) {
  return new Certificate(name, IPSEC_SKIP, 1, mkid, nullptr, nullptr, nullptr);
}

TEST(CertificateEqualTest, DataOrderDoesNotMatterButEveryEntryDoes) {
  std::unique_ptr<Certificate> a(skip_cert("a", "1")), b(skip_cert("b", "2"));
  CertData one(IPSEC_SKIP, 1, "1"), two(IPSEC_SKIP, 1, "2"), three(IPSEC_SKIP, 1, "3");
  a->Include(&two);
  b->Include(&one);
  EXPECT_TRUE(a->Equal(*b));
  b->Include(&three);
  EXPECT_FALSE(a->Equal(*b));
  EXPECT_FALSE(b->Equal(*a));
}

TEST(CertificateTest, LocalOnlyWhenEveryEntryIs) {
  FakeHostDevices host;
  host.AddLocalKey(1, {10, 0, 0, 1});
  std::unique_ptr<Certificate> a(skip_cert("a", "10.0.0.1"));
  EXPECT_EQ(a->IsLocal(), 1);
  CertData other(IPSEC_SKIP, 1, "10.0.0.2");
  a->Include(&other);
  EXPECT_EQ(a->IsLocal(), 0);
}

TEST(CertificateReferenceTest, ReferAndRenameFollowScreenAndMaster) {
  Certificate cert("c", IPSEC_IKE, 0, "id", "fw1", "fw2", nullptr);
  EXPECT_TRUE(cert.Refer(CO_SCREEN, "fw1", 0));
  EXPECT_TRUE(cert.Refer(CO_SCREEN, "fw2", 0));
  EXPECT_FALSE(cert.Refer(CO_SCREEN, "fw3", 0));
  EXPECT_FALSE(cert.Refer(CO_CERTIFICATE, "c", 0));
  CaptureStdout();
  cert.Refer(CO_SCREEN, "fw1", 1);
  EXPECT_EQ(GetCapturedStdout(), "SCREEN \"fw2\" CERTIFICATE \"c\"\n");
  cert.RenameReference(CO_SCREEN, "fw1", "east");
  cert.RenameReference(CO_SCREEN, "fw2", "west");
  EXPECT_STREQ(cert.LocalReference()->Name(), "east");
  EXPECT_STREQ(cert.Screen(), "west");
}

TEST(CertificateOutputTest, PrintHasTheStatementOfEachKind) {
  std::ostringstream out;
  Certificate("s").Print(out);
  EXPECT_EQ(out.str(), "\"s\"");
  out.str("");
  Certificate("s", IPSEC_SKIP, 8, "0xab", "fw", "fw", "c").Print(out);
  EXPECT_EQ(out.str(),
            "\"s\"\tCERTIFICATE\tNSID 8 MKID \"0xab\"\tMASTER\t\"fw\"\tSCREEN\t\"fw\"\tCOMMENT\t\"c\"");
  out.str("");
  Certificate("i", IPSEC_IKE, 0, "CN=x", nullptr, nullptr, nullptr).Print(out);
  EXPECT_EQ(out.str(), "\"i\"\tCERTIFICATE\tIKE \"CN=x\" ");
  out.str("");
  Certificate("k", IPSEC_MANUAL, 0, "0x1234", nullptr, nullptr, nullptr).Print(out);
  EXPECT_EQ(out.str(), "\"k\"\tKEY \"0x1234\" ");
}

}  // namespace
