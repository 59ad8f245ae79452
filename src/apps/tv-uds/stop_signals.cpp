// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/stop_signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace tarvolt::uds {
namespace {

sigset_t EndingSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGINT);
  sigaddset(&set, SIGTERM);
  return set;
}

}  // namespace

void StopSignals::Hold() {
  const sigset_t ending = EndingSignals();
  sigprocmask(SIG_BLOCK, &ending, nullptr);
}

StopSignals::StopSignals(std::function<void()> onStop) {
  const sigset_t ending = EndingSignals();
  descriptor_ = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ < 0) {
    // Better an abrupt end than a program that cannot be stopped.
    sigprocmask(SIG_UNBLOCK, &ending, nullptr);
    return;
  }
  notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this, stop = std::move(onStop)] {
    signalfd_siginfo info;
    if (read(descriptor_, &info, sizeof info) == sizeof info) stop();
  });
}

StopSignals::~StopSignals() {
  notifier_.reset();
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace tarvolt::uds
