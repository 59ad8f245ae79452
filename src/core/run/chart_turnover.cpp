// SPDX-License-Identifier: GPL-3.0-or-later
#include <exception>

#include "core/run/chart_run.h"
#include "files/naming.h"
#include "files/saving.h"
#include "sources/sound/sound_gaps.h"

namespace tarvolt {

// What fails beyond its own words, as memory does, ends the run: its stop saves or keeps what there is.
void ChartRun::MaxedOut(MaxedOutMode mode) {
  run_.phase = RunPhase::TurningOver;
  bool goesOn = false;
  try {
    goesOn = TurnOver(mode);
  } catch (const std::exception& error) {
    session_.Add2SLog(std::string("The log could not be turned over: ") + error.what());
  }
  if (!goesOn) StopLogging();
}

// False when the run is to end.
bool ChartRun::TurnOver(MaxedOutMode mode) {
  recorder_.offsets.NoteHeld();
  if (window_.chart.AutoScale) window_.chart.ScaleYToData();
  recorder_.LoTime1->SetEnabled(false);
  if (window_.chart.Count() > 0) run_.EndStamp = window_.chart.GetTime(window_.LastSampleIndex());
  recorder_.events.LogEnded(LogEnd::TurnedOver);
  std::filesystem::path name = NameDataFile(session_, window_, NameKind::Data, true);
  if (name == kBadFile) {
    session_.Add2SLog(" Could Not Save File..No Data. ");
    return false;
  }
  name = NameOfOwn(session_, window_, name);
  SaveOutcome outcome = SaveOutcome::NotWanted;
  if (TurnoverSaves(mode) && (run_.ForceSave || SaveIfAtTurnover(window_))) {
    outcome = SaveDataFile(session_, window_, name, false);
  }
  if (!GoesOn(mode)) return false;
  if (outcome == SaveOutcome::Failed && !recorder_.unsaved.SetAside(name)) {
    session_.Add2SLog("Too many logs wait for room on the disk.");
    return false;
  }
  StartNextLog();
  return true;
}

// A log of which memory keeps the last stretch alone, and no backup the rest, is no log to save but by hand.
bool ChartRun::TurnoverSaves(MaxedOutMode mode) const {
  if (run_.ForceSave) return true;
  const bool restartDue = mode == MaxedOutMode::PlannedRestart && run_.log.UseRestartTime;
  return window_.save.keeping.IsKept() && run_.log.AutoSave && (restartDue || run_.log.Continuous);
}

bool ChartRun::GoesOn(MaxedOutMode mode) const {
  if (run_.ForceSave) return true;
  if (mode == MaxedOutMode::LimitReached) return run_.log.Continuous;
  return run_.log.UseRestartTime && !run_.log.TimeRefZero;
}

void ChartRun::StopLogging() {
  StopChart();
  view_.Title += "  Logging Stopped.";
}

void ChartRun::StartNextLog() {
  view_.Title = " New Data Log Started at " + recorder_.LocalTimeText();
  window_.chart.ClearData();
  window_.notations = Notations{};  // they stand in the file of the log that has ended
  window_.header.start = 0;
  window_.header.end = 0;
  run_.Dcount = 0;
  run_.TotalSamples = 0;
  run_.StoreStart = 0;
  run_.LetGo = MinMax{};
  RestartChart();
  recorder_.LoTime1->SetEnabled(run_.plan.pacer == Pacer::Timer);
  run_.phase = RunPhase::Running;
}

// The beginning of a further log of the same run.
void ChartRun::RestartChart() {
  recorder_.commands.look.UnloadMyInfoFile();
  run_.DataNeedsSave = false;
  window_.save.SavedAs.clear();
  recorder_.commands.view.CloseChartViews();
  window_.chart.Mode = ChartMode::Tracking;
  window_.chart.TimeMarker.reset();
  window_.chart.CursorChannel = -1;
  run_.LastDcount = 0;
  // A log's stamps rise by themselves: a sidereal day, or the midnight of TimeRefZero, may begin again with it.
  run_.LastStamp = 0;
  run_.StepBack = 0;
  SettleLog(LogStart::Further);
  LogChartStarted();
  if (run_.log.MetaDataActive) {
    BuildMetadata();
    AddInputMetadata();
    AddSoundGaps(window_);
  }
  recorder_.events.LogBegan();
}

}  // namespace tarvolt
