#include "host/qt_socket.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QHostInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <thread>

#include "host/qt_event_loop.h"
#include "waiting.h"

namespace tarvolt {
namespace {

/// A real peer on the loopback and one socket of ours, with everything that it told, in order.
class QtSocketTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(server_.listen(QHostAddress::LocalHost)); }

  std::unique_ptr<SocketControl> MakeSocket() {
    auto socket = QtSockets(loop_).MakeSocket();
    socket->onConnected = [this] { told_ += "connected "; };
    socket->onDataArrival = [this, raw = socket.get()] { told_ += "data:" + raw->ReadAvailable() + " "; };
    socket->onClose = [this] { told_ += "close "; };
    socket->onError = [this](const std::string& words) { told_ += words.empty() ? "wordless " : "error "; };
    return socket;
  }

  void ConnectToServer(const std::string& address = "127.0.0.1") {
    socket_->Connect(address, server_.serverPort());
    ASSERT_TRUE(WaitFor(loop_, [&] { return socket_->IsConnected() && server_.hasPendingConnections(); })) << told_;
    peer_.reset(server_.nextPendingConnection());
    peer_->setParent(nullptr);
  }

  void PeerSends(const std::string& bytes) {
    peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer_->flush();
  }

  bool Told(const std::string& what) {
    return WaitFor(loop_, [&] { return told_.find(what) != std::string::npos; });
  }

  QtEventLoop loop_{*QCoreApplication::instance()};
  QTcpServer server_;
  std::unique_ptr<QTcpSocket> peer_;
  std::string told_;
  std::unique_ptr<SocketControl> socket_ = MakeSocket();
};

TEST_F(QtSocketTest, ConnectsExchangesDataAndTellsTheClose) {
  ConnectToServer();
  EXPECT_EQ(told_, "connected ");
  socket_->Write("INIT\xFF");
  ASSERT_TRUE(WaitFor(loop_, [&] { return peer_->bytesAvailable() >= 5; }));
  EXPECT_EQ(peer_->readAll().toStdString(), "INIT\xFF");
  PeerSends("first");
  ASSERT_TRUE(Told("data:first"));
  PeerSends("last");
  peer_->disconnectFromHost();
  ASSERT_TRUE(Told("close"));
  EXPECT_EQ(told_, "connected data:first data:last close ");
  EXPECT_FALSE(socket_->IsConnected());
  socket_->Write("into nothing");
  RunFor(loop_, std::chrono::milliseconds(20));
  EXPECT_EQ(told_, "connected data:first data:last close ");
}

TEST_F(QtSocketTest, NothingIsToldFromInsideACall) {
  QTcpServer refusing;
  ASSERT_TRUE(refusing.listen(QHostAddress::LocalHost));
  const std::uint16_t port = refusing.serverPort();
  refusing.close();
  socket_->Connect("127.0.0.1", port);
  EXPECT_EQ(told_, "");
  ASSERT_TRUE(Told("close"));
  EXPECT_EQ(told_, "error close ");
  EXPECT_FALSE(socket_->IsConnected());

  told_.clear();
  socket_->Bind("not an address", 0);
  socket_->Connect("127.0.0.1", port);
  EXPECT_EQ(told_, "");
  ASSERT_TRUE(Told("close"));
  EXPECT_EQ(told_, "error close ");
}

TEST_F(QtSocketTest, TakesHostNamesAndIPv6) {
  server_.close();
  if (!server_.listen(QHostAddress::LocalHostIPv6)) GTEST_SKIP() << "this machine has no IPv6";
  ConnectToServer("::1");
  server_.close();
  if (QHostInfo::fromName("localhost").error() != QHostInfo::NoError) GTEST_SKIP() << "this machine knows no names";
  ASSERT_TRUE(server_.listen(QHostAddress::LocalHost));
  ConnectToServer(" localhost ");
  EXPECT_EQ(told_, "connected connected ");
}

TEST_F(QtSocketTest, ANameThatCannotBeIsAnErrorAndThenAClose) {
  socket_->Connect("no such host", 80);
  ASSERT_TRUE(Told("close"));
  EXPECT_EQ(told_, "error close ");
}

TEST_F(QtSocketTest, BindsTheLocalEndAndMayUseAPortAgainAtOnce) {
  QTcpServer finder;
  ASSERT_TRUE(finder.listen(QHostAddress::LocalHost));
  const std::uint16_t port = finder.serverPort();
  finder.close();
  for (const char* address : {"127.0.0.1", "0.0.0.0", ""}) {
    told_.clear();
    socket_->Bind(address, port);
    ConnectToServer();
    EXPECT_EQ(peer_->peerPort(), port) << address;
    socket_->Disconnect();  // ours ends first, so that the port is the one left in time-wait
    ASSERT_TRUE(WaitFor(loop_, [&] { return peer_->state() == QAbstractSocket::UnconnectedState; }));
  }
}

