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

TEST(CertificateTest, NullDataGivesUnknownTypeWithoutData) {
  Certificate none("c", IPSEC_SKIP, 1, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(none.IPsecType(), IPSEC_UNKNOWN);
  EXPECT_EQ(none.Data(), nullptr);
  EXPECT_EQ(none.IsLocal(), 0);
  EXPECT_EQ(Certificate("r").Member("x", 0, 0), 223);
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

TEST(CertificateEqualTest, SameSetUniqueIdIsEqual) {
  Certificate::ResetUniqueId();
  std::unique_ptr<Certificate> a(skip_cert("a", "1")), b(skip_cert("b", "2"));
  EXPECT_FALSE(a->Equal(*b));
  a->SetUniqueID();
  Certificate::ResetUniqueId();
  b->SetUniqueID();
  EXPECT_EQ(a->UniqueID(), 0u);
  EXPECT_TRUE(a->Equal(*b));
  b->SetUniqueID();
  EXPECT_EQ(b->UniqueID(), 0u);
}

TEST(CertificateTest, IncludeSkipsEqualDataAndNull) {
  std::unique_ptr<Certificate> a(skip_cert("a", "0xab"));
  CertData same(IPSEC_SKIP, 1, "0xAB");
  a->Include(&same);
  a->Include(nullptr);
  a->Include(*a);
  EXPECT_EQ(a->Data()->Length(), 1);
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

TEST(CertificateOutputTest, EmitDataIsNameAndFirstId) {
  std::unique_ptr<Certificate> a(skip_cert("gw", "0xab"));
  std::ostringstream out;
  a->EmitData(out);
  EXPECT_EQ(out.str(), " \"gw\"  1 \"0xab\" ");
  out.str("");
  a->GenerateDataFile(out);
  EXPECT_EQ(out.str(), "");
}

TEST(CertificateOutputTest, DumpSeparatesByTabWithoutPrefixAndByLineWithOne) {
  std::unique_ptr<Certificate> a(skip_cert("gw", "1"));
  CertData two(IPSEC_SKIP, 1, "2");
  a->Include(&two);
  std::ostringstream out;
  a->Dump(out, nullptr, nullptr, 0);
  EXPECT_EQ(out.str(), " 1 \"1\" \t 1 \"2\" \t");
  out.str("");
  a->Dump(out, "", nullptr, IPSEC_SKIP);
  EXPECT_EQ(out.str(), " 1 \"1\" \n 1 \"2\" \n");
  out.str("");
  a->Dump(out, "inc", nullptr, 0);
  EXPECT_EQ(out.str(), "inc 1 \"1\" \ninc 1 \"2\" \n");
  out.str("");
  a->Dump(out, "", nullptr, IPSEC_IKE);
  EXPECT_EQ(out.str(), "");
}

TEST(CertificateReferenceTest, MasterResolvesAmongScreens) {
  Certificate cert("c", IPSEC_IKE, 0, "id", "fw1", nullptr, nullptr);
  Entity fw1("fw1", nullptr, nullptr, 0);
  TList<Entity> screens;
  std::ostringstream out;
  EXPECT_EQ(cert.Resolve(CO_SCREEN, screens, out), 1);
  EXPECT_EQ(out.str(), "Error: \"c\" refers to undefined SCREEN: \"fw1\".\n");
  screens.Append(fw1);
  EXPECT_EQ(cert.Resolve(CO_CERTIFICATE, screens, out), 0);
  EXPECT_EQ(cert.LocalResolved(), nullptr);
  EXPECT_EQ(cert.Resolve(CO_SCREEN, screens, out), 0);
  EXPECT_EQ(cert.LocalResolved(), &fw1);
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

TEST(CertificateReferenceTest, MatchSelectsByTypeWord) {
  Certificate cert("gate", IPSEC_IKE, 0, "id", nullptr, nullptr, nullptr);
  EXPECT_TRUE(cert.Match(nullptr, "gate", "SINGLE", 1));
  EXPECT_FALSE(cert.Match(nullptr, "gate", "GROUP", 1));
  EXPECT_FALSE(cert.Match(nullptr, "gate", "single", 1));
  EXPECT_TRUE(cert.Match(nullptr, "ga", nullptr, 0));
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

TEST(CertificateOutputTest, EnumerateFullAndNameLines) {
  Certificate cert("i", IPSEC_IKE, 0, "CN=x", "fw", "fw", "note");
  std::ostringstream out;
  cert.Enumerate(out, ENUM_FULL);
  EXPECT_EQ(out.str(), "SCREEN \"fw\" \"i\" SINGLE IKE \"CN=x\" LOCAL \"fw\" COMMENT \"note\"\n");
  out.str("");
  cert.Enumerate(out, ENUM_NAME);
  EXPECT_EQ(out.str(), "\"i\" SINGLE IKE\n");
}

}  // namespace
