// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "platform/sockets.h"
#include "sim/sim_pipe.h"

namespace tarvolt {

/// The network of a simulated machine, and of every other machine that a test puts there: all of them take their
/// sockets and listeners from here. Anything that looks like an address is one of theirs; an address where nobody
/// listens refuses.
class SimNetwork final : public Sockets {
 public:
  SimNetwork(SimLoop& loop, std::uint64_t seed);

  std::unique_ptr<SocketControl> MakeSocket() override;
  std::unique_ptr<SocketListener> MakeListener() override;
  std::string LocalAddress() const override { return "192.0.2.7"; }

  /// Connections to there neither come up nor fail, or do again.
  void SetUnreachable(const std::string& address, std::uint16_t port, bool unreachable);

  /// Breaks the connection of a socket of this network: what is on the way to the other end is lost, and that is
  /// reported of the failure. The socket itself is reported nothing.
  void Break(SocketControl& socket, const std::string& why = "Connection reset by peer");

  /// For everything sent, and every connection asked for, from here on.
  SimWeather weather;

 private:
  class SimSocket;
  class SimListener;
  using Key = std::pair<std::string, std::uint16_t>;

  static Key KeyOf(const std::string& address, std::uint16_t port);
  SimListener* FindListener(const Key& key) const;
  bool IsListenedTo(const Key& key) const;
  std::uint16_t TakePort(std::uint16_t wanted);

  SimLoop& loop_;
  SimRandom random_;
  std::map<Key, SimListener*> listeners_;
  std::set<Key> unreachable_;
  std::set<std::uint16_t> portsInUse_;
  std::uint16_t nextPort_ = 49152;
};

}  // namespace tarvolt
