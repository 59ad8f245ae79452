// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/socket_control.h"
#include "platform/socket_listener.h"

namespace tarvolt {

/// Makes sockets and listeners.
class Sockets {
 public:
  virtual ~Sockets() = default;
  virtual std::unique_ptr<SocketControl> MakeSocket() = 0;
  virtual std::unique_ptr<SocketListener> MakeListener() = 0;

  /// The address under which the local network knows this machine; that of the loop back to itself without a network.
  virtual std::string LocalAddress() const = 0;
};

}  // namespace tarvolt
