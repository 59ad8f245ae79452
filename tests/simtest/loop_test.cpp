#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "sim/sim_clock.h"
#include "sim/sim_loop.h"
#include "timebase/time_base.h"

using namespace std::chrono_literals;

namespace tarvolt {
namespace {

struct Machine {
  SimClock clock{{2010, 1, 2, 12, 0, 0, 250}};
  SimLoop loop{clock};
};

TEST(SimLoop, RunsEventsByTimeAndThenInTheOrderTheyWereAskedFor) {
  Machine machine;
  std::string order;
  machine.loop.After(20ms, [&] { order += 'd'; });
  machine.loop.After(10ms, [&] { order += 'b'; });
  machine.loop.After(10ms, [&] { order += 'c'; });
  machine.loop.Post([&] { order += 'a'; });
  machine.loop.RunFor(20ms);
  EXPECT_EQ(order, "abcd");
  EXPECT_EQ(machine.loop.Now(), 20);
}

TEST(SimLoop, YieldSleepsUntilTheNextEventAndNoLongerThanAsked) {
  Machine machine;
  bool rang = false;
  machine.loop.After(50ms, [&] { rang = true; });
  machine.loop.Yield(20ms);
  EXPECT_FALSE(rang);
  EXPECT_EQ(machine.loop.Now(), 20);
  machine.loop.Yield();
  EXPECT_TRUE(rang);
  EXPECT_EQ(machine.loop.Now(), 50);
  machine.loop.Yield(5ms);
  EXPECT_EQ(machine.loop.Now(), 55) << "with nothing pending a bounded wait lasts its whole time";
}

TEST(SimLoop, WhatIsPostedInATurnWaitsForALaterOne) {
  Machine machine;
  std::string order;
  machine.loop.Post([&] {
    machine.loop.Post([&] { order += 'c'; });
    order += 'a';
  });
  machine.loop.Post([&] { order += 'b'; });
  machine.loop.Yield();
  EXPECT_EQ(order, "ab");
  machine.loop.Yield();
  EXPECT_EQ(order, "abc");
}

TEST(SimLoop, ATickThatYieldsIsNotEnteredAgainAndItsMissedTicksAreNotQueued) {
  Machine machine;
  int depth = 0;
  std::vector<std::int64_t> ticks;
  int others = 0;
  auto other = machine.loop.MakeTimer([&] { ++others; });
  other->SetInterval(10);
  auto timer = machine.loop.MakeTimer([&] {
    EXPECT_EQ(depth++, 0);
    ticks.push_back(machine.loop.Now());
    const std::int64_t until = machine.loop.Now() + 35;
    while (machine.loop.Now() < until) machine.loop.Yield(std::chrono::milliseconds(until - machine.loop.Now()));
    --depth;
  });
  timer->SetInterval(10);
  timer->SetEnabled(true);
  other->SetEnabled(true);
  machine.loop.RunFor(100ms);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{10, 50, 90})) << "the cadence of tens is kept";
  EXPECT_GE(others, 9) << "other timers go on inside the nested yields";
}

TEST(SimLoop, AChangeOfATimerStartsItsPeriodAnew) {
  Machine machine;
  std::vector<std::int64_t> ticks;
  auto timer = machine.loop.MakeTimer([&] { ticks.push_back(machine.loop.Now()); });
  timer->SetInterval(100);
  EXPECT_FALSE(timer->Enabled());
  timer->SetEnabled(true);
  machine.loop.RunFor(60ms);
  timer->SetInterval(100);  // later than the period it replaces
  machine.loop.RunFor(50ms);
  EXPECT_TRUE(ticks.empty());
  timer->SetInterval(10);  // earlier
  machine.loop.RunFor(25ms);
  timer->SetEnabled(false);
  machine.loop.RunFor(100ms);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{120, 130}));
}

TEST(SimLoop, ATimerMayDestroyItselfAndAnother) {
  Machine machine;
  int ticks = 0;
  auto another = machine.loop.MakeTimer([&] { ticks += 100; });
  std::unique_ptr<Timer> timer;
  timer = machine.loop.MakeTimer([&, kept = std::string(100, 'k')] {
    timer.reset();
    another.reset();
    auto inOldPlace = machine.loop.MakeTimer([&] { ticks += 1000; });
    inOldPlace->SetEnabled(true);
    ticks += static_cast<int>(kept.size()) / 100;
  });
  timer->SetInterval(10);
  another->SetInterval(10);
  timer->SetEnabled(true);
  another->SetEnabled(true);
  machine.loop.RunFor(100ms);
  EXPECT_EQ(ticks, 1);
}

TEST(SimLoop, AWaitThatCannotEndIsTold) {
  Machine machine;
  EXPECT_THROW(machine.loop.Yield(), std::logic_error);

  auto timer = machine.loop.MakeTimer([&] { machine.loop.Yield(); });  // only its own tick could end the wait
  timer->SetEnabled(true);
  EXPECT_THROW(machine.loop.Yield(), std::logic_error);
  timer.reset();

  std::function<void()> again = [&] { machine.loop.Post(again); };
  machine.loop.Post(again);
  EXPECT_THROW(machine.loop.RunFor(1ms), std::logic_error);
}

