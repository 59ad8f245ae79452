#include "sim/uds_peer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "sim/sim_host.h"

using namespace std::chrono_literals;

namespace tarvolt {
namespace {

/// The least that a recorder does: opens the link in one of the modes and notes each arrival, "|" for a terminator.
struct Recorder {
  Recorder(SimHost& host, const std::string& mode) : socket(host.network.MakeSocket()) {
    socket->onConnected = [this, mode] { socket->Write("INIT\xFF" + mode + "\xFFSTAT\xFF"); };
    socket->onDataArrival = [this] {
      std::string bytes = socket->ReadAvailable();
      total += bytes.size();
      for (char& byte : bytes) byte = byte == '\xFF' ? '|' : byte;
      arrivals.push_back(bytes);
    };
    socket->onClose = [this] { closed = true; };
    socket->Connect("127.0.0.1", UdsPeer::kDefaultPort);
  }

  std::unique_ptr<SocketControl> socket;
  std::vector<std::string> arrivals;
  std::size_t total = 0;
  bool closed = false;
};

TEST(UdsPeer, PushesSetsWithTheirStampsFromOnePeriodAfterTheStatusExchange) {
  SimHost host(1);
  UdsPeer uds(host.loop, host.network, 1);
  uds.Channels(2).PushesEvery(250ms);
  uds.Measures([](std::int64_t n) {
       return std::vector<double>{n + 0.5, -1.0};
     })
      .StampsWith([](std::int64_t n) { return 40000.0 + static_cast<double>(n); });
  Recorder recorder(host, "PUSH");
  host.loop.RunFor(600ms);
  EXPECT_EQ(uds.Received(), (std::vector<std::string>{"INIT", "PUSH", "STAT"}));
  EXPECT_EQ(recorder.arrivals,
            (std::vector<std::string>{"^^20132|^^1001|", "#00.5|#1-1|^^300040000|", "#01.5|#1-1|^^300040001|"}));
  recorder.socket->Disconnect();
  host.loop.RunFor(10s);
  EXPECT_EQ(uds.SetsSent(), 2) << "nobody is there to push to";
  Recorder next(host, "PUSH");
  host.loop.RunFor(600ms);
  EXPECT_EQ(next.arrivals[1], "#02.5|#1-1|^^300040002|") << "sets are counted through";
}

TEST(UdsPeer, AnswersAPollLateWhenTold) {
  SimHost host(1);
  UdsPeer uds(host.loop, host.network, 1);
  Recorder recorder(host, "POLL");
  host.loop.RunFor(1s);
  EXPECT_EQ(recorder.arrivals.size(), 1u) << "nothing unasked";
  uds.AnswersAfter(2s);
  recorder.socket->Write("GETD\xFF");
  host.loop.RunFor(1s);
  EXPECT_EQ(recorder.arrivals.size(), 1u);
  host.loop.RunFor(2s);
  EXPECT_EQ(recorder.arrivals.back(), "#00|^^3001|");
  recorder.socket->Write("GETD\xFF");
  host.loop.RunFor(100ms);
  recorder.socket->Connect("127.0.0.1", UdsPeer::kDefaultPort);
  host.loop.RunFor(10s);
  EXPECT_EQ(uds.SetsSent(), 1) << "an answer owed to a link that has ended is not given to the next";
}

TEST(UdsPeer, MisbehavesFromTheChosenSetOn) {
  SimHost host(1);
  UdsPeer uds(host.loop, host.network, 1);
  uds.Misbehaves(UdsFault::Silent, 3);
  Recorder recorder(host, "PUSH");
  host.loop.RunFor(10s);
  EXPECT_EQ(recorder.arrivals.size(), 1u + 3u);
  EXPECT_FALSE(recorder.closed);

  uds.Misbehaves(UdsFault::HalfMessages);
  host.loop.RunFor(50ms);
  ASSERT_EQ(recorder.arrivals.size(), 6u);
  EXPECT_EQ(recorder.arrivals[4] + recorder.arrivals[5], "#03|^^3001|");
  EXPECT_NE(recorder.arrivals[4].back(), '|') << "the cut is inside a message";

  uds.Misbehaves(UdsFault::Garbage);
  host.loop.RunFor(100ms);
  ASSERT_EQ(recorder.arrivals.size(), 8u);
  EXPECT_NE(recorder.arrivals[6], recorder.arrivals[7]);

  uds.Misbehaves(UdsFault::DropMidSet);
  host.loop.RunFor(1s);
  EXPECT_EQ(recorder.arrivals.back(), "#05|");
  EXPECT_TRUE(recorder.closed);

  uds.Misbehaves(UdsFault::TooManyChannels);
  Recorder next(host, "POLL");
  host.loop.RunFor(50ms);
  EXPECT_EQ(next.arrivals.front(), "^^20139|^^1001|");

  uds.Misbehaves(UdsFault::EndlessMessage);
  next.socket->onDataArrival = [] {};
  next.socket->Write("GETD\xFF");
  host.loop.RunFor(1h);
  std::size_t waiting = 0;
  next.socket->onDataArrival = [&] { waiting += next.socket->ReadAvailable().size(); };
  waiting += next.socket->ReadAvailable().size();
  host.loop.RunFor(10ms);
  EXPECT_GT(waiting, 2 * SocketControl::kReadLimit);
  EXPECT_LT(waiting, 8 * SocketControl::kReadLimit) << "it waits for a reader who does not read";
}

}  // namespace
}  // namespace tarvolt
