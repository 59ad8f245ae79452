// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "platform/machine.h"

namespace tarvolt {
namespace {

using EventLoopContract = Contract;
INSTANTIATE_CONTRACT(EventLoopContract);

TEST_P(EventLoopContract, PostedCallsRunInOrderAtALaterTurn) {
  std::string order;
  host_.loop.Post([&] {
    host_.loop.Post([&] { order += 'c'; });
    order += 'a';
  });
  host_.loop.Post([&] { order += 'b'; });
  EXPECT_EQ(order, "");
  host_.loop.Yield();
  EXPECT_EQ(order, "ab");
  host_.loop.Yield();
  EXPECT_EQ(order, "abc");
}

TEST_P(EventLoopContract, YieldReturnsWhenItsTimeIsOver) {
  const double start = Now();
  host_.loop.Yield(std::chrono::milliseconds(0));
  RunFor(30);
  EXPECT_GE(Now() - start, 30);
}

TEST_P(EventLoopContract, TheOuterYieldReturnsAfterANestedOneHasTakenItsEvent) {
  bool outer = false;
  bool inner = false;
  host_.loop.Post([&] {
    host_.loop.Post([&] { inner = true; });
    EXPECT_TRUE(WaitFor([&] { return inner; }));
    outer = true;
  });
  EXPECT_TRUE(WaitFor([&] { return outer; }));
}

TEST_P(EventLoopContract, ATickThatYieldsIsNotEnteredAgainNorMadeUpForAndOthersGoOn) {
  int depth = 0;
  int ticks = 0;
  int others = 0;
  const auto other = host_.loop.MakeTimer([&] { ++others; });
  other->SetInterval(2);
  other->SetEnabled(true);
  const auto timer = host_.loop.MakeTimer([&] {
    EXPECT_EQ(depth++, 0);
    if (++ticks == 1) {
      EXPECT_TRUE(WaitFor([&, before = others] { return others >= before + 3; }));
      RunFor(60);
      EXPECT_EQ(ticks, 1);
    }
    --depth;
  });
  timer->SetInterval(3);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks >= 1; }));
  EXPECT_LE(ticks, 2);
  EXPECT_TRUE(WaitFor([&] { return ticks >= 4; }));
}

TEST_P(EventLoopContract, ATickThatRestartsItsTimerIsStillNotEnteredAgain) {
  int depth = 0;
  int ticks = 0;
  std::unique_ptr<Timer> timer = host_.loop.MakeTimer([&] {
    EXPECT_EQ(depth++, 0);
    ++ticks;
    timer->SetEnabled(false);
    timer->SetInterval(3);
    timer->SetEnabled(true);
    RunFor(20);
    --depth;
  });
  EXPECT_FALSE(timer->Enabled());
  timer->SetInterval(0);
  EXPECT_EQ(timer->Interval(), 1);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks >= 3; }));
}

TEST_P(EventLoopContract, AChangeOfATimerStartsItsPeriodAnewAndADisabledOneStaysSilent) {
  double ticked = 0;
  const auto timer = host_.loop.MakeTimer([&] { ticked = Now(); });
  timer->SetInterval(50);
  timer->SetEnabled(true);
  RunFor(30);
  const double changed = Now();
  timer->SetInterval(50);
  EXPECT_TRUE(WaitFor([&] { return ticked > 0; }));
  EXPECT_GE(ticked - changed, 49);
  timer->SetInterval(1);
  timer->SetEnabled(false);
  ticked = 0;
  RunFor(20);
  EXPECT_EQ(ticked, 0);
}

TEST_P(EventLoopContract, ATickMayDestroyItsTimerAndYieldAfterwards) {
  bool marker = false;
  bool ended = false;
  int ticks = 0;
  std::unique_ptr<Timer> timer = host_.loop.MakeTimer([&, big = std::string(1000, 'x')] {
    ++ticks;
    timer.reset();
    host_.loop.Post([&] { marker = true; });
    EXPECT_TRUE(WaitFor([&] { return marker; }));
    EXPECT_EQ(big.size(), 1000u);
    ended = true;
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ended; }));
  RunFor(20);
  EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace tarvolt
