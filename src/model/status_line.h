// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

namespace tarvolt {

/// The status line of a window: one text, which may keep the line for a while.
class StatusLine {
 public:
  /// Firings of TimerKeepAlive for which a message keeps the line.
  static constexpr int kUsualHold = 120;

  const std::string& Text() const { return text_; }

  /// Shows a text. A hold that goes on takes it off at its end.
  void Say(std::string text) { text_ = std::move(text); }

  void Clear() { text_.clear(); }

  /// Shows a message that keeps the line for so many firings, and is then taken off.
  void Hold(std::string text, int firings = kUsualHold) {
    text_ = std::move(text);
    left_ = firings;
  }

  /// Ends a hold; the text stays.
  void Release() { left_ = 0; }

  /// One firing of TimerKeepAlive. True when no message keeps the line; one that has had its time is taken off.
  bool Fire() {
    if (left_ > 0 && --left_ == 0) text_.clear();
    return left_ == 0;
  }

 private:
  std::string text_;
  int left_ = 0;
};

}  // namespace tarvolt
