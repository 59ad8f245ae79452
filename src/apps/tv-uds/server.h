// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTcpServer>
#include <functional>
#include <memory>
#include <string>

#include "apps/tv-uds/options.h"
#include "apps/tv-uds/session.h"
#include "apps/tv-uds/signals/source.h"

namespace tarvolt::uds {

/// Listens for the recorder and serves one connection at a time; others are closed at once.
class Server {
 public:
  /// `source` and `options` outlive the server. `onClientGone` is called when a connection has ended.
  Server(const Source& source, const Options& options, std::function<void()> onClientGone);

  /// Takes over a listener from an earlier start of the program, or opens one. False, with the reason in `why`, when
  /// that fails.
  bool Listen(std::string& why);

  const QTcpServer& Listener() const { return listener_; }

  /// Takes connections from now on, also those that came since Listen.
  void Serve();

 private:
  void LookLater();
  void EndSession();
  void TakeConnections();

  const Source& source_;
  const Options& options_;
  std::function<void()> onClientGone_;
  QTcpServer listener_;
  std::unique_ptr<Session> session_;
  bool sessionEnded_ = false;
};

}  // namespace tarvolt::uds
