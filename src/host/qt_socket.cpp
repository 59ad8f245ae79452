// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_socket.h"

#include <sys/socket.h>

#include <QNetworkProxy>
#include <QTcpSocket>
#include <array>
#include <utility>

#include "host/qt_address.h"

namespace tarvolt {
namespace {

/// A socket closed over unread bytes resets the connection, and the peer may lose the last message sent to it.
void DropUnreadBytes(QTcpSocket& socket) {
  const auto descriptor = static_cast<int>(socket.socketDescriptor());
  if (descriptor == -1) return;
  std::array<char, 65536> bytes;
  std::size_t dropped = 0;
  while (dropped < SocketControl::kReadLimit) {
    const auto got = ::recv(descriptor, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (got <= 0) return;
    dropped += static_cast<std::size_t>(got);
  }
}

void SetOptions(QTcpSocket& socket) {
  socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
  socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
}

}  // namespace

/// One attempt to connect and what follows from it.
struct QtSocket::Link {
  QTcpSocket socket;
  bool connected = false;
  bool dataQueued = false;
  bool closeQueued = false;
  std::string failure;
};

QtSocket::QtSocket(EventLoop& loop, qintptr descriptor) : loop_(loop) {
  MakeLink();
  link_->connected = true;
  if (link_->socket.setSocketDescriptor(descriptor)) {
    SetOptions(link_->socket);
  } else {
    QueueFailure(AnsiText(link_->socket.errorString()));
    QueueClose();
  }
}

QtSocket::~QtSocket() {
  Disconnect();
}

void QtSocket::Bind(const std::string& localAddress, std::uint16_t localPort) {
  localAddress_ = localAddress;
  localPort_ = localPort;
}

void QtSocket::Connect(const std::string& remoteAddress, std::uint16_t remotePort) {
  Disconnect();
  MakeLink();
  const QString address = QtText(remoteAddress).trimmed();
  if (BindLocalEnd(address)) link_->socket.connectToHost(address, remotePort);
}

void QtSocket::MakeLink() {
  link_ = std::make_shared<Link>();
  link_->socket.setProxy(QNetworkProxy::NoProxy);
  link_->socket.setReadBufferSize(kReadLimit);
  WatchSignals();
}

bool QtSocket::BindLocalEnd(const QString& remoteAddress) {
  auto local = LocalAddressOf(localAddress_);
  if (local && IsAnyAddress(*local)) {
    if (localPort_ == 0) return true;
    const bool remoteIsIPv4 = QHostAddress(remoteAddress).protocol() == QAbstractSocket::IPv4Protocol;
    local = remoteIsIPv4 ? QHostAddress::AnyIPv4 : QHostAddress::Any;
  }
  // A fixed port would otherwise be barred for minutes after each connection.
  if (local && link_->socket.bind(*local, localPort_, QAbstractSocket::ReuseAddressHint)) return true;
  QueueFailure(local ? AnsiText(link_->socket.errorString()) : "The local address is not valid");
  QueueClose();
  return false;
}

void QtSocket::WatchSignals() {
  auto& socket = link_->socket;
  QObject::connect(&socket, &QTcpSocket::connected, &socket, [this] {
    SetOptions(link_->socket);
    Queue(&QtSocket::NowConnected);
  });
  QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] { QueueData(); });
  QObject::connect(&socket, &QTcpSocket::disconnected, &socket, [this] { QueueClose(); });
  QObject::connect(&socket, &QTcpSocket::errorOccurred, &socket, [this](QAbstractSocket::SocketError error) {
    if (error == QAbstractSocket::RemoteHostClosedError) return;  // an end as it should be; disconnected follows
    QueueFailure(AnsiText(link_->socket.errorString()));
    QueueClose();
  });
}

void QtSocket::Queue(void (QtSocket::*event)()) {
  loop_.Post([this, event, link = std::weak_ptr(link_)] {
    if (!link.expired()) (this->*event)();
  });
}

void QtSocket::QueueData() {
  if (!std::exchange(link_->dataQueued, true)) Queue(&QtSocket::DataArrived);
}

void QtSocket::QueueFailure(const std::string& words) {
  if (link_->closeQueued) return;
  link_->failure = words;
  Queue(&QtSocket::Failed);
}

void QtSocket::QueueClose() {
  if (!std::exchange(link_->closeQueued, true)) Queue(&QtSocket::Closed);
}

// The callbacks are copied before they are called, since they may destroy this object and themselves with it.

void QtSocket::NowConnected() {
  link_->connected = true;
  if (const auto call = onConnected) call();
}

void QtSocket::DataArrived() {
  link_->dataQueued = false;
  if (const auto call = onDataArrival) call();
}

void QtSocket::Failed() {
  const std::string words = link_->failure;
  if (const auto call = onError) call(words);
}

void QtSocket::Closed() {
  link_->connected = false;
  if (link_->socket.state() == QAbstractSocket::ConnectedState) link_->socket.abort();  // given up by Write
  if (const auto call = onClose) call();
}

bool QtSocket::IsConnected() const {
  return link_ && link_->connected;
}

SocketEnd QtSocket::LocalEnd() const {
  return IsConnected() ? EndOf(link_->socket.localAddress(), link_->socket.localPort()) : SocketEnd();
}

SocketEnd QtSocket::RemoteEnd() const {
  return IsConnected() ? EndOf(link_->socket.peerAddress(), link_->socket.peerPort()) : SocketEnd();
}

void QtSocket::Write(std::string_view bytes) {
  if (!IsConnected() || link_->closeQueued) return;
  auto& socket = link_->socket;
  if (static_cast<std::size_t>(socket.bytesToWrite()) + bytes.size() > kWriteLimit) {
    QueueFailure("The remote end does not take the data sent to it");
    QueueClose();
    return;
  }
  socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::string QtSocket::ReadAvailable() {
  if (!link_) return {};
  return link_->socket.read(static_cast<qint64>(kReadLimit)).toStdString();
}

void QtSocket::Disconnect() {
  const auto link = std::exchange(link_, nullptr);
  if (!link) return;
  link->socket.disconnect();
  if (link->socket.state() != QAbstractSocket::ConnectedState) return;
  link->socket.flush();
  DropUnreadBytes(link->socket);
}

}  // namespace tarvolt
