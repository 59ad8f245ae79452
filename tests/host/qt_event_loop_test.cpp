// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <ctime>
#include <thread>
#include <utility>

#include "waiting.h"

namespace tarvolt {
namespace {

using std::chrono::milliseconds;

class QtEventLoopTest : public testing::Test {
 protected:
  QtEventLoop loop_{*QCoreApplication::instance()};
};

TEST_F(QtEventLoopTest, SleepingTakesNoProcessorTime) {
  const std::clock_t before = std::clock();
  RunFor(loop_, milliseconds(400));
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 5);
}

TEST_F(QtEventLoopTest, ACallPostedByAnotherThreadEndsTheSleep) {
  for (int i = 0; i < 200; ++i) {
    bool ran = false;
    std::thread other([&] { loop_.Post([&] { ran = true; }); });
    EXPECT_TRUE(WaitFor(loop_, [&] { return ran; })) << i;
    other.join();
  }
}

TEST_F(QtEventLoopTest, AnEventThatArrivesOnTheWayToSleepEndsTheSleep) {
  QObject context;
  int awakenings = 0;
  bool posted = false;
  bool inner = false;
  bool ran = false;
  const auto post = [&] {
    if (std::exchange(posted, true)) return;
    loop_.Post([&] {
      loop_.Post([&] { inner = true; });
      EXPECT_TRUE(WaitFor(loop_, [&] { return inner; }));  // takes the mark that would have kept the outer one awake
      ran = true;
    });
  };
  auto* dispatcher = QAbstractEventDispatcher::instance();
  QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &context, post);
  QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &context, [&] {
    if (++awakenings == 2) post();  // the first look for events has found none; the next may sleep
  });
  EXPECT_TRUE(WaitFor(loop_, [&] { return ran; }));
}

TEST_F(QtEventLoopTest, SleepsInsideALoopOfQtsOwnThatAnEventHasOpened) {
  double taken = -1;
  bool nested = false;
  loop_.Post([&] {
    QEventLoop dialog;
    const auto answer = loop_.MakeTimer([&] { dialog.quit(); });
    answer->SetInterval(400);
    answer->SetEnabled(true);
    loop_.Post([&] { nested = true; });
    const std::clock_t before = std::clock();
    dialog.exec();
    taken = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
  });
  EXPECT_TRUE(WaitFor(loop_, [&] { return taken >= 0; }));
  EXPECT_TRUE(nested);
  EXPECT_LT(taken, 0.2);
}

TEST_F(QtEventLoopTest, ADeadLoopStaysSilent) {
  bool ran = false;
  {
    QtEventLoop other(*QCoreApplication::instance());
    other.Post([&] { ran = true; });
  }
  RunFor(loop_, milliseconds(20));
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace tarvolt
