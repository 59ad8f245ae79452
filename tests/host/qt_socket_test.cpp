// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QHostInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <thread>
#include <vector>

#include "host/open_files.h"
#include "host/qt_event_loop.h"
#include "host/qt_sockets.h"
#include "waiting.h"

namespace tarvolt {
namespace {

/// One socket of ours on the real network, with everything that it reported, in order.
class QtSocketTest : public testing::Test {
 protected:
  void SetUp() override {
    socket_->onConnected = [this] { told_ += "connected "; };
    socket_->onClose = [this] { told_ += "close "; };
    socket_->onError = [this](const std::string& words) { told_ += words.empty() ? "wordless " : "error "; };
  }

  bool Told(const std::string& what) {
    return WaitFor(loop_, [&] { return told_.find(what) != std::string::npos; });
  }

  QtEventLoop loop_{*QCoreApplication::instance()};
  QtSockets sockets_{loop_};
  std::string told_;
  std::unique_ptr<SocketControl> socket_ = sockets_.MakeSocket();
  std::unique_ptr<SocketListener> listener_ = sockets_.MakeListener();
};

TEST_F(QtSocketTest, TakesHostNamesAndBothProtocols) {
  std::string why;
  std::string from;
  listener_->onAccept = [&](std::unique_ptr<SocketControl> accepted) { from = accepted->RemoteEnd().address; };
  ASSERT_TRUE(listener_->Listen("", 0, why)) << why;
  socket_->Connect(" 127.0.0.1 ", listener_->LocalPort());
  ASSERT_TRUE(WaitFor(loop_, [&] { return !from.empty(); }));
  EXPECT_EQ(from, "127.0.0.1") << "in the dotted form although it listens on both";
  if (QHostInfo::fromName("localhost").error() == QHostInfo::NoError) {
    from.clear();
    socket_->Connect("localhost", listener_->LocalPort());
    EXPECT_TRUE(WaitFor(loop_, [&] { return !from.empty(); }));
  }
  if (!listener_->Listen("::1", 0, why)) GTEST_SKIP() << "this machine has no IPv6";
  from.clear();
  socket_->Connect("::1", listener_->LocalPort());
  ASSERT_TRUE(WaitFor(loop_, [&] { return !from.empty(); }));
  EXPECT_EQ(from, "::1");
}

TEST_F(QtSocketTest, ANameThatCannotBeIsAnErrorAndThenAClose) {
  socket_->Connect("no such host", 80);
  ASSERT_TRUE(Told("close"));
  EXPECT_EQ(told_, "error close ");
}

TEST_F(QtSocketTest, DisconnectOverUnreadDataSendsTheLastMessageAndDoesNotReset) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  socket_->Connect("127.0.0.1", server.serverPort());
  ASSERT_TRUE(WaitFor(loop_, [&] { return socket_->IsConnected() && server.hasPendingConnections(); }));
  const std::unique_ptr<QTcpSocket> accepted(server.nextPendingConnection());
  const int peer = ::dup(static_cast<int>(accepted->socketDescriptor()));  // Qt tells a reset and an end alike
  ASSERT_NE(peer, -1);
  accepted->disconnect();
  ASSERT_EQ(::send(peer, "unread", 6, 0), 6);
  int onTheWay = 1;
  for (int i = 0; i < 10'000 && onTheWay > 0; ++i) {
    ASSERT_EQ(::ioctl(peer, TIOCOUTQ, &onTheWay), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  socket_->Write("goodbye");
  socket_->Disconnect();
  std::string got(100, '\0');
  ASSERT_EQ(::fcntl(peer, F_SETFL, 0), 0);
  EXPECT_EQ(::recv(peer, got.data(), got.size(), 0), 7);
  EXPECT_EQ(got.substr(0, 7), "goodbye");
  EXPECT_EQ(::recv(peer, got.data(), got.size(), 0), 0);
  ::close(peer);
}

rlim_t OpenFileLimit() {
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  return limit.rlim_cur;
}

void SetOpenFileLimit(rlim_t files) {
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = files;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

/// Takes every free descriptor below `least`, so that a limit there leaves none, even where standard input is closed.
class NoFreeDescriptorBelow {
 public:
  explicit NoFreeDescriptorBelow(int least) {
    int taken = 0;
    while ((taken = ::open("/dev/null", O_RDONLY | O_CLOEXEC)) < least && taken >= 0) taken_.push_back(taken);
    ::close(taken);
  }
  ~NoFreeDescriptorBelow() {
    for (const int taken : taken_) ::close(taken);
  }
  NoFreeDescriptorBelow(const NoFreeDescriptorBelow&) = delete;
  NoFreeDescriptorBelow& operator=(const NoFreeDescriptorBelow&) = delete;

 private:
  std::vector<int> taken_;
};

TEST_F(QtSocketTest, AListenerWithoutAFileLeftReportsItAndTakesTheConnectionLater) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizers need free descriptors of their own";
#endif
  constexpr int kFiles = 16;  // poll() refuses to watch more descriptors than the limit
  std::string why;
  bool accepted = false;
  std::string words;
  listener_->onAccept = [&](std::unique_ptr<SocketControl>) { accepted = true; };
  listener_->onError = [&](const std::string& error) { words = error; };
  ASSERT_TRUE(listener_->Listen("127.0.0.1", 0, why)) << why;
  socket_->Connect("127.0.0.1", listener_->LocalPort());
  const NoFreeDescriptorBelow taken(kFiles);
  const rlim_t before = OpenFileLimit();
  SetOpenFileLimit(kFiles);  // those that are open stay so
  EXPECT_TRUE(WaitFor(loop_, [&] { return !words.empty(); }));
  EXPECT_FALSE(accepted);
  SetOpenFileLimit(before);
  EXPECT_TRUE(WaitFor(loop_, [&] { return accepted; }));
}

TEST(OpenFiles, TheLimitIsRaised) {
  const rlim_t before = OpenFileLimit();
  SetOpenFileLimit(256);
  RaiseOpenFileLimit();
  EXPECT_GT(OpenFileLimit(), 256u);
  SetOpenFileLimit(before);
}

}  // namespace
}  // namespace tarvolt
