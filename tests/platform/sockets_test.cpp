// SPDX-License-Identifier: GPL-3.0-or-later
#include <vector>

#include "platform/machine.h"

namespace tarvolt {
namespace {

constexpr const char* kHere = "127.0.0.1";

/// A listener that keeps the last connection it was handed, and a socket that notes its events in order.
class SocketContract : public Contract {
 protected:
  void SetUp() override {
    listener_->onAccept = [this](std::unique_ptr<SocketControl> accepted) {
      peer_ = std::move(accepted);
      peer_->onDataArrival = [this] { atPeer_ += peer_->ReadAvailable(); };
      peer_->onClose = [this] { peerClosed_ = true; };
    };
    std::string why;
    ASSERT_TRUE(listener_->Listen(kHere, 0, why)) << why;
  }

  std::unique_ptr<SocketControl> MakeSocket() {
    auto socket = host_.sockets.MakeSocket();
    socket->onConnected = [this] { events_ += "connected "; };
    socket->onDataArrival = [this, raw = socket.get()] { events_ += "data:" + raw->ReadAvailable() + " "; };
    socket->onClose = [this] { events_ += "close "; };
    socket->onError = [this](const std::string& words) { events_ += words.empty() ? "wordless " : "error "; };
    return socket;
  }

  void Connect() {
    peer_.reset();
    socket_->Connect(kHere, listener_->LocalPort());
    ASSERT_TRUE(WaitFor([&] { return socket_->IsConnected() && peer_ != nullptr; })) << events_;
  }

  bool Comes(const std::string& event) {
    return WaitFor([&] { return events_.find(event) != std::string::npos; });
  }

  std::uint16_t PortWithoutListener() {
    const auto other = host_.sockets.MakeListener();
    std::string why;
    EXPECT_TRUE(other->Listen(kHere, 0, why)) << why;
    return other->LocalPort();
  }

