// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/socket_control.h"

namespace tarvolt {

/// Waits for TCP connections on one port of this machine. Its events come from the loop; destroying it closes it.
class SocketListener {
 public:
  virtual ~SocketListener() = default;

  /// Listens there, and no longer where it did before. An empty address or one of all zeros means any; port 0 means a
  /// free one. False with the reason in `why`; it listens nowhere then.
  virtual bool Listen(const std::string& localAddress, std::uint16_t localPort, std::string& why) = 0;

  /// The port it listens on; 0 while it listens nowhere.
  virtual std::uint16_t LocalPort() const = 0;

  /// What was handed over stays connected, what was not is closed. No event follows.
  virtual void Close() = 0;

  /// A connection, up already: its onConnected does not come. Its other callbacks are set before anything yields.
  std::function<void(std::unique_ptr<SocketControl>)> onAccept;

  /// Why a connection could not be taken. It listens on, and tries again after a while.
  std::function<void(const std::string&)> onError;
};

}  // namespace tarvolt
