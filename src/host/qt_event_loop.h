// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QObject>
#include <cstdint>

#include "platform/event_loop.h"

namespace tarvolt {

/// The event loop over Qt's. It runs inside Yield and inside Qt's own loops (a dialog) alike. Lives on the thread of
/// `application` and dies before it.
class QtEventLoop final : public EventLoop {
 public:
  explicit QtEventLoop(QCoreApplication& application);
  ~QtEventLoop() override;

  void Yield(std::chrono::milliseconds atMost = kForever) override;

  /// May also be called by another thread. Calls not yet run when the loop dies are dropped.
  void Post(std::function<void()> call) override;

  std::unique_ptr<Timer> MakeTimer(std::function<void()> onTick) override;

 private:
  /// Counts every event that is handed to an object of this thread.
  class EventCounter final : public QObject {
   public:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    std::uint64_t Count() const { return count_; }

   private:
    std::uint64_t count_ = 0;
  };

  void SleepUntilEvent();
  void DoNotBlockAfterAnEvent();

  QCoreApplication& application_;
  EventCounter events_;
  std::uint64_t eventsAtSleep_ = 0;  ///< count when the innermost sleep began
  int loopLevelAtSleep_ = -1;        ///< Qt's level of loops at that moment; -1 while no sleep is under way
};

}  // namespace tarvolt
