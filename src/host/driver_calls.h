// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tarvolt {

/// Calls into drivers and sound servers, some of which never come back when a server hangs. Each runs on a thread of
/// its own, and the event loop waits for it only so long.
class DriverCalls {
 public:
  explicit DriverCalls(std::chrono::milliseconds hangsAfter = std::chrono::milliseconds(4000));
  ~DriverCalls();
  DriverCalls(const DriverCalls&) = delete;
  DriverCalls& operator=(const DriverCalls&) = delete;

  /// Asks `question` of `driver`; nothing when it is not answered within `patience`. One that was asked earlier comes
  /// first, and is waited for as well; but when it has been out for longer than `hangsAfter`, there is no answer at
  /// once: a driver that hangs costs one thread and little waiting. A question that is given up goes on by itself: it
  /// may hold nothing that belongs to its caller.
  template <class Answer>
  std::optional<Answer> Ask(const std::string& driver, std::chrono::milliseconds patience,
                            std::function<Answer()> question) {
    const auto answer = std::make_shared<std::optional<Answer>>();
    const bool came = Run(driver, patience, [answer, question = std::move(question)] { *answer = question(); });
    return came ? std::move(*answer) : std::nullopt;
  }

 private:
  struct Out;

  bool Run(const std::string& driver, std::chrono::milliseconds patience, std::function<void()> call);

  std::shared_ptr<Out> out_;
};

}  // namespace tarvolt