TEST_F(QtSocketTest, DataFromANestedYieldIsNotHeldBack) {
  std::string got;
  socket_->onDataArrival = [&] {
    got += socket_->ReadAvailable();
    if (got != "GETD") return;
    PeerSends("answer");
    EXPECT_TRUE(WaitFor(loop_, [&] { return got == "GETDanswer"; }));
    got += " seen";
  };
  ConnectToServer();
  PeerSends("GETD");
  EXPECT_TRUE(WaitFor(loop_, [&] { return got == "GETDanswer seen"; }));
}

TEST_F(QtSocketTest, AfterDisconnectNothingOldIsTold) {
  ConnectToServer();
  told_.clear();
  socket_->onDataArrival = [&] { socket_->Disconnect(); };
  PeerSends("data");
  peer_->disconnectFromHost();
  ASSERT_TRUE(WaitFor(loop_, [&] { return !socket_->IsConnected(); }));
  RunFor(loop_, std::chrono::milliseconds(30));
  EXPECT_EQ(told_, "");

  ConnectToServer();
  EXPECT_EQ(told_, "connected ") << "the same socket connects anew";
}

TEST_F(QtSocketTest, MayBeDestroyedOrReconnectedInsideItsOwnCallbacks) {
  bool after = false;
  socket_->onConnected = [&, big = std::string(1000, 'x')] {
    socket_.reset();
    RunFor(loop_, std::chrono::milliseconds(5));
    after = big.size() == 1000;
  };
  socket_->Connect("127.0.0.1", server_.serverPort());
  ASSERT_TRUE(WaitFor(loop_, [&] { return after; }));

  socket_ = MakeSocket();
  told_.clear();
  int closes = 0;
  socket_->onClose = [&] {
    if (++closes < 3) socket_->Connect("127.0.0.1", 1);
  };
  socket_->Connect("127.0.0.1", 1);
  ASSERT_TRUE(WaitFor(loop_, [&] { return closes == 3; }));
  EXPECT_EQ(told_, "error error error ");
}

TEST_F(QtSocketTest, MayBeDestroyedByANestedYieldWhileItsCallbackRuns) {
  ConnectToServer();
  bool ended = false;
  socket_->onDataArrival = [&] {
    loop_.Post([&] { socket_.reset(); });
    EXPECT_TRUE(WaitFor(loop_, [&] { return !socket_; }));
    ended = true;
  };
  PeerSends("data");
  EXPECT_TRUE(WaitFor(loop_, [&] { return ended; }));
}

TEST_F(QtSocketTest, AFastPeerWaitsForASlowReaderAndLosesNothing) {
  std::size_t got = 0;
  std::size_t largest = 0;
  bool closed = false;
  bool complete = false;
  constexpr std::size_t kSize = 12 * SocketControl::kReadLimit;
  bool reading = false;
  const auto read = [&] {
    const std::string bytes = socket_->ReadAvailable();
    got += bytes.size();
    largest = std::max(largest, bytes.size());
  };
  socket_->onDataArrival = [&] {
    if (reading) read();
  };
  socket_->onClose = [&] {
    closed = true;
    complete = got == kSize;
  };
  ConnectToServer();
  PeerSends(std::string(kSize, 'x'));
  peer_->disconnectFromHost();
  RunFor(loop_, std::chrono::milliseconds(300));
  EXPECT_FALSE(closed);
  EXPECT_GT(peer_->bytesToWrite(), 0) << "the peer is made to wait";
  reading = true;
  read();
  EXPECT_TRUE(WaitFor(loop_, [&] { return closed; })) << got;
  EXPECT_TRUE(complete) << got;
  EXPECT_LE(largest, SocketControl::kReadLimit);
}

TEST_F(QtSocketTest, APeerThatNeverReadsIsGivenUp) {
  ConnectToServer();
  peer_->setReadBufferSize(1);
  told_.clear();
  for (int i = 0; i < 100 && told_.empty(); ++i) {
    socket_->Write(std::string(std::size_t{1} << 20, 'x'));
    loop_.Yield(std::chrono::milliseconds(1));
  }
  ASSERT_TRUE(Told("close"));
  EXPECT_EQ(told_, "error close ");
  EXPECT_FALSE(socket_->IsConnected());
}

TEST_F(QtSocketTest, DisconnectOverUnreadDataSendsTheLastMessageAndDoesNotReset) {
  ConnectToServer();
  socket_->onDataArrival = nullptr;
  const int peer = ::dup(static_cast<int>(peer_->socketDescriptor()));  // Qt tells a reset and an end alike
  ASSERT_NE(peer, -1);
  peer_.reset();
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

}  // namespace
}  // namespace tarvolt
