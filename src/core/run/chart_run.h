// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "core/run/displayed_chart.h"
#include "core/run/recorder.h"

namespace tarvolt {

/// One stretch of recording, from StartChart to StopChart, and the turning over of its logs in between.
class ChartRun {
 public:
  /// Works on the parts of `recorder`, which outlives it.
  explicit ChartRun(Recorder& recorder);

  /// Checks, readies the sources and arms the run. `profile` may be empty. A refusal is reported and leaves the program
  /// idle. Does nothing while a run goes on or is being started, or a file is being loaded. Yields while the data
  /// source connects.
  void StartChart(const std::string& profile);

  /// Ends the run, closes its source and saves. Does nothing without a run. Yields only in a question to a person.
  void StopChart();

  /// Turns the log over: saves it when that is wanted and starts a new one, or ends the run.
  void MaxedOut(MaxedOutMode mode);

  /// Logs how many samples a clock that stood or went back has cost since this was reported last.
  void TellDropped();

  /// At rest: takes the base of log time from the settings and the clock, as at the start of a log.
  void TakeTimeBase();

  /// At rest: takes only what turns the clock into log time, and leaves the chart on display its own base.
  void TakeClockOffset();

  /// The log begins at this moment and not at that of the start: its first stamp, its axis and its end.
  void BeginLogNow();

 private:
  // The start, step by step (chart_start.cpp).
  bool RunTheStart(const std::string& profile);
  void LoadRunProfile(const std::string& profile);
  void ResetRunState();
  bool ReadyDataFolders();
  void CreateDataFolder();
  bool CheckSources();
  void FindSoundCard();
  bool MakeRoom();
  bool IsStillWanted();
  void ShowModeStatus();
  void ClearForNewRun();
  void BuildMetadata();
  void CopyOffsets();
  void ZeroCounters();
  bool CheckTiming();
  void PrepareChart();
  void AddInputMetadata();
  void BeginTracking();
  void LogChartStarted();
  void TakeNotesAndHeader();
  bool ConnectSources();
  void FollowChangedRows();
  void ShowStarted();
  bool Refuse(const std::string& text);

  // What is settled for each log (log_begin.cpp).
  enum class LogStart { First, FirstBuffer, Further };
  void SettleLog(LogStart start);
  void TakeTimeBase(const LogPlan& base, double ago);
  void TakeClockOffset(const LogPlan& base);
  void DetectZone();
  void SetTimeOrigin(LogStart start);
  void PlanNextRestart();
  double SoundWaiting() const;

  void Abort();

  // The turnover (chart_turnover.cpp).
  bool TurnOver(MaxedOutMode mode);
  bool TurnoverSaves(MaxedOutMode mode) const;
  bool GoesOn(MaxedOutMode mode) const;
  void StopLogging();
  void StartNextLog();
  void RestartChart();

  // The stop (chart_stop.cpp).
  void StopTimers();
  bool HasData() const;
  void TestDcount();
  void MarkDataForSaving();
  void LogRate();
  void ShowEnded();
  void AskToKeepOffsets();
  void SaveAtStop();

  Recorder& recorder_;
  Session& session_;
  ChartWindow& window_;
  RunState& run_;
  WindowState& view_;
  std::optional<DisplayedChart> displayed_;  ///< the chart before the start that is under way
};

}  // namespace tarvolt
