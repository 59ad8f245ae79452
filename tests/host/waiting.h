// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

#include "platform/event_loop.h"

namespace tarvolt {

/// Yields until `done` says so. The limit is generous: it only ends a test that has failed. It sleeps for all of it at
/// once, so that a missed wake-up shows as a failure.
template <typename Condition>
bool WaitFor(EventLoop& loop, Condition done, std::chrono::seconds limit = std::chrono::seconds(20)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!done()) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    loop.Yield(left);
    if (std::chrono::steady_clock::now() >= end) return false;
  }
  return true;
}

/// Yields for this long.
inline void RunFor(EventLoop& loop, std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end) {
    loop.Yield(std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()));
  }
}

}  // namespace tarvolt
