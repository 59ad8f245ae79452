// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sim/sim_loop.h"
#include "sim/sim_network.h"

namespace tarvolt {

/// A User Data Source on the simulated network, for as long as it lives:
///
///     UdsPeer uds(host.loop, host.network);
///     uds.Measures([](std::int64_t n) { return std::vector<double>{n * 0.5}; }).PushesEvery(100ms);
///     uds.FallsSilentAt(500);
///
/// It takes one recorder at a time and any number one after the other; sets are counted through. A recorder that asked
/// for PUSH is sent sets from one period after the status exchange, one that asked for POLL gets a set for each GETD.
class UdsPeer {
 public:
  /// The values of a data set, channel 1 first, for the n-th set, from 0.
  using Values = std::function<std::vector<double>(std::int64_t set)>;

  /// The time of the n-th set as a TimeStamp.
  using Stamps = std::function<double(std::int64_t set)>;

  static constexpr std::uint16_t kDefaultPort = 1735;

  /// Listens at once. One channel, the set's number as its value, every 100 ms, without time stamps.
  UdsPeer(SimLoop& loop, SimNetwork& network);
  ~UdsPeer();

  UdsPeer(const UdsPeer&) = delete;
  UdsPeer& operator=(const UdsPeer&) = delete;

  /// How it behaves; each may be changed at any time.
  UdsPeer& Channels(int count);
  UdsPeer& Measures(Values values);
  UdsPeer& StampsWith(Stamps stamps);
  UdsPeer& PushesEvery(std::chrono::milliseconds period);
  UdsPeer& AnswersAfter(std::chrono::milliseconds wait);

  /// From this set on it keeps the connection and answers nothing any more.
  UdsPeer& FallsSilentAt(std::int64_t set);

  /// Sends a message of the test's own, with its terminator.
  void Send(std::string_view message);

  /// Breaks the connection. It goes on listening.
  void BreakLink();

  bool IsConnected() const { return peer_ != nullptr && peer_->IsConnected(); }

  /// Every message that came from a recorder, without its terminator.
  const std::vector<std::string>& Received() const { return received_; }

  /// Whole data sets sent so far.
  std::int64_t SetsSent() const { return sets_; }

 private:
  void Accept(std::unique_ptr<SocketControl> peer);
  void Take(std::string_view bytes);
  void Obey(const std::string& message);
  void Answer(void (UdsPeer::*action)());
  void Tick();
  void SendStatus();
  void SendSet();
  std::string SetText() const;
  bool IsSilent() const { return sets_ >= silentFrom_; }

  SimLoop& loop_;
  SimNetwork& network_;
  std::unique_ptr<SocketListener> listener_;
  std::shared_ptr<SocketControl> peer_;
  std::unique_ptr<Timer> pushTimer_;
  int channels_ = 1;
  Values values_;
  Stamps stamps_;
  std::chrono::milliseconds answersAfter_{0};
  std::int64_t silentFrom_ = std::numeric_limits<std::int64_t>::max();
  bool pushes_ = false;
  std::int64_t sets_ = 0;
  std::string unfinished_;
  std::vector<std::string> received_;
};

}  // namespace tarvolt
