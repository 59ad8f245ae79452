// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/unix_signals.h"

#include <unistd.h>

#include <cerrno>

#include "host/qt_event_loop.h"
#include "waiting.h"

namespace tarvolt {
namespace {

bool EndsTheProgram(int number) {
  struct sigaction action {};
  return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_DFL;
}

TEST(UnixSignals, StopSignalsAreEventsAlsoWhileTheFirstIsStillAtWork) {
  QtEventLoop loop(*QCoreApplication::instance());
  {
    UnixSignals stops(loop);
    int calls = 0;
    bool ended = false;
    ASSERT_EQ(::kill(::getpid(), SIGHUP), 0);  // nobody listens yet
    RunFor(loop, std::chrono::milliseconds(10));
    stops.OnStopSignal([&] {
      if (++calls != 1) return;
      ::kill(::getpid(), SIGTERM);
      EXPECT_TRUE(WaitFor(loop, [&] { return calls == 2; }));
      ended = true;
    });
    ASSERT_EQ(::kill(::getpid(), SIGINT), 0);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(WaitFor(loop, [&] { return ended; }));
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(EndsTheProgram(SIGTERM));
  }
  EXPECT_TRUE(EndsTheProgram(SIGTERM));
}

TEST(UnixSignals, ABrokenPipeIsAFailedWrite) {
  QtEventLoop loop(*QCoreApplication::instance());
  const UnixSignals stops(loop);
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[0]);
  EXPECT_EQ(::write(ends[1], "x", 1), -1);
  EXPECT_EQ(errno, EPIPE);
  ::close(ends[1]);
}

TEST(UnixSignals, LeavesAProgramThatShallOutliveItsTerminalAlone) {
  QtEventLoop loop(*QCoreApplication::instance());
  std::signal(SIGHUP, SIG_IGN);
  {
    UnixSignals stops(loop);
    bool told = false;
    stops.OnStopSignal([&] { told = true; });
    ASSERT_EQ(::kill(::getpid(), SIGHUP), 0);
    RunFor(loop, std::chrono::milliseconds(20));
    EXPECT_FALSE(told);
  }
  std::signal(SIGHUP, SIG_DFL);
}

}  // namespace
}  // namespace tarvolt
