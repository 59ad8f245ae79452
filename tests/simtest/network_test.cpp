#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "sim/sim_host.h"

using namespace std::chrono_literals;

namespace tarvolt {
namespace {

constexpr const char* kAddress = "127.0.0.1";
constexpr std::uint16_t kPort = 1735;

/// A socket of the program that notes its events, and a peer that keeps the connection.
struct Wire {
  explicit Wire(std::uint64_t seed = 1) : host(seed) {
    listener = host.network.Listen(kAddress, kPort, [this](std::shared_ptr<SimPeer> accepted) {
      peer = std::move(accepted);
      peer->onData = [this](std::string_view bytes) { atPeer += bytes; };
      peer->onClose = [this] { events += "[peer closed]"; };
    });
    socket = host.network.MakeSocket();
    socket->onConnected = [this] { events += "[connected]"; };
    socket->onDataArrival = [this] {
      ++arrivals;
      read += socket->ReadAvailable();
    };
    socket->onClose = [this] { events += "[close after " + read + "]"; };
    socket->onError = [this](const std::string& why) { events += "[" + why + "]"; };
  }

  void Connect() {
    socket->Connect(kAddress, kPort);
    host.loop.RunFor(10ms);
  }

  SimHost host;
  std::shared_ptr<SimPeer> peer;
  std::unique_ptr<SimListener> listener;
  std::unique_ptr<SocketControl> socket;
  std::string events;
  std::string read;
  std::string atPeer;
  int arrivals = 0;
};

TEST(SimNetwork, ConnectsAndCarriesBothWaysOnlyFromTheLoop) {
  Wire wire;
  wire.socket->Write("lost without a connection");
  wire.socket->Connect("localhost", kPort);
  EXPECT_EQ(wire.events, "");
  EXPECT_FALSE(wire.socket->IsConnected());
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[connected]");
  EXPECT_TRUE(wire.socket->IsConnected());

  wire.socket->Write("INIT");
  wire.peer->Send("one");
  wire.peer->Send("two");
  EXPECT_EQ(wire.read + wire.atPeer, "");
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.atPeer, "INIT");
  EXPECT_EQ(wire.read, "onetwo");
  EXPECT_EQ(wire.arrivals, 2);
}

TEST(SimNetwork, FailuresComeAsAnErrorAndThenAClose) {
  Wire wire;
  wire.socket->Connect(kAddress, 9);
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[Connection refused][close after ]");

  wire.events.clear();
  wire.Connect();
  wire.peer->Send("on the way");
  wire.peer->Break();
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[connected][Connection reset by peer][close after ]");
  EXPECT_FALSE(wire.socket->IsConnected());

  wire.events.clear();
  wire.host.network.SetUnreachable(kAddress, kPort, true);
  wire.socket->Connect(kAddress, kPort);
  wire.host.loop.RunFor(1h);
  EXPECT_EQ(wire.events, "") << "neither up nor failed";

  wire.host.network.SetUnreachable(kAddress, kPort, false);
  wire.socket->Bind("", 4000);
  wire.Connect();
  EXPECT_EQ(wire.peer->programPort, 4000);
  auto second = wire.host.network.MakeSocket();
  std::string why;
  second->onError = [&](const std::string& words) { why = words; };
  second->Bind("", 4000);
  second->Connect(kAddress, kPort);
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(why, "Address already in use");
}

TEST(SimNetwork, DataComeBeforeTheClose) {
  Wire wire;
  wire.Connect();
  wire.peer->Send("last words");
  wire.peer->Close();
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[connected][close after last words]");
}

TEST(SimNetwork, NothingArrivesAfterDisconnect) {
  Wire wire;
  wire.Connect();
  wire.peer->Send("late");
  wire.socket->Write("bye");
  wire.socket->Disconnect();
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[connected][peer closed]");
  EXPECT_EQ(wire.read, "");
  EXPECT_EQ(wire.atPeer, "bye") << "what was queued is sent";

  wire.events.clear();
  wire.socket->Connect(kAddress, 9);  // would be refused
  wire.Connect();
  EXPECT_EQ(wire.events, "[connected]") << "the earlier attempt says nothing any more";

  wire.socket->onError = [&](const std::string&) { wire.socket->Connect(kAddress, kPort); };
  wire.events.clear();
  wire.peer->Break();
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[connected]") << "no close of the old connection after a new Connect";
}

TEST(SimNetwork, ASocketMayDieInEachOfItsHandlers) {
  for (int handler = 0; handler < 4; ++handler) {
    Wire wire;
    int calls = 0;
    const auto die = [&, kept = std::string(100, 'k')] {
      wire.socket.reset();
      calls += static_cast<int>(kept.size()) / 100;
    };
    if (handler == 0) wire.socket->onConnected = die;
    if (handler == 1) wire.socket->onDataArrival = die;
    if (handler == 2) wire.socket->onClose = die;
    if (handler == 3) wire.socket->onError = [die](const std::string&) { die(); };
    wire.Connect();
    if (handler == 1) wire.peer->Send(std::string(2 * SocketControl::kReadLimit, 'x'));
    if (handler == 2) wire.peer->Close();
    if (handler == 3) wire.peer->Break();
    wire.host.loop.RunFor(10ms);
    EXPECT_EQ(calls, 1) << handler;
  }
}

TEST(SimNetwork, SplitsAndJoinsKeepEveryByteInOrder) {
  Wire wire(5);
  wire.host.network.weather = {2ms, 7ms, true, false, 0};
  wire.Connect();
  std::string sent;
  for (int message = 0; message < 100; ++message) {
    const std::string text(static_cast<std::size_t>(20 + message), static_cast<char>('A' + message % 26));
    wire.peer->Send(text);
    sent += text;
  }
  wire.host.loop.RunFor(1s);
  EXPECT_EQ(wire.read, sent);
  EXPECT_GT(wire.arrivals, 200);

  wire.host.network.weather = {2ms, 0ms, false, true, 0};
  wire.arrivals = 0;
  wire.read.clear();
  for (int message = 0; message < 10; ++message) wire.peer->Send("0123456789");
  wire.host.loop.RunFor(1s);
  EXPECT_EQ(wire.read.size(), 100u);
  EXPECT_EQ(wire.arrivals, 1);
}

TEST(SimNetwork, APeerWaitsForAReaderWhoDoesNotRead) {
  Wire wire;
  wire.Connect();
  wire.socket->onDataArrival = [] {};
  const std::string block(SocketControl::kReadLimit / 2, 'b');
  for (int piece = 0; piece < 5; ++piece) wire.peer->Send(block);
  wire.peer->Close();
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.peer->Waiting(), 3 * block.size());
  EXPECT_TRUE(wire.socket->IsConnected()) << "no close while bytes wait";

  std::size_t taken = wire.socket->ReadAvailable().size();
  EXPECT_EQ(taken, SocketControl::kReadLimit);
  wire.socket->onDataArrival = [&] {
    const std::string bytes = wire.socket->ReadAvailable();
    EXPECT_FALSE(bytes.empty());
    taken += bytes.size();
  };
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(taken, 5 * block.size());
  EXPECT_EQ(wire.events, "[connected][close after ]");
}

TEST(SimNetwork, BadWeatherBreaksConnectionsForBothEnds) {
  Wire wire(3);
  wire.host.network.weather.breakChance = 0.2;
  wire.Connect();
  for (int message = 0; message < 100 && wire.socket->IsConnected(); ++message) {
    wire.socket->Write("x");
    wire.host.loop.RunFor(10ms);
  }
  EXPECT_LT(wire.atPeer.size(), 100u);
  EXPECT_EQ(wire.events, "[connected][peer closed][Connection reset by peer][close after ]");
}

}  // namespace
}  // namespace tarvolt