TEST(SimLoop, ADeadProgramsEventsAreGoneAndTheWorldGoesOn) {
  Machine machine;
  std::string ran;
  auto ofProgram = machine.loop.MakeTimer([&] { ran += 'p'; });
  auto ofWorld = machine.loop.MakeWorldTimer([&] { ran += 'w'; });
  ofProgram->SetInterval(10);
  ofWorld->SetInterval(10);
  ofProgram->SetEnabled(true);
  ofWorld->SetEnabled(true);
  machine.loop.After(5ms, [&] { ran += 'a'; });
  // What a posted call holds may itself use the loop when it is dropped.
  std::shared_ptr<int> held(new int, [&](const int* number) {
    delete number;
    machine.loop.Post([&] { ran += 'l'; });
  });
  machine.loop.Post([&, held = std::exchange(held, nullptr)] { ran += 'c'; });
  machine.loop.ForgetProcess();
  machine.loop.ForgetProcess();
  machine.loop.RunFor(10ms);
  EXPECT_EQ(ran, "aw");
}

TEST(SimLoop, AnExceptionOutOfATickLeavesTheLoopUsable) {
  Machine machine;
  int ticks = 0;
  auto timer = machine.loop.MakeTimer([&] {
    if (++ticks == 1) throw std::runtime_error("once");
  });
  timer->SetInterval(10);
  timer->SetEnabled(true);
  EXPECT_THROW(machine.loop.RunFor(30ms), std::runtime_error);
  machine.loop.RunFor(20ms);
  EXPECT_EQ(ticks, 3);
}

TEST(SimLoop, AWatchdogRestartedWithEverySampleCostsNothing) {
  Machine machine;
  std::int64_t samples = 0;
  bool barked = false;
  auto watchdog = machine.loop.MakeTimer([&] { barked = true; });
  watchdog->SetInterval(240'000);
  auto sampler = machine.loop.MakeTimer([&] {
    ++samples;
    watchdog->SetEnabled(true);
  });
  sampler->SetInterval(10);
  sampler->SetEnabled(true);
  machine.loop.RunFor(10'000s);
  EXPECT_EQ(samples, 1'000'000);
  EXPECT_FALSE(barked);
  sampler->SetEnabled(false);
  machine.loop.RunFor(240s);
  EXPECT_TRUE(barked);
}

TEST(SimClock, AReaderWhoSpinsSeesTimePassAndOthersDoNot) {
  Machine machine;
  for (int reading = 0; reading < SimClock::kReadsBeforeSpin; ++reading) machine.clock.LocalNow();
  EXPECT_EQ(machine.clock.Now(), 0);
  machine.loop.Yield(1ms);
  machine.clock.LocalNow();
  EXPECT_EQ(machine.clock.Now(), 1) << "a turn of the loop makes the next reading free again";

  bool due = false;
  machine.loop.After(100ms, [&] { due = true; });
  WaitForSecondBoundary(machine.clock);
  EXPECT_EQ(machine.clock.UtNow().millisecond, 0);
  EXPECT_EQ(machine.clock.UtNow().second, 1);
  EXPECT_FALSE(due) << "a spin runs no events";
  machine.loop.Yield();
  EXPECT_TRUE(due);
}

TEST(SimClock, TheWallClockStepsAndTheMonotonicOneDoesNot) {
  Machine machine;
  machine.loop.RunFor(750ms);
  machine.clock.StepWall(-90s);
  const WallTime now = machine.clock.LocalNow();
  EXPECT_EQ(now.hour, 11);
  EXPECT_EQ(now.minute, 58);
  EXPECT_EQ(now.second, 31);
  EXPECT_EQ(now.millisecond, 0);
  EXPECT_EQ(machine.clock.MonotonicMilliseconds(), 750);
}

TEST(SimClock, LocalTimeFollowsTheZoneAcrossAChangeOver) {
  SimClock clock({2010, 3, 14, 9, 59, 59, 999});
  EXPECT_EQ(clock.Zone().state, ZoneState::NoDaylightInformation);
  SimZone pacific;
  pacific.biasMinutes = 480;
  pacific.changes = {{{2010, 3, 14, 10, 0, 0, 0}, true}, {{2010, 11, 7, 9, 0, 0, 0}, false}};
  clock.SetZone(pacific);
  EXPECT_EQ(clock.Zone().state, ZoneState::Standard);
  EXPECT_EQ(clock.LocalNow().hour, 1);
  EXPECT_EQ(DetectTimeZoneHours(clock), -8);
  clock.AdvanceTo(1);
  EXPECT_EQ(clock.Zone().state, ZoneState::Daylight);
  EXPECT_EQ(clock.LocalNow().hour, 3);
  EXPECT_EQ(DetectTimeZoneHours(clock), -7);
  clock.StepWall(std::chrono::days(270));
  EXPECT_EQ(clock.Zone().state, ZoneState::Standard);
  EXPECT_EQ(clock.LocalNow().month, 12);
}

}  // namespace
}  // namespace tarvolt