  std::string events_;
  std::string atPeer_;
  bool peerClosed_ = false;
  std::unique_ptr<SocketListener> listener_ = host_.sockets.MakeListener();
  std::unique_ptr<SocketControl> peer_;
  std::unique_ptr<SocketControl> socket_ = MakeSocket();
};
INSTANTIATE_CONTRACT(SocketContract);

TEST_P(SocketContract, ConnectsExchangesDataAndReportsTheClose) {
  socket_->Write("lost without a connection");
  Connect();
  EXPECT_EQ(events_, "connected ");
  EXPECT_EQ(peer_->RemoteEnd().address, kHere);
  EXPECT_EQ(peer_->RemoteEnd().port, socket_->LocalEnd().port);
  EXPECT_EQ(socket_->RemoteEnd().port, listener_->LocalPort());
  EXPECT_EQ(peer_->LocalEnd().port, listener_->LocalPort());
  socket_->Write("INIT\xFF");
  EXPECT_TRUE(WaitFor([&] { return atPeer_ == "INIT\xFF"; })) << atPeer_;
  peer_->Write("first");
  EXPECT_EQ(events_, "connected ");
  ASSERT_TRUE(Comes("data:first"));
  peer_->Write("last");
  peer_->Disconnect();
  ASSERT_TRUE(Comes("close"));
  EXPECT_EQ(events_, "connected data:first data:last close ") << "data come before the close";
  EXPECT_FALSE(socket_->IsConnected());
  EXPECT_EQ(socket_->RemoteEnd().port, 0);
  socket_->Write("into nothing");
  RunFor(20);
  EXPECT_EQ(events_, "connected data:first data:last close ");
}

TEST_P(SocketContract, AFailureIsAnErrorAndThenACloseAndNeverInsideTheCall) {
  const std::uint16_t port = PortWithoutListener();
  for (const char* localAddress : {"", "not an address"}) {
    events_.clear();
    socket_->Bind(localAddress, 0);
    socket_->Connect(kHere, port);
    EXPECT_EQ(events_, "");
    ASSERT_TRUE(Comes("close"));
    EXPECT_EQ(events_, "error close ");
    EXPECT_FALSE(socket_->IsConnected());
  }
}

TEST_P(SocketContract, BindsTheLocalEndAndMayUseAPortAgainAtOnce) {
  const std::uint16_t port = PortWithoutListener();
  for (const char* address : {kHere, "0.0.0.0", ""}) {
    socket_->Bind(address, port);
    Connect();
    EXPECT_EQ(peer_->RemoteEnd().port, port) << address;
    peerClosed_ = false;
    socket_->Disconnect();  // ours ends first, so that the port is the one left in time-wait
    ASSERT_TRUE(WaitFor([&] { return peerClosed_; }));
  }
}

TEST_P(SocketContract, AfterDisconnectNothingOldIsReported) {
  Connect();
  peer_->Write("late");
  socket_->Write("bye");
  socket_->Disconnect();
  ASSERT_TRUE(WaitFor([&] { return peerClosed_; }));
  EXPECT_EQ(atPeer_, "bye") << "what was queued is sent";
  EXPECT_EQ(events_, "connected ");

  events_.clear();
  socket_->Connect(kHere, PortWithoutListener());  // would be refused
  Connect();
  RunFor(20);
  EXPECT_EQ(events_, "connected ") << "the earlier attempt says nothing any more";
}

TEST_P(SocketContract, ASocketMayDieInEachOfItsCallbacks) {
  const std::uint16_t closedPort = PortWithoutListener();
  for (int callback = 0; callback < 4; ++callback) {
    socket_ = MakeSocket();
    int calls = 0;
    const auto die = [&, big = std::string(1000, 'x')] {
      socket_.reset();
      RunFor(5);
      calls += static_cast<int>(big.size()) / 1000;
    };
    if (callback == 0) socket_->onConnected = die;
    if (callback == 1) socket_->onDataArrival = die;
    if (callback == 2) socket_->onClose = die;
    if (callback == 3) socket_->onError = [die](const std::string&) { die(); };
    peer_.reset();
    socket_->Connect(kHere, callback == 3 ? closedPort : listener_->LocalPort());
    if (callback != 3) {
      ASSERT_TRUE(WaitFor([&] { return peer_ != nullptr; }));
    }
    if (callback == 1) peer_->Write("data");
    if (callback == 2) peer_->Disconnect();
    EXPECT_TRUE(WaitFor([&] { return calls == 1; })) << callback;
  }
}

TEST_P(SocketContract, MayConnectAnewInsideItsOwnCallback) {
  const std::uint16_t port = PortWithoutListener();
  int errors = 0;
  socket_->onError = [&](const std::string&) { socket_->Connect(kHere, ++errors < 3 ? port : listener_->LocalPort()); };
  socket_->Connect(kHere, port);
  ASSERT_TRUE(Comes("connected"));
  EXPECT_EQ(errors, 3);
  EXPECT_EQ(events_, "connected ") << "no close of an attempt that was given up for the next";
}

TEST_P(SocketContract, DataArriveInANestedYieldInWhichTheSocketMayDie) {
  std::string got;
  bool ended = false;
  socket_->onDataArrival = [&] {
    got += socket_->ReadAvailable();
    if (got != "GETD") return;
    peer_->Write("answer");
    EXPECT_TRUE(WaitFor([&] { return got == "GETDanswer"; }));
    host_.loop.Post([&] { socket_.reset(); });
    EXPECT_TRUE(WaitFor([&] { return !socket_; }));
    ended = true;
  };
  Connect();
  peer_->Write("GETD");
  EXPECT_TRUE(WaitFor([&] { return ended; }));
}

TEST_P(SocketContract, AFastPeerWaitsForASlowReaderAndLosesNothing) {
  constexpr std::size_t kSize = 12 * SocketControl::kReadLimit;
  std::size_t got = 0;
  bool reading = false;
  const auto read = [&] {
    const std::string bytes = socket_->ReadAvailable();
    EXPECT_LE(bytes.size(), SocketControl::kReadLimit);
    got += bytes.size();
  };
  socket_->onDataArrival = [&] {
    if (reading) read();
  };
  Connect();
  peer_->Write(std::string(kSize, 'x'));
  RunFor(200);
  EXPECT_EQ(got, 0u);
  reading = true;
  read();
  EXPECT_TRUE(WaitFor([&] { return got == kSize; })) << got;

  constexpr std::size_t kMore = SocketControl::kReadLimit + 5000;
  reading = false;
  events_.clear();
  peer_->Write(std::string(kMore, 'x'));
  RunFor(200);
  peer_->Disconnect();
  RunFor(50);
  EXPECT_EQ(events_, "") << "no close while bytes wait";
  reading = true;
  read();
  EXPECT_TRUE(Comes("close"));
  EXPECT_EQ(got, kSize + kMore);
}

TEST_P(SocketContract, APeerThatNeverReadsIsGivenUp) {
  Connect();
  peer_->onDataArrival = nullptr;
  events_.clear();
  for (int i = 0; i < 100 && events_.empty(); ++i) {
    socket_->Write(std::string(std::size_t{1} << 20, 'x'));
    RunFor(1);
  }
  ASSERT_TRUE(Comes("close"));
  EXPECT_EQ(events_, "error close ");
  EXPECT_FALSE(socket_->IsConnected());
}

TEST_P(SocketContract, ManyConnectAtOnceAndEachIsHandedOver) {
  constexpr std::size_t kClients = 150;
  std::vector<std::unique_ptr<SocketControl>> clients;
  std::vector<std::unique_ptr<SocketControl>> accepted;
  std::size_t answers = 0;
  listener_->onAccept = [&](std::unique_ptr<SocketControl> socket) {
    socket->Write("^^1001\xFF");
    accepted.push_back(std::move(socket));
  };
  for (std::size_t i = 0; i < kClients; ++i) {
    clients.push_back(host_.sockets.MakeSocket());
    clients.back()->onDataArrival = [&, raw = clients.back().get()] {
      answers += raw->ReadAvailable() == "^^1001\xFF";
    };
    clients.back()->Connect(kHere, listener_->LocalPort());
  }
  EXPECT_TRUE(WaitFor([&] { return answers == kClients; })) << answers;
  EXPECT_EQ(accepted.size(), kClients);
}

TEST_P(SocketContract, AListenerSaysWhereAndWhyNot) {
  const std::uint16_t port = listener_->LocalPort();
  EXPECT_NE(port, 0);
  const auto second = host_.sockets.MakeListener();
  for (const char* address : {kHere, "", "not an address"}) {
    std::string why;
    EXPECT_FALSE(second->Listen(address, port, why)) << address;
    EXPECT_NE(why, "");
    EXPECT_EQ(second->LocalPort(), 0);
  }
  Connect();
  listener_->Close();
  EXPECT_EQ(listener_->LocalPort(), 0);
  auto late = MakeSocket();
  events_.clear();
  late->Connect(kHere, port);
  ASSERT_TRUE(Comes("close"));
  EXPECT_EQ(events_, "error close ");
  peer_->Write("still here");
  EXPECT_TRUE(Comes("data:still here")) << "what was handed over stays";
  std::string why;
  EXPECT_TRUE(second->Listen("", port, why)) << "the port is free again at once: " << why;
}

TEST_P(SocketContract, AListenerMayDieInItsCallbackAndWhatNobodyTakesIsClosed) {
  listener_->onAccept = nullptr;
  socket_->Connect(kHere, listener_->LocalPort());
  ASSERT_TRUE(Comes("close"));
  listener_->onAccept = [this, big = std::string(1000, 'x')](std::unique_ptr<SocketControl> accepted) {
    listener_.reset();
    accepted->Write(big);
    peer_ = std::move(accepted);
  };
  socket_->Connect(kHere, listener_->LocalPort());
  EXPECT_TRUE(Comes("xxx"));
}

}  // namespace
}  // namespace tarvolt
