#pragma once

#include <QSocketNotifier>
#include <csignal>
#include <functional>
#include <memory>

#include "platform/event_loop.h"

namespace tarvolt {

/// The signals that ask a program to end, as events of the loop: SIGINT, SIGTERM and, unless the program was started
/// to outlive its terminal (nohup), SIGHUP. SIGPIPE is ignored; a broken pipe shows as a failed write. Made first
/// in main, before any thread starts, since each thread would otherwise still take the signals itself.
class UnixSignals {
 public:
  explicit UnixSignals(EventLoop& loop);

  /// Signals have their former effect again.
  ~UnixSignals();
  UnixSignals(const UnixSignals&) = delete;
  UnixSignals& operator=(const UnixSignals&) = delete;

  /// `call` runs once for each signal, also for a second one that comes while the first still yields. Of equal
  /// signals in one turn of the loop one is told.
  void OnStopSignal(std::function<void()> call);

 private:
  void ReadSignals();

  EventLoop& loop_;
  sigset_t formerMask_{};
  int fd_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::shared_ptr<std::function<void()>> onStop_;  ///< posted calls hold it weakly
};

}  // namespace tarvolt
