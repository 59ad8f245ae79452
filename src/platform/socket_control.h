// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tarvolt {

/// One end of a connection. No address and port 0 without a connection.
struct SocketEnd {
  std::string address;  ///< in figures; that of an IPv4 end in the dotted form, however it was reached
  std::uint16_t port = 0;
};

/// One TCP connection, made by Connect or handed over by a SocketListener. Every outcome comes as an event from the
/// loop, never from inside the call that asked for it; after Disconnect no event of the old connection arrives any
/// more.
class SocketControl {
 public:
  virtual ~SocketControl() = default;

  /// Local end for the next Connect. An empty address or one of all zeros means any; port 0 means a free one.
  virtual void Bind(const std::string& localAddress, std::uint16_t localPort) = 0;

  /// Starts to connect. Ends in onConnected, or in onError and then onClose.
  virtual void Connect(const std::string& remoteAddress, std::uint16_t remotePort) = 0;

  virtual bool IsConnected() const = 0;
  virtual SocketEnd LocalEnd() const = 0;
  virtual SocketEnd RemoteEnd() const = 0;

  /// Queues bytes. A failure comes through onError; without a connection the bytes are dropped. With more than
  /// kWriteLimit waiting for a peer that does not read the connection is given up.
  virtual void Write(std::string_view bytes) = 0;

  /// All bytes that have arrived, at most kReadLimit of them; the rest comes with a further onDataArrival. Within
  /// onClose it also gives what had arrived and was not read before.
  virtual std::string ReadAvailable() = 0;

  /// Sends what is queued as far as that needs no waiting and closes. No onClose follows.
  virtual void Disconnect() = 0;

  /// What the socket holds for a reader at most; beyond that the peer is made to wait.
  static constexpr std::size_t kReadLimit = std::size_t{1} << 20;

  /// Bytes that may wait here for a peer that does not read.
  static constexpr std::size_t kWriteLimit = std::size_t{16} << 20;

  std::function<void()> onConnected;
  std::function<void()> onDataArrival;
  std::function<void()> onClose;                    ///< the peer, or a failure, has ended the connection
  std::function<void(const std::string&)> onError;  ///< the failure in words
};

}  // namespace tarvolt
