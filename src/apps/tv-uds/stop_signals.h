// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace tarvolt::uds {

/// Turns SIGINT and SIGTERM into an ordinary event of the loop.
class StopSignals {
 public:
  /// From now on the signals wait. To be called first of all: one that comes before there is a loop is not lost.
  static void Hold();

  /// Calls `onStop` from the event loop for each signal held or to come.
  explicit StopSignals(std::function<void()> onStop);
  ~StopSignals();

  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

 private:
  int descriptor_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tarvolt::uds
