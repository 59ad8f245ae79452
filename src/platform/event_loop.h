// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tarvolt {

/// A repeating timer. Disabled when made. A tick that is still running is never entered again by its own
/// timer, and ticks that fall due meanwhile are not queued.
class Timer {
 public:
  virtual ~Timer() = default;

  /// Period in milliseconds, at least 1. On an enabled timer the period starts anew.
  virtual void SetInterval(int milliseconds) = 0;
  virtual int Interval() const = 0;

  /// Enabling starts a whole period from now.
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;
};

/// The one event loop of the process. Timers, sockets and posted calls all run inside Yield, on one thread.
class EventLoop {
 public:
  static constexpr std::chrono::milliseconds kForever = std::chrono::milliseconds::max();

  virtual ~EventLoop() = default;

  /// Runs the events that are due; when there are none sleeps until the next one, at most `atMost`.
  /// Anything can happen inside: the caller re-reads what it cached.
  virtual void Yield(std::chrono::milliseconds atMost = kForever) = 0;

  /// Runs `call` at a later turn of the loop, never inside this one.
  virtual void Post(std::function<void()> call) = 0;

  /// Makes a disabled timer that calls `onTick`. Destroying it cancels it.
  virtual std::unique_ptr<Timer> MakeTimer(std::function<void()> onTick) = 0;
};

}  // namespace tarvolt
