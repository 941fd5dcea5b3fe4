#include "support/fwlog.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "support/settings.h"
#include "test_env.h"

namespace {

struct Packet {
  std::vector<unsigned char> bytes;
  int source_port = 0;

  template <typename T>
  T at(size_t offset) const {
    T value;
    memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
  }
  std::string text() const {
    return bytes.size() > 88 ? std::string(reinterpret_cast<const char*>(bytes.data() + 88)) : "<no packet>";
  }
};

// A stand-in for the log daemon on a loopback port of its own; the library
// is pointed at it through FERROWALL_LogPort.
class LogListener {
 public:
  LogListener() {
    sock_ = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(sock_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    socklen_t length = sizeof address;
    getsockname(sock_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
  }
  ~LogListener() { close(sock_); }
  int port() const { return port_; }

  // The next datagram, or an empty packet after `wait_ms`.
  Packet receive(int wait_ms = 2000) {
    Packet packet;
    pollfd ready{sock_, POLLIN, 0};
    if (poll(&ready, 1, wait_ms) != 1) return packet;
    packet.bytes.resize(8192);
    sockaddr_in sender{};
    socklen_t length = sizeof sender;
    ssize_t got = recvfrom(sock_, packet.bytes.data(), packet.bytes.size(), 0, reinterpret_cast<sockaddr*>(&sender),
                           &length);
    packet.bytes.resize(got > 0 ? got : 0);
    packet.source_port = ntohs(sender.sin_port);
    return packet;
  }

 private:
  int sock_ = -1;
  int port_ = 0;
};

class FwlogTest : public testing::Test {
 protected:
  void SetUp() override { configure(); }
  // Later tests start from the default severity and port again.
  void TearDown() override {
    logextenders = 0;
    configure("NOTICE");
    severity_.reset();
    port_env_.reset();
    int port = 0;
    a_syslogset_c("test", &port);
  }
  void configure(const char* severity = nullptr) {
    severity_.reset();
    severity_.reset(new ScopedEnv("FERROWALL_LogSeverity", severity));
    int port = 0;
    a_syslogset_c("fwlog-test-application-with-a-long-name", &port);
    EXPECT_EQ(port, listener_.port());
  }

  TempDir etc_dir_;
  ScopedEnv etc_{"FERROWALL_ETC", etc_dir_.path().c_str()};
  LogListener listener_;
  std::unique_ptr<ScopedEnv> port_env_{
      new ScopedEnv("FERROWALL_LogPort", std::to_string(listener_.port()).c_str())};
  std::unique_ptr<ScopedEnv> severity_;
  ScopedEnv debug_{"FERROWALL_DEBUG", nullptr};
};

TEST_F(FwlogTest, PacketHeaderCarriesEveryField) {
  const char* text =
      "src_ip:ipV4=10.1.2.3; dst_ip:ipV4=192.168.7.9; src_port:unsigned32=1234;"
      " dst_port:unsigned32=80; sess_ID:unsigned32=305419896; proto_ip:unsigned32=6; note:ascii=x;";
  a_syslog(0x18 | 4 | fwlog_extenders, "%s", text);
  Packet packet = listener_.receive();
  ASSERT_EQ(packet.bytes.size(), strlen(text) + 89);
  EXPECT_EQ(packet.at<uint32_t>(0), 0x54869523u);
  EXPECT_EQ(packet.at<uint16_t>(4), 8);
  EXPECT_EQ(packet.at<uint16_t>(6), strlen(text) + 89);
  EXPECT_EQ(packet.at<uint32_t>(8), 0u);
  EXPECT_EQ(packet.at<uint32_t>(12), 0u);
  EXPECT_EQ(packet.at<uint64_t>(16), 0u);
  EXPECT_EQ(packet.at<uint32_t>(24), inet_addr("10.1.2.3"));
  EXPECT_EQ(packet.at<uint32_t>(28), inet_addr("192.168.7.9"));
  EXPECT_EQ(packet.at<uint16_t>(32), htons(1234));
  EXPECT_EQ(packet.at<uint16_t>(34), htons(80));
  EXPECT_EQ(packet.at<uint32_t>(36), htonl(305419896));
  EXPECT_EQ(packet.bytes[40], 6);
  EXPECT_EQ(packet.bytes[41], 4);
  EXPECT_EQ(packet.bytes[42], 4);
  EXPECT_EQ(packet.bytes[43], 63);
  EXPECT_EQ(std::string(packet.bytes.begin() + 44, packet.bytes.begin() + 56), std::string(12, '\0'));
  EXPECT_EQ(std::string(packet.bytes.begin() + 56, packet.bytes.begin() + 88), "fwlog-test-application-with-a-lo");
  EXPECT_EQ(packet.text(), text);
  EXPECT_EQ(packet.bytes.back(), '\0');
  if (geteuid() == 0) {
    EXPECT_GT(packet.source_port, 512);
    EXPECT_LE(packet.source_port, 1000);
  }
}

TEST_F(FwlogTest, MessagesAboveTheLimitAreDroppedButEchoedWhenTracing) {
  configure("warn");
  EXPECT_EQ(app_severity, 4);
  EXPECT_EQ(auth_severity, 4);
  debug = 1;
  testing::internal::CaptureStderr();
  a_syslog(5, "dropped note");
  a_syslog(5 | fwlog_always, "forced note");
  std::string echo = testing::internal::GetCapturedStderr();
  debug = 0;
  EXPECT_NE(echo.find(" -NOTE-: dropped note"), std::string::npos) << echo;
  EXPECT_EQ(listener_.receive().text(), "forced note");
}

TEST_F(FwlogTest, WrappedTextIsQuotedAndCut) {
  a_syslog(3 | fwlog_wrap, "say \"hi\"");
  EXPECT_EQ(listener_.receive().text(), "msg:utf8=\"say \\\"hi\\\"\";");
  std::string long_text(3995, 'x');
  a_syslog(3 | fwlog_wrap, "%s", long_text.c_str());
  std::string text = listener_.receive().text();
  EXPECT_EQ(text.size(), 10u + 3989 + 3 + 2);
  EXPECT_EQ(text.substr(text.size() - 5), "...\";");
}

TEST_F(FwlogTest, OverflowIsReportedFirstAtSeverityOne) {
  std::string huge(5000, 'y');
  a_syslog(5, "%s", huge.c_str());
  Packet report = listener_.receive();
  EXPECT_EQ(report.text(), "reason:utf8=\"log buffer overflow - application unstable\";");
  EXPECT_EQ(report.bytes[42], 1);
  Packet message = listener_.receive();
  EXPECT_EQ(message.text(), std::string(4007, 'y'));
  EXPECT_EQ(message.bytes.size(), 4096u);
}

TEST_F(FwlogTest, ProxyPacketCarriesItsFields) {
  uint32_t session = 42;
  uint8_t proto = 17;
  uint32_t source = inet_addr("172.16.0.1");
  uint16_t port = 53;
  ASSERT_EQ(fwlog_x(&session, &proto, &source, &port, nullptr, nullptr, "proxy", 1, 6, "denied", "no \"rule\"",
                    " user:utf8=\"", "bob", " count:unsigned32=", "3", nullptr),
            0);
  Packet packet = listener_.receive();
  EXPECT_EQ(packet.text(),
            "reason:utf8=\"denied\"; msg:utf8=\"no \\\"rule\\\"\"; user:utf8=\"bob\"; count:unsigned32=3;"
            " sess_ID:unsigned32=42; proto_ip:unsigned32=17; src_ip:ipV4=172.16.0.1; src_port:unsigned32=53;");
  EXPECT_EQ(packet.bytes[41], 3);
  EXPECT_EQ(packet.bytes[42], 6);
  EXPECT_EQ(packet.at<uint32_t>(36), htonl(42));
  EXPECT_EQ(packet.bytes[40], 17);
  EXPECT_EQ(packet.at<uint32_t>(24), source);
  EXPECT_EQ(packet.at<uint16_t>(32), htons(53));
  EXPECT_EQ(packet.bytes[43], 16 | 32 | 1 | 4);
  errno = 0;
  EXPECT_EQ(fwlog_x(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, "proxy", 0, 6, nullptr, nullptr, nullptr), -1);
  EXPECT_EQ(errno, EINVAL);
}

// The set-up from the store: the port and the severities come from
// variables, and the connection on descriptor 0 fills the extenders.
class FwlogStoreTest : public testing::Test {
 protected:
  void SetUp() override {
    set_from_env();
    std::string store = "etc/.active/.ezdb/vars.d/.prg/";
    dir_.write(store + "log/LogPort", variable("log", "LogPort", std::to_string(listener_.port())));
    dir_.write(store + "compiler/LogSeverity", variable("compiler", "LogSeverity", "ERR"));
    dir_.write(store + "auth/LogSeverity", variable("auth", "LogSeverity", "loud"));
  }
  void TearDown() override {
    logextenders = 0;
    ScopedEnv default_severity("FERROWALL_LogSeverity", "NOTICE");
    int port = 0;
    a_syslogset_c("test", &port);
    set_from_env();
  }
  static std::string variable(const std::string& prg, const std::string& name, const std::string& value) {
    return "{ prg:utf8=\"" + prg + "\"; name:utf8=\"" + name + "\"; value:utf8=\"" + value +
           "\"; enabled:unsigned32=1; };";
  }

  LogListener listener_;
  TempDir dir_;
  ScopedEnv etc_{"FERROWALL_ETC", (dir_ / "etc").c_str()};
  ScopedEnv base_{"FERROWALL_BASE", (dir_ / "base").c_str()};
  ScopedEnv port_{"FERROWALL_LogPort", nullptr};
  ScopedEnv severity_{"FERROWALL_LogSeverity", nullptr};
};

TEST_F(FwlogStoreTest, PortAndSeveritiesComeFromTheStore) {
  a_syslogset(nullptr, "compiler", "compiler");
  EXPECT_EQ(app_severity, 3);
  EXPECT_EQ(auth_severity, 5);
  Packet complaint = listener_.receive();
  EXPECT_EQ(complaint.text(), "default 'LogSeverity' to 'NOTICE'");
  a_syslog(4, "warning is above ERR");
  a_syslog(3, "error");
  EXPECT_EQ(listener_.receive().text(), "error");
}

TEST_F(FwlogTest, ProcessWithoutReservedPortsStillLogs) {
  if (geteuid() != 0) GTEST_SKIP() << "needs to drop root rights";
  std::ifstream unprivileged_start("/proc/sys/net/ipv4/ip_unprivileged_port_start");
  int first_open_port = 1024;
  unprivileged_start >> first_open_port;
  if (first_open_port <= 1000) GTEST_SKIP() << "every user may bind the log ports here";
  int output[2];
  ASSERT_EQ(pipe(output), 0);
  pid_t child = fork();
  if (child == 0) {
    dup2(output[1], 2);
    if (setgid(65534) != 0 || setuid(65534) != 0) _exit(2);
    spewit = 1;
    a_syslog(3 | fwlog_always, "first");
    a_syslog(3 | fwlog_always, "second");
    _exit(0);
  }
  close(output[1]);
  int status = 0;
  waitpid(child, &status, 0);
  std::string errors;
  char buffer[512];
  for (ssize_t got; (got = read(output[0], buffer, sizeof buffer)) > 0;) errors.append(buffer, got);
  close(output[0]);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  Packet first = listener_.receive();
  EXPECT_EQ(first.text(), "first");
  EXPECT_GT(first.source_port, 1023);
  EXPECT_EQ(listener_.receive().text(), "second");
  const std::string notice = "no right to a reserved port";
  size_t at = errors.find(notice);
  EXPECT_NE(at, std::string::npos) << errors;
  EXPECT_EQ(errors.find(notice, at + 1), std::string::npos) << "said once: " << errors;
}

TEST_F(FwlogStoreTest, BadPortIsReportedAndDefaulted) {
  dir_.write("etc/.active/.ezdb/vars.d/.prg/log/LogPort", variable("log", "LogPort", "12ab"));
  LogCapture log;
  a_syslogset(nullptr, "compiler", "compiler");
  EXPECT_NE(log.text().find("default 'LogPort' to '3853'"), std::string::npos);
}

}  // namespace
