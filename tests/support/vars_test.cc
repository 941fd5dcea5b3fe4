#include "support/vars.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utime.h>

#include <cerrno>
#include <set>
#include <string>

#include "support/settings.h"
#include "support/vars_io.h"
#include "test_env.h"

namespace {

std::string variable(const std::string& levels, const std::string& rest) {
  return "{ " + levels + " " + rest + " };";
}

// A store in a temporary etc directory: an active tree and, in the base
// directory, the ".active0" tree it falls back to.
class VarsTest : public testing::Test {
 protected:
  void SetUp() override {
    set_from_env();
    vars_setdir("vars.d");
    const std::string iked = "prg:utf8=\"iked\";";
    put(".prg/iked/LogSeverity", variable(iked + " name:utf8=\"LogSeverity\";",
                                          "value:utf8=\"ERR\"; enabled:unsigned32=1;"));
    put(".sys/fw1/.prg/iked/LogSeverity",
        variable("sys:utf8=\"fw1\"; " + iked + " name:utf8=\"LogSeverity\";",
                 "value:utf8=\"DEBUG\"; enabled:unsigned32=1;"));
    put(".prg/iked/LogEvents", variable(iked + " name:utf8=\"LogEvents\";",
                                        "values:struct={ ERR:utf8=\"tunnel\"; INFO:ascii=\"phase 1\"; };"
                                        " enabled:unsigned32=1;"));
    put(".prg/iked/Disabled", variable(iked + " name:utf8=\"Disabled\";", "value:utf8=\"x\"; enabled:unsigned32=0;"));
    put(".prg/iked/NoEnabled", variable(iked + " name:utf8=\"NoEnabled\";", "value:utf8=\"x\";"));
    put(".prg/iked/Gone", variable(iked + " name:utf8=\"Gone\";",
                                   "value:utf8=\"x\"; enabled:unsigned32=1; deleted:unsigned32=1;"));
    put(".prg/iked/Empty", "");
    put(".prg/iked/Number", variable(iked + " name:utf8=\"Number\";", "value:unsigned32=5; enabled:unsigned32=1;"));
    put(".prg/iked/Mixed", variable(iked + " name:utf8=\"Mixed\";",
                                    "values:struct={ a:utf8=\"1\"; b:signed32=2; }; enabled:unsigned32=1;"));
    put(".prg/iked/Garbage", "this is no attribute text");
    put(".prg/iked/Late", "{ name:utf8=\"Late\"; prg:utf8=\"iked\"; value:utf8=\"x\"; enabled:unsigned32=1; };");
    put(".prg/iked/.Hidden", variable(iked + " name:utf8=\".Hidden\";", "value:utf8=\"x\"; enabled:unsigned32=1;"));
    dir_.write("base/.active0/.ezdb/vars.d/.prg/iked/OnlyInZero",
               variable(iked + " name:utf8=\"OnlyInZero\";", "value:utf8=\"zero\"; enabled:unsigned32=1;"));
    vars_setroot(nullptr, 1, nullptr);
  }
  void TearDown() override { set_from_env(); }

  // Writes a variable file of the active tree.
  void put(const std::string& where, const std::string& text) {
    dir_.write("etc/.active/.ezdb/vars.d/" + where, text);
  }

  int get(const char* sys, const char* name, std::string* value = nullptr) {
    Xstring text;
    int result = vars_get_value(sys, "iked", nullptr, name, text, nullptr);
    if (value != nullptr) *value = text.isnull() ? "<null>" : text.c_str();
    return result;
  }

