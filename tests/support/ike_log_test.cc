#include "support/ike_log.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/settings.h"
#include "support/vars.h"
#include "test_env.h"

namespace {

class IkeLogTest : public testing::Test {
 protected:
  void SetUp() override {
    set_from_env();
    vars_setdir("vars.d");
    vars_setroot(nullptr, 1, nullptr);
  }
  void TearDown() override { set_from_env(); }

  void put(const std::string& name, const std::string& rest) {
    dir_.write("etc/.temp/.ezdb/vars.d/.prg/iked/" + name,
               "{ prg:utf8=\"iked\"; name:utf8=\"" + name + "\"; " + rest + " enabled:unsigned32=1; };");
  }
  int run() {
    out_.str("");
    testing::internal::CaptureStderr();
    int status = fwlog_ike_settings(out_);
    errors_ = testing::internal::GetCapturedStderr();
    return status;
  }

  TempDir dir_;
  ScopedEnv etc_{"FERROWALL_ETC", (dir_ / "etc").c_str()};
  ScopedEnv base_{"FERROWALL_BASE", (dir_ / "base").c_str()};
  std::ostringstream out_;
  std::string errors_;
};

TEST_F(IkeLogTest, SeverityAndEventsAreWrittenCanonically) {
  put("LogSeverity", "value:utf8=\"NONE\";");
  put("LogEvents", "values:struct={ warn:utf8=\"phase 1\"; Critical:utf8=\"tunnel\"; };");
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(out_.str(), "\nlog upto EMERG\n\nlog WARNING \"phase 1\"\nlog CRIT \"tunnel\"\n");
}

TEST_F(IkeLogTest, UnknownWordIs215) {
  put("LogSeverity", "value:utf8=\"loud\";");
  EXPECT_EQ(run(), 215);
  EXPECT_EQ(errors_, "Program 'iked' variable 'LogSeverity' unknown symbolic 'loud'\n");
  put("LogSeverity", "value:utf8=\"info\";");
  put("LogEvents", "values:struct={ whisper:utf8=\"x\"; };");
  EXPECT_EQ(run(), 215);
  EXPECT_EQ(errors_, "Program 'iked' variable 'LogEvents' unknown symbolic 'whisper'\n");
}

TEST_F(IkeLogTest, UnreadableVariableIs216) {
  put("LogSeverity", "value:unsigned32=3;");
  EXPECT_EQ(run(), 216);
  EXPECT_EQ(errors_.rfind("Program 'iked' variable 'LogSeverity' retrieval error: ", 0), 0u) << errors_;
}

}  // namespace
