// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/command_states.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

// A window with a chart of three samples.
ChartWindow WindowIn(RunPhase phase) {
  ChartWindow window;
  window.chart.SetChannelCount(1);
  for (int i = 0; i < 3; ++i) window.chart.AddTime(40000.0 + i);
  window.run.Dcount = 3;
  window.run.phase = phase;
  return window;
}

bool TouchesSamples(const CommandStates& states) {
  return states.SaveView || states.LoadCommands || states.InfoCommands || states.ToolCommands;
}

TEST(CommandStates, NoPhaseOfARunLetsTheSamplesOrTheModeBeTouched) {
  EXPECT_TRUE(TouchesSamples(StatesOf(WindowIn(RunPhase::Idle))));
  for (const RunPhase phase :
       {RunPhase::Starting, RunPhase::Armed, RunPhase::Running, RunPhase::TurningOver, RunPhase::Stopping}) {
    const CommandStates states = StatesOf(WindowIn(phase));
    EXPECT_FALSE(TouchesSamples(states) || states.ModeMenus) << static_cast<int>(phase);
    EXPECT_EQ(states.mnuSave, phase == RunPhase::Armed || phase == RunPhase::Running) << static_cast<int>(phase);
    EXPECT_EQ(states.cmdStart, phase != RunPhase::Stopping) << static_cast<int>(phase);
  }
}

TEST(CommandStates, ASaveOfTheViewAndALoadHoldEverythingThatChangesTheChart) {
  for (bool SaveState::*const busy : {&SaveState::ViewSaveActive, &SaveState::Loading}) {
    ChartWindow window = WindowIn(RunPhase::Idle);
    window.save.*busy = true;
    const CommandStates states = StatesOf(window);
    EXPECT_FALSE(states.cmdStart || states.mnuSave || states.SaveView || states.LoadCommands || states.ToolCommands);
  }
}

}  // namespace
}  // namespace tarvolt
