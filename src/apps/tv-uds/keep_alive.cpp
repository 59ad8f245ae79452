// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/keep_alive.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace tarvolt::uds {
namespace {

void SetOption(QTcpSocket& socket, int option, int value) {
  setsockopt(static_cast<int>(socket.socketDescriptor()), IPPROTO_TCP, option, &value, sizeof value);
}

}  // namespace

void NoticeLostPeer(QTcpSocket& socket) {
  socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
  SetOption(socket, TCP_KEEPIDLE, 60);
  SetOption(socket, TCP_KEEPINTVL, 15);
  SetOption(socket, TCP_KEEPCNT, 4);
}

}  // namespace tarvolt::uds
