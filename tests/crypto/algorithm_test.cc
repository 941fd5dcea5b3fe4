#include "crypto/algorithm.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "support/fake_host_devices.h"

namespace {

int value_of(const char* name) { return Algorithm(name).GetValue(); }

int skip_value_of(const char* name, screen_alg_type type, Skip_Version version) {
  return Algorithm(name, type, version).GetValue();
}

std::unique_ptr<Algorithm> ipsec(const char* name, screen_alg_type type, IKE_phase phase) {
  auto algorithm = std::make_unique<Algorithm>(name);
  algorithm->SetType(type);
  algorithm->SetPhase(phase);
  algorithm->GetValue();
  return algorithm;
}

TEST(AlgorithmValueTest, NamesIgnoreCaseAndUnknownOnesAreMinusOne) {
  struct Case { const char* name; int value; } ipsec_cases[] = {
      {"des", 2}, {"DES-CBC", 2}, {"md5", 2}, {"SHA1", 3}, {"PRESHARED", 1}, {"Pre-Shared", 1},
      {"improved_rsa_encrypt", 5}, {"SHA", -1}, {"DES-EDE-K3", -1}, {"", -1}};
  for (const Case& c : ipsec_cases) EXPECT_EQ(value_of(c.name), c.value) << c.name;
  host_query_use(nullptr);
  EXPECT_EQ(skip_value_of("DES-CBC", ALG_COMPRESSION, SKIP_V2), -1);
  EXPECT_EQ(skip_value_of("NONE", ALG_COMPRESSION, SKIP_V2), 0);
  EXPECT_EQ(skip_value_of("none", ALG_KEY, SKIP_V1), 0);
  EXPECT_EQ(skip_value_of("des-cbc", ALG_DATA, SKIP_V2), 1);
  EXPECT_EQ(skip_value_of("AES", ALG_DATA, SKIP_V2), -1);
}

TEST(AlgorithmInstalledTest, IkePhaseOneNamesAndListedSkipKeysNeedNoModule) {
  FakeHostDevices host;  // an IPsec module that runs nothing
  host.key_lists[0][1] = 1;
  std::ostringstream out;
  Algorithm des("des-cbc", ALG_KEY, SKIP_V2);
  des.GetValue();
  EXPECT_EQ(des.IsInstalled(out), 0);
  EXPECT_EQ(ipsec("blowfish", ALG_ENCRYPTION, IKE_PHASE_IKE)->IsInstalled(out), 0);
  EXPECT_EQ(ipsec("sha1", ALG_AUTHENTICATION, IKE_PHASE_IKE)->IsInstalled(out), 0);
  EXPECT_EQ(ipsec("RSA-SIGNATURES", ALG_COMPRESSION, IKE_PHASE_IKE)->IsInstalled(out), 0);
  EXPECT_EQ(out.str(), "");
}

TEST(AlgorithmInstalledTest, IkePhaseOneRefusesNullAndAes) {
  FakeHostDevices host;
  host.ipsec[{15, 12}] = 1;
  std::ostringstream out;
  EXPECT_EQ(ipsec("AES", ALG_ENCRYPTION, IKE_PHASE_IKE)->IsInstalled(out), 1);
  EXPECT_EQ(out.str(),
            "Error: a rule in the policy uses the IKE encryption algorithm AES,\n"
            "but this is not a valid IKE encryption algorithm\n");
  out.str("");
  EXPECT_EQ(ipsec("SHA", ALG_AUTHENTICATION, IKE_PHASE_IKE)->IsInstalled(out), 1);
  EXPECT_EQ(out.str(),
            "Error: a rule in the policy uses the IKE authentication algorithm SHA,\n"
            "but this is not a valid IKE authentication algorithm\n");
}

TEST(AlgorithmInstalledTest, EspAsksTheModule) {
  FakeHostDevices host;
  host.ipsec[{15, 7}] = 1;
  std::ostringstream out;
  EXPECT_EQ(ipsec("BLOWFISH", ALG_ENCRYPTION, IKE_PHASE_IPSEC)->IsInstalled(out), 0);
  host.ipsec.clear();
  EXPECT_EQ(ipsec("BLOWFISH", ALG_ENCRYPTION, IKE_PHASE_IPSEC)->IsInstalled(out), 1);
  EXPECT_EQ(out.str(),
            "Error: a rule in the policy uses the IPsec encryption algorithm BLOWFISH,\n"
            "but this algorithm is not installed on the system.\n"
            "Please install this algorithm from the package FWPKcryr.\n"
            "The policy cannot be activated until you install this package,\n"
            "or remove the rule(s) that use this algorithm.\n");
}

TEST(AlgorithmInstalledTest, PackageOfA64BitKernelEndsInX) {
  FakeHostDevices host;
  host.is64 = 1;
  std::ostringstream out;
  Algorithm des("DES-CBC", ALG_KEY, SKIP_V2);
  des.GetValue();
  EXPECT_EQ(des.IsInstalled(out), 1);
  EXPECT_NE(out.str().find("uses the SKIP encryption algorithm DES-CBC,\n"), std::string::npos);
  EXPECT_NE(out.str().find("from the package FWPKdesx.\n"), std::string::npos);
}

TEST(AlgorithmInstalledTest, AlgorithmWithoutPackageStillGetsAWholeMessage) {
  FakeHostDevices host;
  std::ostringstream out;
  auto md5 = ipsec("MD5", ALG_AUTHENTICATION, IKE_PHASE_IPSEC);
  EXPECT_EQ(md5->PkgName(), nullptr);
  EXPECT_EQ(md5->IsInstalled(out), 1);
  EXPECT_NE(out.str().find("\nPlease install the package that provides this algorithm.\n"),
            std::string::npos);
}

}  // namespace
