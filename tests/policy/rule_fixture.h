// Rules and the registry objects they refer to, shared by the policy tests,
// and a scratch directory for the tests that verify a whole policy.
#ifndef FW_TESTS_POLICY_RULE_FIXTURE_H
#define FW_TESTS_POLICY_RULE_FIXTURE_H

#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "model/address.h"
#include "policy/rule.h"
#include "services/service.h"
#include "services/services_fixture.h"

// A parsed rule with the given names and verdict and no options.
inline std::unique_ptr<Rule> parsed_rule(const char* service, const char* source,
                                         const char* destination,
                                         Action_Type action = ACTION_ALLOW) {
  return std::unique_ptr<Rule>(new Rule(service, source, destination, nullptr, nullptr, nullptr,
                                        nullptr, action, LOG_NONE, SNMP_NONE, ICMP_NONE, 0,
                                        nullptr, nullptr, nullptr, nullptr));
}

// A service of the given sets, which it takes.
inline std::unique_ptr<Service> service_of(const char* name,
                                           std::initializer_list<FilterParams*> sets) {
  std::unique_ptr<Service> service(new Service(name, nullptr, nullptr));
  for (FilterParams* set : sets) {
    service->Include(*set, 0);
    delete set;
  }
  return service;
}

inline std::unique_ptr<Address> host(const char* name, uint32_t address) {
  return std::unique_ptr<Address>(new Address(name, address, nullptr, nullptr));
}

// A rule derived from resolved objects, as the expansion of a policy makes
// them.
inline std::unique_ptr<Rule> derived_rule(Service& service, const Address& source,
                                          const Address& destination) {
  return std::unique_ptr<Rule>(new Rule(service, source, destination, nullptr, nullptr, nullptr,
                                        nullptr, ACTION_ALLOW, LOG_SUMMARY, SNMP_TRAP, ICMP_NONE,
                                        0, nullptr, nullptr, "gate", "derived"));
}

// Verification writes the proxy files into the current directory, so the
// tests that reach that stage run in a directory of their own.
class PolicyVerifyInScratchTest : public testing::Test {
 protected:
  void SetUp() override {
    previous_ = std::filesystem::current_path();
    std::string pattern = (std::filesystem::temp_directory_path() / "fw_policy_XXXXXX").string();
    scratch_ = mkdtemp(pattern.data());
    std::filesystem::current_path(scratch_);
  }
  void TearDown() override {
    std::filesystem::current_path(previous_);
    std::filesystem::remove_all(scratch_);
  }

 private:
  std::filesystem::path previous_;
  std::filesystem::path scratch_;
};

#endif
