// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractSocket>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "platform/socket_control.h"

namespace tarvolt {

/// A TCP connection over Qt: IPv4, IPv6 and host names, never through a proxy, small writes sent at once. Qt's own
/// signals only post; each callback runs from the event loop, so it may yield, disconnect, connect anew or destroy the
/// socket. IsConnected changes with the callbacks: true from onConnected until onClose.
class QtSocket final : public SocketControl {
 public:
  explicit QtSocket(EventLoop& loop) : loop_(loop) {}

  /// Takes over a connection that has come in.
  QtSocket(EventLoop& loop, qintptr descriptor);
  ~QtSocket() override;

  void Bind(const std::string& localAddress, std::uint16_t localPort) override;

  /// An older connection is ended first, as by Disconnect.
  void Connect(const std::string& remoteAddress, std::uint16_t remotePort) override;

  bool IsConnected() const override;
  SocketEnd LocalEnd() const override;
  SocketEnd RemoteEnd() const override;
  void Write(std::string_view bytes) override;
  std::string ReadAvailable() override;
  void Disconnect() override;

 private:
  struct Link;

  void MakeLink();
  bool BindLocalEnd(const QString& remoteAddress);
  void WatchSignals();
  void Queue(void (QtSocket::*event)());
  void QueueData();
  void QueueFailure(const std::string& words);
  void QueueClose();
  void NowConnected();
  void DataArrived();
  void Failed();
  void Closed();

  EventLoop& loop_;
  std::string localAddress_;
  std::uint16_t localPort_ = 0;
  std::shared_ptr<Link> link_;  ///< this attempt to connect; posted events hold it weakly and die with it
};

}  // namespace tarvolt
