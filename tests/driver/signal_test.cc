// The program ends on a hangup or termination signal with status 1 and
// one line, whatever it was doing; here it waits for its input.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

struct SignalOutcome {
  int status;
  std::string err;
};

SignalOutcome InterruptWaitingCompiler(int signal_number) {
  char path[] = "/tmp/fw_signal_XXXXXX";
  int err_fd = mkstemp(path);
  int input[2];
  EXPECT_EQ(pipe(input), 0);
  pid_t child = fork();
  if (child == 0) {
    dup2(input[0], STDIN_FILENO);
    dup2(err_fd, STDERR_FILENO);
    close(input[1]);
    execl(FW_COMPILER_BINARY, "fw_compiler", "-s", "gate", static_cast<char*>(nullptr));
    _exit(127);
  }
  close(input[0]);
  usleep(500 * 1000);
  kill(child, signal_number);
  int status = 0;
  waitpid(child, &status, 0);
  close(input[1]);
  close(err_fd);
  std::ifstream file(path);
  std::ostringstream err;
  err << file.rdbuf();
  unlink(path);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, err.str()};
}

TEST(SignalTest, HangupAndTerminationEndWithStatusOne) {
  for (int signal_number : {SIGHUP, SIGTERM}) {
    SignalOutcome outcome = InterruptWaitingCompiler(signal_number);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "fw_compiler: Signal " + std::to_string(signal_number) + " received.  Exiting.\n");
  }
}

// A crash ends with status 1 and the same line; in a sanitizer build the
// sanitizer's report must not be hidden by it.
TEST(SignalTest, SegmentationFaultIsHandledOnlyWithoutSanitizers) {
  SignalOutcome outcome = InterruptWaitingCompiler(SIGSEGV);
  std::string handled = "fw_compiler: Signal " + std::to_string(SIGSEGV) + " received.  Exiting.\n";
#ifdef FW_SANITIZED_BUILD
  EXPECT_NE(outcome.err, handled);
#else
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, handled);
#endif
}

}  // namespace
