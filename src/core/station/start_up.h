// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/run/chart_run.h"
#include "core/run/recorder.h"

namespace tarvolt {

/// What stands between the making of the main window and its readiness: settings, first use, sound card, priority and
/// recovery, in their order.
class StartUp {
 public:
  /// Works on the parts of `recorder`; both outlive it.
  StartUp(Recorder& recorder, ChartRun& chartRun);

  /// Never stops for a bad setting: a step that fails is logged, and written to LoadErr.txt, and costs itself alone.
  /// False only when a person has cancelled the first use; the program is then to end without a shutdown. May yield.
  bool Run();

 private:
  void RunStep(void (StartUp::*step)());
  void StoreProgramIdentity();
  void TakeFirstUse();
  void LoadSettings();
  void FindSoundCard();
  void LoadTriggers();
  void CheckZone();
  void ApplyPriority();
  void NameLog();
  void CheckIdentity();
  void TakeNotes();
  void AlertAboutBackups();
  void ReadRecentLists();
  void WriteLoadError(const std::string& text);

  Recorder& recorder_;
  ChartRun& chartRun_;
  Session& session_;
  bool cancelled_ = false;
};

}  // namespace tarvolt