  TempDir dir_;
  ScopedEnv etc_{"FERROWALL_ETC", (dir_ / "etc").c_str()};
  ScopedEnv base_{"FERROWALL_BASE", (dir_ / "base").c_str()};
};

TEST_F(VarsTest, EnabledVariableIsFoundWithoutQuotes) {
  std::string value;
  Xstring found_name;
  Xstring text;
  EXPECT_EQ(vars_get_value(nullptr, "iked", nullptr, "LogSeverity", text, &found_name), 0);
  EXPECT_EQ(text, "ERR");
  EXPECT_EQ(found_name, "prg=\\\"iked\\\" name=\\\"LogSeverity\\\"");
  EXPECT_EQ(get("fw1", "LogSeverity", &value), 0);
  EXPECT_EQ(value, "DEBUG");
}

TEST_F(VarsTest, DisabledDeletedEmptyMissingAndMistypedAreNotFound) {
  EXPECT_EQ(get(nullptr, "Disabled"), 1);
  EXPECT_EQ(get(nullptr, "NoEnabled"), 1);
  EXPECT_EQ(get(nullptr, "Gone"), 1);
  EXPECT_EQ(get(nullptr, "Empty"), 1);
  EXPECT_EQ(get("fw2", "LogSeverity"), 1);
  EXPECT_EQ(get(nullptr, "../LogSeverity"), 1);
  errno = 0;
  EXPECT_EQ(get(nullptr, "Number"), -1) << "a value of another type is an error";
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(VarsTest, UnparsableAndMisorderedFilesAreLoggedErrors) {
  LogCapture log;
  EXPECT_EQ(get(nullptr, "Garbage"), -1);
  EXPECT_EQ(get(nullptr, "Late"), -1);
  std::string text = log.text();
  EXPECT_NE(text.find("(load): unable to parse 'this is no attribute text'"), std::string::npos) << text;
  EXPECT_NE(text.find("vars_validate: prg too late in"), std::string::npos) << text;
  EXPECT_NE(text.find("(load): unable to user-ize"), std::string::npos) << text;
}

TEST_F(VarsTest, NamelessObjectIsDropped) {
  LogCapture log;
  vars object("{ prg:utf8=\"iked\"; value:utf8=\"1\"; };");
  EXPECT_EQ(object.list(), nullptr);
  EXPECT_NE(log.text().find("vars_validate: name-less item"), std::string::npos);
  vars tombstone("{ value:utf8=\"1\"; deleted:unsigned32=1; };");
  EXPECT_NE(tombstone.list(), nullptr);
}

TEST_F(VarsTest, MissingActiveVariableFallsBackToActive0OnceAnHour) {
  std::string value;
  std::string marker = dir_ / "etc/.active/.active_defaulted";
  {
    LogCapture log;
    EXPECT_EQ(get(nullptr, "OnlyInZero", &value), 0);
    EXPECT_EQ(value, "zero");
    EXPECT_NE(log.text().find(".active defaulted for 'prg=\"iked\" name=\"OnlyInZero\"'"), std::string::npos);
  }
  struct stat status;
  ASSERT_EQ(stat(marker.c_str(), &status), 0);
  EXPECT_EQ(std::string(vars_path), dir_ / "etc/.active/.ezdb/vars.d") << "the push is undone";
  {
    LogCapture log;
    EXPECT_EQ(get(nullptr, "OnlyInZero"), 0);
    EXPECT_EQ(log.text().find(".active defaulted"), std::string::npos);
  }
  struct utimbuf old_times = {time(nullptr) - 7200, time(nullptr) - 7200};
  ASSERT_EQ(utime(marker.c_str(), &old_times), 0);
  LogCapture log;
  EXPECT_EQ(get(nullptr, "OnlyInZero"), 0);
  EXPECT_NE(log.text().find(".active defaulted"), std::string::npos);
}

TEST_F(VarsTest, WildcardWalkSkipsHiddenDeletedAndBadEntries) {
  LogCapture log;
  vars_io walk(uIoRead);
  attrib pattern("sys:unknown=; prg:utf8=\"iked\"; name:unknown=;");
  std::set<std::string> names;
  for (vars* object = walk.first(&pattern); object != nullptr; object = walk.next()) names.insert(object->name());
  EXPECT_EQ(names, std::set<std::string>{"sys=\"fw1\" prg=\"iked\" name=\"LogSeverity\""});

  attrib by_program("prg:utf8=\"iked\"; name:unknown=;");
  names.clear();
  for (vars* object = walk.first(&by_program); object != nullptr; object = walk.next()) {
    names.insert(object->list()->find("name")->value.c_str());
  }
  EXPECT_EQ(names, (std::set<std::string>{"\"LogSeverity\"", "\"LogEvents\"", "\"Disabled\"", "\"NoEnabled\"",
                                          "\"Number\"", "\"Mixed\""}));
  EXPECT_NE(log.text().find(": unable to parse 'this is no attribute text'"), std::string::npos);
}

TEST_F(VarsTest, StoreKeepsTheNewerObjectAndRemoveLeavesATombstone) {
  vars_io io(uIoReadWrite);
  vars fresh("{ prg:utf8=\"tool\"; name:utf8=\"Setting\"; value:utf8=\"new\"; enabled:unsigned32=1; };");
  ASSERT_EQ(io.store(&fresh, 0), 0);
  std::string value;
  Xstring text;
  EXPECT_EQ(vars_get_value(nullptr, "tool", nullptr, "Setting", text, nullptr), 0);
  EXPECT_EQ(text, "new");

  vars stale("{ prg:utf8=\"tool\"; name:utf8=\"Setting\"; value:utf8=\"old\"; enabled:unsigned32=1;"
             " tstamp:utime=1; };");
  EXPECT_EQ(io.store(&stale, 0), 1);
  EXPECT_EQ(vars_get_value(nullptr, "tool", nullptr, "Setting", text, nullptr), 0);
  EXPECT_EQ(text, "new");
  EXPECT_EQ(io.store(&stale, 1), 0);
  EXPECT_EQ(vars_get_value(nullptr, "tool", nullptr, "Setting", text, nullptr), 0);
  EXPECT_EQ(text, "old");

  EXPECT_EQ(io.remove(&stale), 0);
  EXPECT_EQ(vars_get_value(nullptr, "tool", nullptr, "Setting", text, nullptr), 1);
  attrib with_deleted("prg:utf8=\"tool\"; name:utf8=\"Setting\"; deleted:unknown=;");
  vars* tombstone = io.first(&with_deleted);
  ASSERT_NE(tombstone, nullptr);
  EXPECT_EQ(isdeleted(tombstone->list()), 1);
}

TEST_F(VarsTest, StoreRefusesANonDirectoryInTheWay) {
  dir_.write("etc/.active/.ezdb/vars.d/.prg/blocker", "file");
  vars object("{ prg:utf8=\"blocker\"; name:utf8=\"X\"; value:utf8=\"1\"; };");
  vars_io io(uIoReadWrite);
  LogCapture log;
  EXPECT_EQ(io.store(&object, 0), -1);
  EXPECT_NE(log.text().find("vars_io: non-directory '"), std::string::npos);
}

}  // namespace
