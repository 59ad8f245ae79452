// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "sim/sim_host.h"
#include "sim/uds_peer.h"

using namespace std::chrono_literals;

namespace tarvolt {
namespace {

/// A small recorder: appends each arrival to a file, with a line from a timer in between.
class Program {
 public:
  explicit Program(const Host& host) : host_(host), socket_(host.sockets.MakeSocket()) {
    timer_ = host.loop.MakeTimer([this] { Append("tick\n"); });
    timer_->SetInterval(30);
    timer_->SetEnabled(true);
    socket_->onConnected = [this] { socket_->Write("PUSH\xFFSTAT\xFF"); };
    socket_->onDataArrival = [this] { Append(socket_->ReadAvailable() + "\n"); };
    socket_->Connect("127.0.0.1", UdsPeer::kDefaultPort);
  }
  ~Program() { Append("ended\n"); }

  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

 private:
  void Append(const std::string& line) {
    std::error_code error;
    if (const auto file = host_.files.Open("/log", OpenMode::Append, error)) file->Write(line, error);
  }

  Host host_;
  std::unique_ptr<SocketControl> socket_;
  std::unique_ptr<Timer> timer_;
};

struct Outcome {
  std::uint64_t fingerprint = 0;
  std::string log;
  bool operator==(const Outcome&) const = default;
};

/// A day in rough weather with a crash in the middle.
Outcome RoughDay(std::uint64_t seed) {
  SimHost host(seed);
  UdsPeer uds(host.loop, host.network);
  host.network.weather.splits = true;
  auto program = std::make_unique<Program>(host.Record());
  host.disk.CrashAtOperation(500 + seed, seed);
  EXPECT_TRUE(host.RunsUntilCrash([&] { host.loop.RunFor(1h); }));
  program.reset();
  host.Reboot();
  program = std::make_unique<Program>(host.Record());
  host.loop.RunFor(10s);
  program.reset();
  return {host.loop.Fingerprint(), host.disk.Contents("/log").value_or("")};
}

TEST(SimHost, OneSeedGivesOneRunAndAnotherSeedAnother) {
  const Outcome first = RoughDay(11);
  EXPECT_EQ(first, RoughDay(11));
  const Outcome other = RoughDay(12);
  EXPECT_NE(first.fingerprint, other.fingerprint);
  EXPECT_NE(first.log, other.log);
}

}  // namespace
}  // namespace tarvolt
