// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <functional>
#include <memory>

#include "platform/event_loop.h"

namespace tarvolt {

/// The signals that ask a program to end, as events of the loop: SIGINT, SIGTERM and, unless the program was started
/// to outlive its terminal (nohup), SIGHUP. SIGPIPE is ignored; a broken pipe shows as a failed write. One object a
/// process. Started programs get the signals as usual.
class UnixSignals {
 public:
  /// Throws std::system_error when the system has no descriptors left.
  explicit UnixSignals(EventLoop& loop);

  /// The signals have their former effect again.
  ~UnixSignals();
  UnixSignals(const UnixSignals&) = delete;
  UnixSignals& operator=(const UnixSignals&) = delete;

  /// `call` runs once for each signal, also for a second one that comes while the first still yields.
  void OnStopSignal(std::function<void()> call);

 private:
  struct Taken {
    int number;
    bool taken;
    struct sigaction former;
  };

  void Take(Taken& signal);
  void ReadSignals();

  EventLoop& loop_;
  int readEnd_ = -1;
  int writeEnd_ = -1;
  std::array<Taken, 3> signals_{{{SIGINT, false, {}}, {SIGTERM, false, {}}, {SIGHUP, false, {}}}};
  std::unique_ptr<QSocketNotifier> notifier_;
  std::shared_ptr<std::function<void()>> onStop_;  ///< posted calls hold it weakly
};

}  // namespace tarvolt
