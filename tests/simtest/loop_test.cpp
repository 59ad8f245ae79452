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
  machine.loop.Yield(5ms);
  EXPECT_EQ(machine.loop.Now(), 25) << "with nothing pending a bounded wait lasts its whole time";
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
  EXPECT_EQ(clock.MonotonicMilliseconds(), 1) << "it never steps";
}

}  // namespace
}  // namespace tarvolt
