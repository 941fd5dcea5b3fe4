// The command line of the built program: options, the choice of the screen,
// the output directory and the statuses of the front of the compile.
#include <gtest/gtest.h>

#include "common/compiler_run.h"

namespace {

const char kUsage[] = "Usage: fw_compiler [-SScreen] [-ffile -odirectory]\n";

class CommandLineTest : public testing::Test {
 protected:
  void SetUp() override {
    run.Write("empty.conf", "");
    run.Write("out/inside.conf", "");
    run.Write("words.conf", "first second;");
  }
  CompilerRun run;
};

TEST_F(CommandLineTest, StatusAndMessageOfEachOutcome) {
  run.Write("open.conf", "\"never closed");
  run.Write("hour.conf", "\"t\" TIME MONDAY 35791395 0 0 0 ;");
  const struct {
    const char* arguments;
    int status;
    const char* err;
  } cases[] = {
      {"-s gate -f empty.conf", 239, "Screen object not defined for Screen \"gate\"\n"},
      {"-s first -S second -f missing.conf -F empty.conf -o nowhere -O out -f inside.conf", 239,
       "Screen object not defined for Screen \"second\"\n"},  // later values win
      {"-s gate -f empty.conf extra -s other", 239,
       "Screen object not defined for Screen \"gate\"\n"},  // arguments after the options are ignored
      {"-s gate -f missing.conf -o nowhere", 2,
       "Error: output directory does not exist (nowhere)\n"},  // before the input is read
      {"-s gate -f missing.conf", 240, "file not found.\n"},
      {"-s gate -f words.conf", 241, "parse error near token second.\nparse error.\n"},
      {"-s gate -f open.conf", 241, "parse error near token \".\nparse error.\n"},  // no hang
      {"-s gate -f hour.conf", 241, "number out of range near token 35791395.\nparse error.\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(run.Run(c.arguments), c.status) << c.arguments;
    EXPECT_EQ(run.Err(), c.err) << c.arguments;
    EXPECT_EQ(run.Out(), "") << c.arguments;
  }
}

TEST_F(CommandLineTest, BothCasesOfEachLetterJoinedOrSeparate) {
  EXPECT_EQ(run.Run("-Sgate -Fempty.conf -Oout"), 240);  // -F is read from inside -O
  EXPECT_EQ(run.Run("-S gate -F out/inside.conf"), 239);
  EXPECT_EQ(run.Err(), "Screen object not defined for Screen \"gate\"\n");
  EXPECT_EQ(run.Run("-sgate -o out -f inside.conf"), 239);
}

TEST_F(CommandLineTest, UnknownLetterAndMissingValueShowUsage) {
  EXPECT_EQ(run.Run("-s gate -x"), 1);
  EXPECT_NE(run.Err().find("invalid option"), std::string::npos);
  EXPECT_EQ(run.Err().substr(run.Err().size() - sizeof kUsage + 1), kUsage);
  EXPECT_EQ(run.Run("-s gate -f"), 1);
  EXPECT_NE(run.Err().find("requires an argument"), std::string::npos);
  EXPECT_EQ(run.Err().substr(run.Err().size() - sizeof kUsage + 1), kUsage);
}

TEST_F(CommandLineTest, StandardInputWithoutFile) {
  EXPECT_EQ(run.Run("-s gate", run.Path("words.conf")), 241);
  EXPECT_EQ(run.Run("-s gate", run.Path("empty.conf")), 239);
}

TEST_F(CommandLineTest, UnreadableInputIsAScannerFailure) {
  EXPECT_EQ(run.Run("-s gate -f out"), 2);
  EXPECT_NE(run.Err().find("reading the input failed"), std::string::npos);
}

TEST_F(CommandLineTest, DefaultScreenIsTheNameFilesFirstWord) {
  run.Write("etc/name", "central backup\nignored\n");
  EXPECT_EQ(run.Run("-f empty.conf"), 239);
  EXPECT_EQ(run.Err(), "Screen object not defined for Screen \"central\"\n");
}

TEST_F(CommandLineTest, NoScreenAnywhere) {
  EXPECT_EQ(run.Run("-f empty.conf"), 3);
  EXPECT_EQ(run.Err(), "fw_compiler: no screen named: give -s SCREEN or write its name into " +
                           run.Path("etc") + "/name\n");
  run.Write("etc/name", "  \n");
  EXPECT_EQ(run.Run("-f empty.conf"), 3);
}

TEST_F(CommandLineTest, BadHostDescriptionStopsBeforeTheInput) {
  EXPECT_EQ(run.Run("-s gate -f missing.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("none.host")), 1);
  EXPECT_EQ(run.Err(), "fw_compiler: host description " + run.Path("none.host") + ": No such file or directory\n");
  run.Write("bad.host", "interface e0\nbogus\n");
  EXPECT_EQ(run.Run("-s gate -f missing.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("bad.host")), 1);
  EXPECT_EQ(run.Err(), "fw_compiler: host description " + run.Path("bad.host") + ":2: unknown statement \"bogus\"\n");
  EXPECT_EQ(run.Run("-s gate -f missing.conf", "/dev/null", "FERROWALL_HOST=" + run.Path("etc")), 1);
  EXPECT_EQ(run.Err(), "fw_compiler: host description " + run.Path("etc") + ": Is a directory\n");
}

}  // namespace
