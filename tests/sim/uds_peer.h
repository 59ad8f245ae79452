#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sim/sim_loop.h"
#include "sim/sim_network.h"

namespace tarvolt {

/// What can be wrong with a User Data Source, from a chosen data set on.
enum class UdsFault {
  None,
  Silent,           ///< keeps the connection and answers nothing any more
  HalfMessages,     ///< sends its status and each set in two pieces, a moment apart, cut inside a message
  TooManyChannels,  ///< declares nine channels in the status exchange
  Garbage,          ///< sends random bytes, terminators among them, before each set
  EndlessMessage,   ///< sends bytes without a terminator in place of sets, at the period, also when polled
  DropMidSet        ///< closes the connection behind the first item of a set
};

/// A User Data Source on the simulated network, for as long as it lives:
///
///     UdsPeer uds(host.loop, host.network, seed);
///     uds.Measures([](std::int64_t n) { return std::vector<double>{n * 0.5}; }).PushesEvery(100ms);
///     uds.Misbehaves(UdsFault::DropMidSet, 500);
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
  UdsPeer(SimLoop& loop, SimNetwork& network, std::uint64_t seed, std::uint16_t port = kDefaultPort,
          const std::string& address = "127.0.0.1");
  ~UdsPeer();

  UdsPeer(const UdsPeer&) = delete;
  UdsPeer& operator=(const UdsPeer&) = delete;

  /// How it behaves; each may be changed at any time.
  UdsPeer& Channels(int count);
  UdsPeer& Measures(Values values);
  UdsPeer& StampsWith(Stamps stamps);
  UdsPeer& PushesEvery(std::chrono::milliseconds period);
  UdsPeer& AnswersAfter(std::chrono::milliseconds wait);
  UdsPeer& Misbehaves(UdsFault fault, std::int64_t fromSet = 0);
  UdsPeer& Behaves() { return Misbehaves(UdsFault::None); }

  /// Sends a message of the test's own, with its terminator.
  void Send(std::string_view message);

  /// Sends bytes as they are.
  void SendRaw(std::string_view bytes);

  /// Closes the connection in order, or breaks it. It goes on listening.
  void HangUp();
  void BreakLink();

  bool IsConnected() const { return peer_ != nullptr && peer_->IsOpen(); }

  /// Connections taken so far.
  int Connections() const { return connections_; }

  /// Every message that came from a recorder, without its terminator.
  const std::vector<std::string>& Received() const { return received_; }

  /// Whole data sets sent so far.
  std::int64_t SetsSent() const { return sets_; }

  /// The port that the recorder connected from; 0 before the first connection.
  std::uint16_t RecorderPort() const { return peer_ == nullptr ? std::uint16_t{0} : peer_->programPort; }

 private:
  void Accept(std::shared_ptr<SimPeer> peer);
  void Take(std::string_view bytes);
  void Obey(const std::string& message);
  void Answer(void (UdsPeer::*action)());
  void Tick();
  void SendStatus();
  void SendSet();
  void SendWholeSet();
  void SendInHalves(std::string_view messages);
  void SendGarbage();
  std::string SetText() const;
  bool Faulty(UdsFault fault) const { return fault_ == fault && sets_ >= faultFrom_; }

  SimLoop& loop_;
  SimRandom random_;
  std::unique_ptr<SimListener> listener_;
  std::shared_ptr<SimPeer> peer_;
  std::unique_ptr<Timer> pushTimer_;
  int channels_ = 1;
  Values values_;
  Stamps stamps_;
  std::chrono::milliseconds answersAfter_{0};
  UdsFault fault_ = UdsFault::None;
  std::int64_t faultFrom_ = 0;
  bool pushes_ = false;
  std::int64_t sets_ = 0;
  int connections_ = 0;
  std::string unfinished_;
  std::vector<std::string> received_;
};

}  // namespace tarvolt
