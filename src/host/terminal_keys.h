// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <termios.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <string_view>

#include "platform/event_loop.h"

namespace tarvolt {

/// True when one read from a terminal holds the Escape key itself, and not only the sequences of other keys, which
/// begin with the same byte.
bool HoldsEscapeKey(std::string_view bytes);

/// The Escape key of a program that runs in a terminal. Does nothing when `fd` is no terminal. While the program is
/// in the background the terminal is left alone: its keys and its mode are another program's. The former mode of the
/// terminal comes back when this object dies. Signal keys such as Ctrl+C keep their effect.
class TerminalKeys {
 public:
  explicit TerminalKeys(EventLoop& loop, int fd = STDIN_FILENO);
  ~TerminalKeys();
  TerminalKeys(const TerminalKeys&) = delete;
  TerminalKeys& operator=(const TerminalKeys&) = delete;

  /// `call` runs from the loop at each press of Escape.
  void OnEscape(std::function<void()> call);

 private:
  bool InForeground() const;
  void TakeTerminal();
  void Wait();
  void ReadKeys();

  EventLoop& loop_;
  int fd_;
  termios formerMode_{};
  bool taken_ = false;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::unique_ptr<Timer> retry_;
  std::shared_ptr<std::function<void()>> onEscape_;  ///< posted calls hold it weakly
};

}  // namespace tarvolt
