#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "automation/triggers/trigger_outputs.h"
#include "automation/triggers/trigger_slots.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Which triggers watch which channels, as CHTrigger and ChTriggerEnabled have it.
struct TriggerChannels {
  std::array<std::string, kChannels> CHTrigger;
  std::array<bool, kChannels> ChTriggerEnabled{};
};

/// The triggers of a window: their files, their part in a run, and what they do when they fire.
class TriggerRun {
 public:
  /// Both outlive it. All triggers have their defaults until a file is loaded.
  TriggerRun(Session& session, ChartWindow& window);

  /// Gives the triggers the outputs that they drive, which outlive it. Without them such an action is told in the
  /// session log instead.
  void UseOutputs(TriggerOutputs& outputs) { outputs_ = &outputs; }

  const Triggers& oTriggers() const { return triggers_; }

  /// Loads a trigger file and remembers it in DefaultTriggerFile as the file in use. A trigger that the file changes
  /// begins anew; the others go on as they are. False, with `problem` in words and nothing changed, when the file
  /// cannot be read or holds no trigger.
  bool LoadTriggers(const std::filesystem::path& path, std::string& problem);

  /// Loads the file of DefaultTriggerFile when the setting has changed since it was last looked at. One that is not
  /// there leaves the triggers as they are.
  void FollowSetting();

  /// What a trigger file holds, for a person to look at; nothing, with `problem` in words, as above.
  std::optional<TriggerDefinitions> ReadTriggers(const std::filesystem::path& path, std::string& problem);

  /// Writes triggers to a file, which loading them back gives again. False with `problem` in words.
  bool SaveoTriggers(const TriggerDefinitions& triggers, const std::filesystem::path& path, std::string& problem);

  /// What the dialog has settled: the triggers go by way of TempTriggers.ini, which is in use from then on, the
  /// channels into the settings. False with `problem` in words, and nothing changed, when the disk refuses.
  bool TakeOver(const TriggerDefinitions& triggers, const TriggerChannels& channels, std::string& problem);

  /// The start of a chart: the devices that the triggers in use name are opened. What is missing is told.
  void OpenDevices();

  /// The start of a chart: all triggers are armed and enabled.
  void ResetForRun();

  /// The end of a chart, or of its start: all triggers are off.
  void RunEnded();

  /// Offers the value of a finished sample to the triggers that watch the channel, counted from 0.
  void TestTriggers(int channel, double value);

  /// Does what a trigger says: its action, then its notes. `channel` is the one that fired it. Waits for nothing, and
  /// what fails is told in the session log; an output that stays as it was told in this run is not told again. A slot
  /// outside 0 to 9 does nothing.
  void ExecuteTrigger(int slot, int channel);

 private:
  void TakeDefinitions(const TriggerDefinitions& definitions);
  bool RememberFile(const std::filesystem::path& path);
  void StoreSettings();
  void DoAction(int slot);
  void Execute(int slot);
  std::string Drive(const TriggerDefinition& trigger);
  std::string DriveLpt(const TriggerDefinition& trigger);
  std::string DriveU3(const TriggerDefinition& trigger);
  std::string DriveU12(const TriggerDefinition& trigger);
  void DoNotes(int slot, int channel);
  void EnterInObLog(int slot, const std::string& note);
  void ShowInStatusBar(const std::string& note);
  std::string Expand(const std::string& text) const;

  Session& session_;
  ChartWindow& window_;
  Triggers triggers_;
  TriggerOutputs* outputs_ = nullptr;
  std::string lookedAt_;                         // DefaultTriggerFile, when it was last followed
  std::array<std::string, kTriggerSlots> told_;  // what is wrong with its output, as it was told in this run
  std::array<double, 2> u12Levels_{};
};

}  // namespace tarvolt
