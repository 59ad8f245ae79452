// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "sim/sim_network.h"

namespace tarvolt {

/// One end of a simulated connection. Every handler may do anything, also destroy the socket, so that after each one
/// the socket is touched only when it still lives and still means the same connection.
class SimNetwork::SimSocket final : public SocketControl {
 public:
  explicit SimSocket(SimNetwork& network) : network_(network) {}
  ~SimSocket() override { Disconnect(); }

  SimSocket(const SimSocket&) = delete;
  SimSocket& operator=(const SimSocket&) = delete;

  void Bind(const std::string& localAddress, std::uint16_t localPort) override;
  void Connect(const std::string& remoteAddress, std::uint16_t remotePort) override;
  bool IsConnected() const override { return out_ != nullptr; }
  SocketEnd LocalEnd() const override { return IsConnected() ? local_ : SocketEnd(); }
  SocketEnd RemoteEnd() const override { return IsConnected() ? remote_ : SocketEnd(); }
  void Write(std::string_view bytes) override;
  std::string ReadAvailable() override;
  void Disconnect() override;

  void Break(const std::string& why);

 private:
  /// Expires with this connection: at Disconnect, at the next Connect and with the socket.
  std::weak_ptr<int> Life() const { return connection_; }

  void Answered(const Key& key);
  std::unique_ptr<SimSocket> MakeFarEnd();
  void Join(std::shared_ptr<SimPipe> in, std::shared_ptr<SimPipe> out);
  void Later(void (SimSocket::*event)());
  void GiveUp();
  void Receive(std::string_view bytes);
  void TakeWaiting();
  void TellFurtherArrival();
  void CloseWhenDrained();
  void Fail(const std::string& why);
  void CloseConnection();

  SimNetwork& network_;
  std::shared_ptr<int> connection_;
  std::shared_ptr<SimPipe> in_;
  std::shared_ptr<SimPipe> out_;
  SocketEnd bound_;
  SocketEnd local_;
  SocketEnd remote_;
  std::uint16_t takenPort_ = 0;  // to be given back
  std::string received_;
  std::string waiting_;  // from waitingFrom_ on: beyond what the socket holds for a reader
  std::size_t waitingFrom_ = 0;
  bool ended_ = false;
  bool furtherArrivalPending_ = false;
  bool givenUp_ = false;
};

class SimNetwork::SimListener final : public SocketListener {
 public:
  explicit SimListener(SimNetwork& network) : network_(network) {}
  ~SimListener() override { Close(); }

  SimListener(const SimListener&) = delete;
  SimListener& operator=(const SimListener&) = delete;

  bool Listen(const std::string& localAddress, std::uint16_t localPort, std::string& why) override;
  std::uint16_t LocalPort() const override { return place_.second; }
  void Close() override;

 private:
  SimNetwork& network_;
  Key place_;
  std::uint16_t takenPort_ = 0;
};

/// What a socket can be bound to: any address, or something that looks like one.
bool IsSimAddress(const std::string& address);

}  // namespace tarvolt
