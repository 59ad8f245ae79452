// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

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

}  // namespace
}  // namespace tarvolt
