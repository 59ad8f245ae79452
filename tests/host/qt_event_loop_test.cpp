#include "host/qt_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QProcess>
#include <QProcessEnvironment>
#include <ctime>
#include <thread>
#include <utility>

#include "waiting.h"

namespace tarvolt {
namespace {

using std::chrono::milliseconds;

class QtEventLoopTest : public testing::Test {
 protected:
  double Elapsed() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
  }

  QtEventLoop loop_{*QCoreApplication::instance()};
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

TEST_F(QtEventLoopTest, PostedCallsRunInOrderAtALaterTurn) {
  std::string order;
  loop_.Post([&] {
    order += 'a';
    loop_.Post([&] { order += 'c'; });
    order += 'A';
  });
  loop_.Post([&] { order += 'b'; });
  EXPECT_EQ(order, "");
  loop_.Yield();
  EXPECT_EQ(order, "aAb");
  loop_.Yield();
  EXPECT_EQ(order, "aAbc");
}

TEST_F(QtEventLoopTest, YieldReturnsWhenItsTimeIsOver) {
  loop_.Yield(milliseconds(0));
  RunFor(loop_, milliseconds(30));
  EXPECT_GE(Elapsed(), 30);
}

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

TEST_F(QtEventLoopTest, TheOuterYieldReturnsAfterANestedOneHasTakenItsEvent) {
  bool outer = false;
  bool inner = false;
  loop_.Post([&] {
    loop_.Post([&] { inner = true; });
    EXPECT_TRUE(WaitFor(loop_, [&] { return inner; }));
    outer = true;
  });
  EXPECT_TRUE(WaitFor(loop_, [&] { return outer; }));
}

TEST_F(QtEventLoopTest, AYieldInsideATimerSeesOtherTimersAndEndsWithTheOuterOne) {
  int fast = 0;
  bool done = false;
  const auto quick = loop_.MakeTimer([&] { ++fast; });
  quick->SetInterval(2);
  quick->SetEnabled(true);
  std::unique_ptr<Timer> slow = loop_.MakeTimer([&] {
    slow->SetEnabled(false);
    const int before = fast;
    EXPECT_TRUE(WaitFor(loop_, [&] { return fast >= before + 3; }));
    done = true;
  });
  slow->SetInterval(5);
  slow->SetEnabled(true);
  EXPECT_TRUE(WaitFor(loop_, [&] { return done; }));
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

TEST_F(QtEventLoopTest, ATickIsNotEnteredAgainWhileItYieldsAndIsNotMadeUpFor) {
  int depth = 0;
  int deepest = 0;
  int ticks = 0;
  const auto timer = loop_.MakeTimer([&] {
    deepest = std::max(deepest, ++depth);
    ++ticks;
    if (ticks == 1) {
      RunFor(loop_, milliseconds(60));
      EXPECT_EQ(ticks, 1);
    }
    --depth;
  });
  timer->SetInterval(2);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor(loop_, [&] { return ticks >= 1; }));
  EXPECT_LE(ticks, 2);
  EXPECT_TRUE(WaitFor(loop_, [&] { return ticks >= 4; }));
  EXPECT_EQ(deepest, 1);
}

TEST_F(QtEventLoopTest, ATickThatRestartsItsTimerIsStillNotEnteredAgain) {
  int depth = 0;
  int deepest = 0;
  int ticks = 0;
  std::unique_ptr<Timer> timer = loop_.MakeTimer([&] {
    deepest = std::max(deepest, ++depth);
    ++ticks;
    timer->SetEnabled(false);
    timer->SetInterval(3);
    timer->SetEnabled(true);
    RunFor(loop_, milliseconds(20));
    --depth;
  });
  EXPECT_FALSE(timer->Enabled());
  timer->SetInterval(0);
  EXPECT_EQ(timer->Interval(), 1);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor(loop_, [&] { return ticks >= 3; }));
  EXPECT_EQ(deepest, 1);
}

TEST_F(QtEventLoopTest, ATickMayDestroyItsTimerAndYieldAfterwards) {
  bool marker = false;
  bool ended = false;
  int ticks = 0;
  std::unique_ptr<Timer> timer = loop_.MakeTimer([&, big = std::string(1000, 'x')] {
    ++ticks;
    timer.reset();
    loop_.Post([&] { marker = true; });
    EXPECT_TRUE(WaitFor(loop_, [&] { return marker; }));
    EXPECT_EQ(big.size(), 1000u);
    ended = true;
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor(loop_, [&] { return ended; }));
  RunFor(loop_, milliseconds(20));
  EXPECT_EQ(ticks, 1);
}

TEST_F(QtEventLoopTest, ADisabledTimerAndADeadLoopStaySilent) {
  bool ran = false;
  const auto timer = loop_.MakeTimer([&] { ran = true; });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  timer->SetEnabled(false);
  {
    QtEventLoop other(*QCoreApplication::instance());
    other.Post([&] { ran = true; });
  }
  RunFor(loop_, milliseconds(20));
  EXPECT_FALSE(ran);
}

// Qt has two dispatchers on Linux, with and without GLib, and they sleep differently.
TEST(QtDispatchers, TheSameHoldsWithoutGLib) {
  QProcess tests;
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_NO_GLIB", "1");
  tests.setProcessEnvironment(environment);
  tests.setProcessChannelMode(QProcess::MergedChannels);
  tests.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=QtEventLoopTest.*:QtSocketTest.*"});
  ASSERT_TRUE(tests.waitForFinished(240'000));
  EXPECT_EQ(tests.exitStatus(), QProcess::NormalExit);
  const std::string output = tests.readAll().toStdString();
  EXPECT_EQ(tests.exitCode(), 0) << output;
  EXPECT_NE(output.find("[  PASSED  ]"), std::string::npos) << output;
}

}  // namespace
}  // namespace tarvolt
