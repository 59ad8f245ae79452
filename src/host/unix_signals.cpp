#include "host/unix_signals.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <utility>

namespace tarvolt {
namespace {

bool IsIgnored(int number) {
  struct sigaction action {};
  return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t StopSignals() {
  sigset_t set;
  ::sigemptyset(&set);
  ::sigaddset(&set, SIGINT);
  ::sigaddset(&set, SIGTERM);
  if (!IsIgnored(SIGHUP)) ::sigaddset(&set, SIGHUP);
  return set;
}

}  // namespace

UnixSignals::UnixSignals(EventLoop& loop) : loop_(loop), onStop_(std::make_shared<std::function<void()>>()) {
  std::signal(SIGPIPE, SIG_IGN);
  const sigset_t stopSignals = StopSignals();
  fd_ = ::signalfd(-1, &stopSignals, SFD_NONBLOCK | SFD_CLOEXEC);
  if (fd_ == -1) return;  // without a descriptor the signals end the program as they always did
  ::pthread_sigmask(SIG_BLOCK, &stopSignals, &formerMask_);
  notifier_ = std::make_unique<QSocketNotifier>(fd_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { ReadSignals(); });
}

UnixSignals::~UnixSignals() {
  if (fd_ == -1) return;
  notifier_.reset();
  ::pthread_sigmask(SIG_SETMASK, &formerMask_, nullptr);
  ::close(fd_);
}

void UnixSignals::OnStopSignal(std::function<void()> call) {
  *onStop_ = std::move(call);
}

void UnixSignals::ReadSignals() {
  signalfd_siginfo info{};
  while (::read(fd_, &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
    loop_.Post([held = std::weak_ptr(onStop_)] {
      const auto onStop = held.lock();
      if (!onStop) return;
      if (const auto call = *onStop) call();
    });
  }
}

}  // namespace tarvolt
