#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/socket_control.h"
#include "sim/sim_pipe.h"

namespace tarvolt {

/// The far end of a connection that the program made: the test's side. Letting go of it closes the connection.
class SimPeer {
 public:
  SimPeer(std::shared_ptr<SimPipe> toProgram, std::shared_ptr<SimPipe> fromProgram, SimRandom& random,
          const SimWeather& weather);
  ~SimPeer();

  SimPeer(const SimPeer&) = delete;
  SimPeer& operator=(const SimPeer&) = delete;

  void Send(std::string_view bytes);

  /// Closes in order: what was sent arrives first. No onClose follows.
  void Close();

  /// Breaks the connection: what is on the way is lost, and the program is told of the failure. No onClose follows.
  void Break(const std::string& why = "Connection reset by peer");

  bool IsOpen() const { return open_; }

  /// Bytes held back because the program does not read.
  std::size_t Waiting() const { return out_->waiting; }

  std::uint16_t programPort = 0;  ///< the port that the program connected from
  std::string programAddress;     ///< the address it bound, empty when it bound none
  std::function<void(std::string_view)> onData;
  std::function<void()> onClose;  ///< the program, or a failure, has ended the connection

 private:
  void EndedByProgram();

  std::shared_ptr<SimPipe> out_;
  std::shared_ptr<SimPipe> in_;
  SimRandom& random_;
  const SimWeather& weather_;
  bool open_ = true;
};

/// A port that answers while this object lives.
class SimListener {
 public:
  explicit SimListener(std::function<void()> stop) : stop_(std::move(stop)) {}
  ~SimListener() { stop_(); }

  SimListener(const SimListener&) = delete;
  SimListener& operator=(const SimListener&) = delete;

 private:
  std::function<void()> stop_;
};

/// The network of a simulated machine. An address where nobody listens refuses.
class SimNetwork final : public Sockets {
 public:
  SimNetwork(SimLoop& loop, std::uint64_t seed);

  std::unique_ptr<SocketControl> MakeSocket() override;
  std::string LocalAddress() const override { return "192.0.2.7"; }

  /// Answers connections to the address and port. `onAccept` is given the far end of each one, to keep.
  /// std::logic_error when somebody listens there already.
  using Accept = std::function<void(std::shared_ptr<SimPeer>)>;
  std::unique_ptr<SimListener> Listen(const std::string& address, std::uint16_t port, Accept onAccept);

  /// Connections to there neither come up nor fail, or do again.
  void SetUnreachable(const std::string& address, std::uint16_t port, bool unreachable);

  /// For everything sent, and every connection asked for, from here on.
  SimWeather weather;

  /// Connections asked for so far.
  int Attempts() const { return attempts_; }

 private:
  class SimSocket;
  using Key = std::pair<std::string, std::uint16_t>;

  static Key KeyOf(const std::string& address, std::uint16_t port);
  std::uint16_t TakePort(std::uint16_t wanted);

  SimLoop& loop_;
  SimRandom random_;
  std::map<Key, Accept> listeners_;
  std::set<Key> unreachable_;
  std::set<std::uint16_t> portsInUse_;
  std::uint16_t nextPort_ = 49152;
  int attempts_ = 0;
};

}  // namespace tarvolt
