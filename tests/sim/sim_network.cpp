// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_network.h"

#include <algorithm>

#include "sim/sim_socket.h"

namespace tarvolt {

SimNetwork::SimNetwork(SimLoop& loop, std::uint64_t seed) : loop_(loop), random_(seed) {}

std::unique_ptr<SocketControl> SimNetwork::MakeSocket() {
  return std::make_unique<SimSocket>(*this);
}

std::unique_ptr<SocketListener> SimNetwork::MakeListener() {
  return std::make_unique<SimListener>(*this);
}

void SimNetwork::SetUnreachable(const std::string& address, std::uint16_t port, bool unreachable) {
  if (unreachable) {
    unreachable_.insert(KeyOf(address, port));
  } else {
    unreachable_.erase(KeyOf(address, port));
  }
}

void SimNetwork::Break(SocketControl& socket, const std::string& why) {
  dynamic_cast<SimSocket&>(socket).Break(why);
}

SimNetwork::Key SimNetwork::KeyOf(const std::string& address, std::uint16_t port) {
  return {address == "localhost" ? "127.0.0.1" : address, port};
}

// Who listens on any address stands there without one.
SimNetwork::SimListener* SimNetwork::FindListener(const Key& key) const {
  for (const Key& place : {key, Key{"", key.second}}) {
    const auto found = listeners_.find(place);
    if (found != listeners_.end()) return found->second;
  }
  return nullptr;
}

bool SimNetwork::IsListenedTo(const Key& key) const {
  if (!key.first.empty()) return FindListener(key) != nullptr;
  return std::any_of(listeners_.begin(), listeners_.end(),
                     [&](const auto& listener) { return listener.first.second == key.second; });
}

// A free port, or the one wanted; 0 when that is taken.
std::uint16_t SimNetwork::TakePort(std::uint16_t wanted) {
  constexpr std::uint16_t kFirstFree = 49152;
  if (wanted != 0) return portsInUse_.insert(wanted).second ? wanted : std::uint16_t{0};
  while (!portsInUse_.insert(nextPort_).second) nextPort_ = nextPort_ == 65535 ? kFirstFree : nextPort_ + 1;
  const std::uint16_t taken = nextPort_;
  nextPort_ = nextPort_ == 65535 ? kFirstFree : nextPort_ + 1;
  return taken;
}

}  // namespace tarvolt
