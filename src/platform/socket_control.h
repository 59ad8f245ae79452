#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tarvolt {

/// One TCP connection as a client. Every outcome comes as an event from the loop, never from inside the call
/// that asked for it; after Disconnect no event of the old connection arrives any more.
class SocketControl {
 public:
  virtual ~SocketControl() = default;

  /// Local end for the next Connect. An empty address or one of all zeros means any; port 0 means a free one.
  virtual void Bind(const std::string& localAddress, std::uint16_t localPort) = 0;

  /// Starts to connect. Ends in onConnected, or in onError and then onClose.
  virtual void Connect(const std::string& remoteAddress, std::uint16_t remotePort) = 0;

  virtual bool IsConnected() const = 0;

  /// Queues bytes. A failure comes through onError; without a connection the bytes are dropped.
  virtual void Write(std::string_view bytes) = 0;

  /// All bytes that have arrived, at most kReadLimit of them; the rest comes with a further onDataArrival.
  virtual std::string ReadAvailable() = 0;

  /// Sends what is queued as far as that needs no waiting and closes. No onClose follows.
  virtual void Disconnect() = 0;

  /// What the socket holds for a reader at most; beyond that the peer is made to wait.
  static constexpr std::size_t kReadLimit = 1 << 20;

  std::function<void()> onConnected;
  std::function<void()> onDataArrival;
  std::function<void()> onClose;                    ///< the peer, or a failure, has ended the connection
  std::function<void(const std::string&)> onError;  ///< the failure in words
};

/// Makes sockets.
class Sockets {
 public:
  virtual ~Sockets() = default;
  virtual std::unique_ptr<SocketControl> MakeSocket() = 0;

  /// The address under which the local network knows this machine; that of the loop back to itself without a network.
  virtual std::string LocalAddress() const = 0;
};

}  // namespace tarvolt
