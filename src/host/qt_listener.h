// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <chrono>
#include <memory>

#include "platform/event_loop.h"
#include "platform/socket_listener.h"

namespace tarvolt {

/// A listener over Qt: IPv4 and IPv6, on both when the address is empty. Qt's own signals only post, so a callback may
/// yield, listen anew or destroy the listener.
class QtListener final : public SocketListener {
 public:
  /// Connections that may be waiting to be taken, as far as the system allows; with fewer, most of a thousand clients
  /// that come back at once would try again seconds later.
  static constexpr int kBacklog = 4096;

  /// How long it leaves a connection waiting that it could not take.
  static constexpr std::chrono::milliseconds kRetry{500};

  explicit QtListener(EventLoop& loop) : loop_(loop) {}
  ~QtListener() override { Close(); }

  bool Listen(const std::string& localAddress, std::uint16_t localPort, std::string& why) override;
  std::uint16_t LocalPort() const override;
  void Close() override;

 private:
  class Server;

  void Take(qintptr descriptor);
  void CouldNotTake();

  EventLoop& loop_;
  std::shared_ptr<Server> server_;  ///< posted events hold it weakly and die with it
};

}  // namespace tarvolt
