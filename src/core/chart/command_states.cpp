// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/command_states.h"

namespace tarvolt {
namespace {

// Of a run that has one sample there is nothing to save. A log that lies in its backup may have left the store empty.
bool HasLog(const ChartWindow& window) {
  const LogKeeping& keeping = window.save.keeping;
  if (keeping.LoadedFromFile) return window.chart.Count() > 0;
  return keeping.BackupAlone() || window.chart.Count() > 1;
}

// A run describes itself as soon as a log of it is a file; a mini window shows too little of it. One that has ended
// does so even if it brought no sample.
bool HasInfo(const ChartWindow& window) {
  if (window.run.ChartRunning()) return window.save.LogSaved && !window.save.keeping.Mini;
  const bool hasChart = window.chart.Count() > 0 || window.save.keeping.LoadedFromFile;
  return window.AtRest() && (hasChart || window.run.StartStamp > 0);
}

// While a start waits for its source the command ends the wait, but Escape alone ends that for sound.
bool CanStartOrStop(const ChartWindow& window) {
  const SaveState& save = window.save;
  return !window.IsReview() && !window.run.Stopping() && !window.sound.Awaited && !save.Loading && !save.ViewSaveActive;
}

}  // namespace

CommandStates StatesOf(const ChartWindow& window) {
  const RunState& run = window.run;
  const bool samplesStay = window.AtRest() && !window.save.ViewSaveActive;
  const bool hasLog = samplesStay && HasLog(window);
  CommandStates states;
  states.StartCaption = run.ChartRunning() ? "&Stop Chart" : "&Start Chart";
  states.StartMenuCaption = run.ChartRunning() || run.Starting() ? "Stop Chart" : "Start New Chart";
  states.cmdStart = CanStartOrStop(window);
  states.ModeMenus = run.phase == RunPhase::Idle && !window.IsReview();
  states.mnuSave = run.ChartRunning() ? !run.MaxingOut() && run.Dcount > 0 : hasLog;
  states.SaveView = hasLog && window.chart.Count() > 0;
  states.LoadCommands = samplesStay && window.Mode != SessionMode::Client;
  states.InfoCommands = HasInfo(window);
  states.OffsetCommand = run.ChartRunning();
  states.ToolCommands = hasLog && window.chart.Count() > 0;
  states.ArrowsActive = !run.ChartRunning() || window.chart.Mode != ChartMode::Tracking;
  states.AutoScrollTip =
      window.chart.AutoScroll ? "Auto-Scroll Enabled - Click to Disable" : "Auto-Scroll Disabled - Click to Enable";
  states.AutoScaleTip =
      window.chart.AutoScale ? "Auto-Scale Enabled - Click to Disable" : "Auto-Scale Disabled - Click to Enable";
  return states;
}

}  // namespace tarvolt
