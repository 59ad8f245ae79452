#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "sim/sim_host.h"

using namespace std::chrono_literals;

namespace tarvolt {
namespace {

constexpr const char* kAddress = "127.0.0.1";
constexpr std::uint16_t kPort = 1735;

/// A socket of the program that notes its events, and a peer that keeps the connection.
struct Wire {
  explicit Wire(std::uint64_t seed = 1) : host(seed) {
    listener->onAccept = [this](std::unique_ptr<SocketControl> accepted) {
      peer = std::move(accepted);
      peer->onDataArrival = [this] { atPeer += peer->ReadAvailable(); };
      peer->onClose = [this] { events += "[peer closed]"; };
    };
    std::string why;
    EXPECT_TRUE(listener->Listen(kAddress, kPort, why)) << why;
    socket->onConnected = [this] { events += "[connected]"; };
    socket->onDataArrival = [this] {
      ++arrivals;
      read += socket->ReadAvailable();
    };
    socket->onClose = [this] { events += "[close after " + read + "]"; };
    socket->onError = [this](const std::string& words) { events += "[" + words + "]"; };
  }

  void Connect() {
    socket->Connect(kAddress, kPort);
    host.loop.RunFor(10ms);
  }

  SimHost host;
  std::unique_ptr<SocketListener> listener = host.network.MakeListener();
  std::unique_ptr<SocketControl> peer;
  std::unique_ptr<SocketControl> socket = host.network.MakeSocket();
  std::string events;
  std::string read;
  std::string atPeer;
  int arrivals = 0;
};

TEST(SimNetwork, BreaksRefusesAndStaysSilentWhenTold) {
  Wire wire;
  wire.Connect();
  wire.peer->Write("on the way");
  wire.host.network.Break(*wire.peer);
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(wire.events, "[connected][Connection reset by peer][close after ]");

  wire.events.clear();
  wire.host.network.SetUnreachable(kAddress, kPort, true);
  wire.socket->Connect(kAddress, kPort);
  wire.host.loop.RunFor(1h);
  EXPECT_EQ(wire.events, "") << "neither up nor failed";

  wire.host.network.SetUnreachable(kAddress, kPort, false);
  wire.socket->Bind("", 4000);
  wire.Connect();
  auto second = wire.host.network.MakeSocket();
  std::string why;
  second->onError = [&](const std::string& words) { why = words; };
  second->Bind("", 4000);
  second->Connect(kAddress, kPort);
  wire.host.loop.RunFor(10ms);
  EXPECT_EQ(why, "Address already in use");
}

TEST(SimNetwork, SplitsAndJoinsKeepEveryByteInOrder) {
  Wire wire(5);
  wire.host.network.weather = {2ms, 7ms, true, false};
  wire.Connect();
  std::string sent;
  for (int message = 0; message < 100; ++message) {
    const std::string text(static_cast<std::size_t>(20 + message), static_cast<char>('A' + message % 26));
    wire.peer->Write(text);
    sent += text;
  }
  wire.host.loop.RunFor(1s);
  EXPECT_EQ(wire.read, sent);
  EXPECT_GT(wire.arrivals, 200);

  wire.host.network.weather = {2ms, 0ms, false, true};
  wire.arrivals = 0;
  wire.read.clear();
  for (int message = 0; message < 10; ++message) wire.peer->Write("0123456789");
  wire.host.loop.RunFor(1s);
  EXPECT_EQ(wire.read.size(), 100u);
  EXPECT_EQ(wire.arrivals, 1);
}

}  // namespace
}  // namespace tarvolt
