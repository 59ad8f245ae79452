// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/unix_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <system_error>
#include <utility>

namespace tarvolt {
namespace {

// A handler is given nothing but the number of the signal, so what it needs has to stand here. A descriptor of signals
// would do without, but asks that every thread of every library blocks them.
std::atomic<int> handlersEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void PassOn(int /*number*/) {
  const int formerError = errno;
  const char byte = 0;
  const auto written = ::write(handlersEnd, &byte, 1);
  static_cast<void>(written);  // a full pipe already holds signals enough
  errno = formerError;
}

}  // namespace

UnixSignals::UnixSignals(EventLoop& loop) : loop_(loop), onStop_(std::make_shared<std::function<void()>>()) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) throw std::system_error(errno, std::generic_category());
  readEnd_ = ends[0];
  writeEnd_ = ends[1];
  notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { ReadSignals(); });
  handlersEnd = writeEnd_;
  std::signal(SIGPIPE, SIG_IGN);
  for (auto& signal : signals_) Take(signal);
}

void UnixSignals::Take(Taken& signal) {
  ::sigaction(signal.number, nullptr, &signal.former);
  if (signal.number == SIGHUP && signal.former.sa_handler == SIG_IGN) return;
  struct sigaction action {};
  action.sa_handler = PassOn;
  action.sa_flags = SA_RESTART;
  signal.taken = ::sigaction(signal.number, &action, nullptr) == 0;
}

UnixSignals::~UnixSignals() {
  for (const auto& signal : signals_) {
    if (signal.taken) ::sigaction(signal.number, &signal.former, nullptr);
  }
  handlersEnd = -1;
  notifier_.reset();
  ::close(readEnd_);
  ::close(writeEnd_);
}

void UnixSignals::OnStopSignal(std::function<void()> call) {
  *onStop_ = std::move(call);
}

void UnixSignals::ReadSignals() {
  std::array<char, 16> bytes{};
  const auto count = ::read(readEnd_, bytes.data(), bytes.size());
  for (auto i = decltype(count){0}; i < count; ++i) {
    loop_.Post([held = std::weak_ptr(onStop_)] {
      const auto onStop = held.lock();
      if (!onStop) return;
      if (const auto call = *onStop) call();
    });
  }
}

}  // namespace tarvolt
