#include "core/chart_run.h"
#include "files/naming.h"
#include "files/saving.h"
#include "sources/sound/sound_gaps.h"

namespace tarvolt {

void ChartRun::MaxedOut(MaxedOutMode mode) {
  run_.MaxingOut = true;
  if (window_.chart.AutoScale) window_.chart.ScaleYToData();
  const bool timerWasOn = HoldTimer();
  if (window_.chart.Count() > 0) run_.EndStamp = window_.chart.GetTime(window_.LastSampleIndex());
  std::filesystem::path name = NameDataFile(session_, window_, NameKind::Data, true);
  if (name == kBadFile) {
    session_.Add2SLog(" Could Not Save File..No Data. ");
    StopLogging();
    return;
  }
  name = NameOfOwn(session_, window_, name);
  SaveOutcome outcome = SaveOutcome::NotWanted;
  if (TurnoverSaves(mode) && (run_.ForceSave || SaveIfAtTurnover(session_.settings, window_.chart))) {
    outcome = SaveDataFile(session_, window_, name, false);
  }
  if (!GoesOn(mode)) {
    StopLogging();
    return;
  }
  if (outcome == SaveOutcome::Failed && !recorder_.pending.SetAside(window_, name)) {
    session_.Add2SLog("Too many logs wait for room on the disk.");
    StopLogging();
    return;
  }
  StartNextLog(timerWasOn);
}

bool ChartRun::HoldTimer() {
  const bool wasOn = recorder_.LoTime1->Enabled();
  if (run_.TimerType != kSoundTimer) recorder_.LoTime1->SetEnabled(false);
  return wasOn;
}

bool ChartRun::TurnoverSaves(MaxedOutMode mode) const {
  const Settings& settings = session_.settings;
  const bool autosave = window_.Mode == SessionMode::Client ? settings.AutoSaveClient : settings.AutoSaveStandAlone;
  const bool restartDue = mode == MaxedOutMode::PlannedRestart && settings.UseRestartTime;
  return run_.ForceSave || (autosave && (restartDue || settings.Continuous));
}

bool ChartRun::GoesOn(MaxedOutMode mode) const {
  if (run_.ForceSave) return true;
  if (mode == MaxedOutMode::LimitReached) return session_.settings.Continuous;
  return session_.settings.UseRestartTime && !run_.TimeRefZero;
}

// MaxingOut stays set on this path; the next start is not hindered by it.
void ChartRun::StopLogging() {
  StopChart();
  view_.Title += "  Logging Stopped.";
}

void ChartRun::StartNextLog(bool timerWasOn) {
  view_.Title = " New Data Log Started at " + recorder_.LocalTimeText();
  window_.chart.ClearData();
  window_.chart.SetCapacity(session_.settings.MaxArrayCount);
  window_.notations = Notations{};  // they stand in the file of the log that has ended
  window_.header.start = 0;
  window_.header.end = 0;
  run_.Dcount = 0;
  run_.TotalSamples = 0;
  run_.StoreStart = 0;
  window_.chart.XAxisMin = run_.CurrentStamp;
  window_.chart.XAxisMax = run_.CurrentStamp + session_.settings.ChartWidth / 86400;
  RestartChart();
  recorder_.backup.InitLocalBU();
  if (run_.TimerType != kSoundTimer) {
    recorder_.LoTime1->SetEnabled(PushReplacesSound() ? timerWasOn : true);
  }
  run_.MaxingOut = false;
}

// The beginning of a further log of the same run.
void ChartRun::RestartChart() {
  recorder_.commands.UnloadMyInfoFile();
  run_.DataNeedsSave = false;
  window_.save.SavedAs.clear();
  recorder_.commands.CloseChartViews();
  window_.chart.Mode = ChartMode::Tracking;
  window_.chart.TimeMarker.reset();
  window_.chart.CursorChannel = -1;
  run_.LastDcount = 0;
  // A log's stamps rise by themselves: a sidereal day, or the midnight of TimeRefZero, may begin again with it.
  run_.LastStamp = 0;
  run_.StepBack = 0;
  LogChartStarted();
  SetTimeOrigin(false);
  TakeKeepingOfLog();
  PlanNextRestart();
  if (session_.settings.MetaDataActive) {
    BuildMetadata();
    if (NeedsSound() && !PushReplacesSound()) AddSoundMetadata();
    AddTimingMetadata();
    AddSoundGaps(window_);
  }
  run_.ChartRunning = true;
  run_.ChartStopped = false;
}

}  // namespace tarvolt
