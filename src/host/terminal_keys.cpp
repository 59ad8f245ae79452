// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/terminal_keys.h"

#include <array>
#include <cerrno>
#include <utility>

namespace tarvolt {
namespace {

constexpr char kEscape = '\x1B';
constexpr int kRetryMilliseconds = 1000;

}  // namespace

bool HoldsEscapeKey(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == kEscape && (i + 1 == bytes.size() || bytes[i + 1] == kEscape)) return true;
  }
  return false;
}

TerminalKeys::TerminalKeys(EventLoop& loop, int fd)
    : loop_(loop), fd_(fd), onEscape_(std::make_shared<std::function<void()>>()) {
  if (::isatty(fd_) == 0) return;
  retry_ = loop_.MakeTimer([this] { TakeTerminal(); });
  retry_->SetInterval(kRetryMilliseconds);
  notifier_ = std::make_unique<QSocketNotifier>(fd_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { ReadKeys(); });
  TakeTerminal();
}

TerminalKeys::~TerminalKeys() {
  notifier_.reset();
  if (taken_ && InForeground()) ::tcsetattr(fd_, TCSANOW, &formerMode_);
}

void TerminalKeys::OnEscape(std::function<void()> call) {
  *onEscape_ = std::move(call);
}

// A terminal that does not control this session knows no background: there every program may read.
bool TerminalKeys::InForeground() const {
  const pid_t group = ::tcgetpgrp(fd_);
  return group == ::getpgrp() || (group == -1 && errno == ENOTTY);
}

void TerminalKeys::TakeTerminal() {
  if (!InForeground() || ::tcgetattr(fd_, &formerMode_) != 0) {
    Wait();
    return;
  }
  termios mode = formerMode_;
  mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  mode.c_cc[VMIN] = 0;  // a read never waits
  mode.c_cc[VTIME] = 0;
  taken_ = ::tcsetattr(fd_, TCSANOW, &mode) == 0;
  notifier_->setEnabled(taken_);
  retry_->SetEnabled(false);
}

// Reading in the background would stop the whole program, and a key that nobody reads would keep the notifier firing.
void TerminalKeys::Wait() {
  taken_ = false;
  notifier_->setEnabled(false);
  retry_->SetEnabled(true);
}

void TerminalKeys::ReadKeys() {
  if (!InForeground()) {
    Wait();
    return;
  }
  std::array<char, 256> bytes{};
  const auto size = ::read(fd_, bytes.data(), bytes.size());
  if (size == -1 && (errno == EINTR || errno == EAGAIN)) return;
  if (size <= 0) {  // the terminal has gone
    notifier_->setEnabled(false);
    return;
  }
  if (!HoldsEscapeKey(std::string_view(bytes.data(), static_cast<std::size_t>(size)))) return;
  loop_.Post([held = std::weak_ptr(onEscape_)] {
    const auto onEscape = held.lock();
    if (!onEscape) return;
    if (const auto call = *onEscape) call();
  });
}

}  // namespace tarvolt
