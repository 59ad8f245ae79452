// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <string>

#include "automation/triggers/trigger_outputs.h"
#include "automation/triggers/trigger_slots.h"
#include "model/chart_window.h"
#include "model/run_listener.h"
#include "model/session.h"
#include "text/result.h"

namespace tarvolt {

/// The triggers of a window: their files, their part in a run, and what they do when they fire.
class TriggerRun final : public RunListener {
 public:
  /// Both outlive it. All triggers have their defaults until a file is loaded.
  TriggerRun(Session& session, ChartWindow& window);

  /// Gives the triggers the outputs that they drive, which outlive it. Without them such an action is reported in the
  /// session log instead.
  void UseOutputs(TriggerOutputs& outputs) { outputs_ = &outputs; }

  const Triggers& oTriggers() const { return triggers_; }

  /// Loads a trigger file and remembers it in DefaultTriggerFile as the file in use. A trigger that the file changes
  /// begins anew; the others go on as they are. Fails, with nothing changed, when the file cannot be read or holds no
  /// trigger.
  Outcome LoadTriggers(const std::filesystem::path& path);

  /// Loads the file of DefaultTriggerFile when the setting has changed since it was last looked at. One that is not
  /// there leaves the triggers as they are. A run goes on with its own: the next start follows the setting.
  void FollowSetting();

  /// What a trigger file holds, for a person to look at. Fails as above.
  Result<TriggerDefinitions> ReadTriggers(const std::filesystem::path& path);

  /// Writes triggers to a file, which loading them back gives again.
  Outcome SaveoTriggers(const TriggerDefinitions& triggers, const std::filesystem::path& path);

  /// What the dialog has settled: the triggers go by way of TempTriggers.ini, which is in use from then on, the
  /// channels into the settings and into the run that is going on. Fails, with nothing changed, when the disk refuses.
  Outcome TakeOver(const TriggerDefinitions& triggers, const TriggerChannels& channels);

  /// The start of a chart: the devices that the triggers in use name are opened. What is missing is reported.
  void OpenDevices();

  /// The start of a chart: all triggers are armed and enabled.
  void ResetForRun();

  /// The end of a chart, or of its start: all triggers are off.
  void RunEnded() override;

  /// Offers each channel's raw value to the triggers that watch it: an offset moved on the chart moves no threshold. A
  /// sample that is in no log fires nothing.
  void SampleFinished(const FinishedSample& sample) override;

  /// Does what a trigger says: its action, then its notes. `channel` is the one that fired it. Waits for nothing, and
  /// what fails is logged; an output that stays as it was reported in this run is not reported again. A slot
  /// outside 0 to 9 does nothing.
  void ExecuteTrigger(int slot, int channel);

 private:
  void TestTriggers(int channel, double value);
  void TakeDefinitions(const TriggerDefinitions& definitions);
  bool RememberFile(const std::filesystem::path& path);
  void StoreSettings();
  void DoAction(int slot);
  void Execute(int slot);
  Outcome Drive(const TriggerDefinition& trigger);
  Outcome DriveLpt(const TriggerDefinition& trigger);
  Outcome DriveU3(const TriggerDefinition& trigger);
  Outcome DriveU12(const TriggerDefinition& trigger);
  void DoNotes(int slot, int channel);
  bool EnterInObLog(const std::string& note);
  void ShowInStatusBar(const std::string& note);
  std::string Expand(const std::string& text) const;

  Session& session_;
  ChartWindow& window_;
  Triggers triggers_;
  TriggerOutputs* outputs_ = nullptr;
  std::string lookedAt_;                         // DefaultTriggerFile, when it was last followed
  std::array<std::string, kTriggerSlots> told_;  // what is wrong with its output, as it was reported in this run
  std::array<double, 2> u12Levels_{};
};

}  // namespace tarvolt
