// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_sockets.h"

#include <QNetworkInterface>

#include "host/qt_listener.h"
#include "host/qt_socket.h"

namespace tarvolt {

std::unique_ptr<SocketControl> QtSockets::MakeSocket() {
  return std::make_unique<QtSocket>(loop_);
}

std::unique_ptr<SocketListener> QtSockets::MakeListener() {
  return std::make_unique<QtListener>(loop_);
}

std::string QtSockets::LocalAddress() const {
  for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
    if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback()) {
      return address.toString().toStdString();
    }
  }
  return QHostAddress(QHostAddress::LocalHost).toString().toStdString();
}

}  // namespace tarvolt
