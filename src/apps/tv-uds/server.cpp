// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/server.h"

#include <QHostAddress>
#include <QTimer>
#include <utility>

#include "apps/tv-uds/presence.h"
#include "text/number.h"

namespace tarvolt::uds {

Server::Server(const Source& source, const Options& options, std::function<void()> onClientGone)
    : source_(source), options_(options), onClientGone_(std::move(onClientGone)) {}

bool Server::Listen(std::string& why) {
  if (AdoptListener(listener_)) return true;
  if (listener_.listen(QHostAddress(QString::fromStdString(options_.address)), options_.port)) return true;
  const std::string place = "port " + NumberText(static_cast<std::int64_t>(options_.port)) + " of " + options_.address;
  why = listener_.serverError() == QAbstractSocket::AddressInUseError
            ? place + " is in use: is another data source running?"
            : "cannot listen on " + place + ": " + listener_.errorString().toStdString();
  return false;
}

void Server::Serve() {
  QObject::connect(&listener_, &QTcpServer::newConnection, &listener_, [this] { LookLater(); });
}

// A recorder that starts a new run closes one connection and opens the next in the same instant. Only behind the
// events of this instant is it known whether the old one is gone; nor can a session go inside an event of its own.
void Server::LookLater() {
  QTimer::singleShot(0, &listener_, [this] {
    EndSession();
    TakeConnections();
  });
}

void Server::EndSession() {
  if (!sessionEnded_) return;
  sessionEnded_ = false;
  session_.reset();
  onClientGone_();
}

void Server::TakeConnections() {
  while (QTcpSocket* socket = listener_.nextPendingConnection()) {
    if (session_ || socket->state() != QAbstractSocket::ConnectedState) {
      socket->abort();
      socket->deleteLater();
      continue;
    }
    socket->setParent(nullptr);
    session_ = std::make_unique<Session>(std::unique_ptr<QTcpSocket>(socket), source_, options_, [this] {
      sessionEnded_ = true;
      LookLater();
    });
  }
}

}  // namespace tarvolt::uds
