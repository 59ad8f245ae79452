// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_listener.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTimer>
#include <utility>

#include "host/qt_address.h"
#include "host/qt_socket.h"

namespace tarvolt {

class QtListener::Server final : public QTcpServer {
 public:
  explicit Server(QtListener& owner) : owner_(owner) {
    setProxy(QNetworkProxy::NoProxy);
    setListenBacklogSize(kBacklog);
    connect(this, &QTcpServer::acceptError, this, [this] { owner_.CouldNotTake(); });
  }

 protected:
  void incomingConnection(qintptr descriptor) override { owner_.Take(descriptor); }

 private:
  QtListener& owner_;
};

bool QtListener::Listen(const std::string& localAddress, std::uint16_t localPort, std::string& why) {
  Close();
  const auto address = LocalAddressOf(localAddress);
  if (!address) {
    why = "The local address is not valid";
    return false;
  }
  auto server = std::make_shared<Server>(*this);
  if (!server->listen(*address, localPort)) {
    why = AnsiText(server->errorString());
    return false;
  }
  server_ = std::move(server);
  return true;
}

std::uint16_t QtListener::LocalPort() const {
  return server_ ? server_->serverPort() : std::uint16_t{0};
}

void QtListener::Close() {
  server_ = nullptr;
}

// The callbacks are copied before they are called, since they may destroy this object and themselves with it.

void QtListener::Take(qintptr descriptor) {
  const auto socket = std::make_shared<std::unique_ptr<QtSocket>>(std::make_unique<QtSocket>(loop_, descriptor));
  loop_.Post([this, socket, server = std::weak_ptr(server_)] {
    if (server.expired()) return;
    if (const auto call = onAccept) call(std::move(*socket));
  });
}

// Mostly the files that a program may have open are used up. Qt has stopped listening then, or it would be informed of
// the same connection for ever.
void QtListener::CouldNotTake() {
  QTimer::singleShot(kRetry, server_.get(), [server = server_.get()] { server->resumeAccepting(); });
  loop_.Post([this, words = AnsiText(server_->errorString()), server = std::weak_ptr(server_)] {
    if (server.expired()) return;
    if (const auto call = onError) call(words);
  });
}

}  // namespace tarvolt
