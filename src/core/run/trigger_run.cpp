// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/trigger_run.h"

#include <map>

#include "automation/replace_tags.h"
#include "automation/triggers/trigger_file.h"
#include "config/text_file.h"
#include "core/chart/chart_notations.h"
#include "model/channel_table.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

/// The status line is free at 120: a note stays for 110 firings of TimerKeepAlive.
constexpr int kHold = 110;

/// Addresses up to this one are no port.
constexpr std::int32_t kLastNoPort = 200;

Outcome NoWay() {
  return Failure{"this version has no way to it"};
}

std::string Called(int slot) {
  return "Trigger " + NumberText(std::int64_t{NumberOfSlot(slot)});
}

bool DrivesOutput(const TriggerDefinition& trigger) {
  const TriggerAction action = ActionOf(trigger.Action);
  if (action == TriggerAction::Lpt) return trigger.LPTnum > kLastNoPort;
  return action != TriggerAction::NoteOnly && action != TriggerAction::Execute;
}

std::string NameOfDevice(TriggerAction device) {
  switch (device) {
    case TriggerAction::Lpt:
      return "the parallel port";
    case TriggerAction::LjU3:
      return "a LabJack U3";
    case TriggerAction::LjU12:
      return "a LabJack U12";
    default:
      return {};
  }
}

/// The pin of the connector for a row of the list of pins.
int PinOfRow(std::int32_t row) {
  if (row == 10) return 14;
  if (row == 11) return 16;
  if (row == 12) return 17;
  return row;
}

bool IsAnalog(const std::string& command) {
  return EqualNoCase(Trim(command), "AO");
}

bool IsDigital(const std::string& command) {
  return EqualNoCase(Trim(command), "DO");
}

}  // namespace

TriggerRun::TriggerRun(Session& session, ChartWindow& window) : session_(session), window_(window) {}

Outcome TriggerRun::LoadTriggers(const std::filesystem::path& path) {
  const auto definitions = ReadTriggers(path);
  if (!definitions) return Failure{definitions.Words()};
  TakeDefinitions(*definitions);
  if (RememberFile(path)) StoreSettings();
  return Done();
}

// A change of one trigger during a run does not fire another one a second time.
void TriggerRun::TakeDefinitions(const TriggerDefinitions& definitions) {
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    TriggerDefinition& definition = triggers_[slot];
    if (definition == definitions[slot]) continue;
    definition = definitions[slot];
    triggers_[slot].CancelActions();
    triggers_[slot].Enabled = window_.run.ChartRunning() || window_.run.Starting();
  }
}

// True when the setting has changed.
bool TriggerRun::RememberFile(const std::filesystem::path& path) {
  lookedAt_ = path.string();
  if (session_.settings.files.DefaultTriggerFile == lookedAt_) return false;
  session_.settings.files.DefaultTriggerFile = lookedAt_;
  return true;
}

void TriggerRun::StoreSettings() {
  SaveRegistrySettings(session_.store, session_.overrides, session_.home.string(), session_.settings);
}

void TriggerRun::FollowSetting() {
  const std::string path = session_.settings.files.DefaultTriggerFile;
  if (path == lookedAt_ || window_.run.ChartRunning()) return;
  lookedAt_ = path;
  if (!session_.host.files.FileExists(path)) return;
  if (const Outcome loaded = LoadTriggers(path); !loaded) {
    session_.Add2SLog("Could not load the triggers of " + path + ": " + loaded.Words());
  }
}

Result<TriggerDefinitions> TriggerRun::ReadTriggers(const std::filesystem::path& path) {
  return ReadTriggerFile(session_.host.files, path);
}

Outcome TriggerRun::SaveoTriggers(const TriggerDefinitions& triggers, const std::filesystem::path& path) {
  std::string problem;
  if (!ReplaceTextFile(session_.host.files, path, FormatTriggers(triggers), problem)) return Failure{problem};
  return Done();
}

Outcome TriggerRun::TakeOver(const TriggerDefinitions& triggers, const TriggerChannels& channels) {
  const std::filesystem::path copy = session_.home / "TempTriggers.ini";
  if (const Outcome saved = SaveoTriggers(triggers, copy); !saved) return saved;
  const auto definitions = ReadTriggers(copy);
  if (!definitions) return Failure{definitions.Words()};
  TakeDefinitions(*definitions);
  RememberFile(copy);
  session_.settings.channels.CHTrigger = channels.CHTrigger;
  session_.settings.channels.ChTriggerEnabled = channels.ChTriggerEnabled;
  StoreSettings();
  window_.run.plan.triggers = channels;
  session_.Add2SLog("Triggers changed.");
  if (window_.run.ChartRunning()) OpenDevices();
  return Done();
}

void TriggerRun::OpenDevices() {
  std::map<TriggerAction, Outcome> opened;
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    const TriggerAction device = ActionOf(triggers_[slot].Action);
    if (!DrivesOutput(triggers_[slot])) continue;
    if (!IsInUse(window_.run.plan.triggers, slot, window_.run.plan.ActiveChannels())) continue;
    const bool isFirst = !opened.contains(device);
    if (isFirst) opened.emplace(device, outputs_ != nullptr ? outputs_->Open(device) : NoWay());
    const Outcome& result = opened.at(device);
    told_[slot] = result ? "" : result.Words();
    if (result || !isFirst) continue;
    session_.Add2SLog(Called(slot) + " drives " + NameOfDevice(device) + ", which cannot be used: " + result.Words());
  }
}

void TriggerRun::ResetForRun() {
  for (clsTriggerObject& trigger : triggers_) {
    trigger.CancelActions();
    trigger.Enabled = true;
  }
}

void TriggerRun::RunEnded() {
  for (clsTriggerObject& trigger : triggers_) {
    trigger.CancelActions();
    trigger.Enabled = false;
  }
  told_ = {};
}

void TriggerRun::SampleFinished(const FinishedSample& sample) {
  if (!sample.stored) return;
  for (std::size_t channel = 0; channel < sample.raw.size(); ++channel) {
    TestTriggers(static_cast<int>(channel), sample.raw[channel]);
  }
}

void TriggerRun::TestTriggers(int channel, double value) {
  const TriggerChannels& channels = window_.run.plan.triggers;
  if (!channels.ChTriggerEnabled[channel]) return;
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    if (Watches(channels, slot, channel) && triggers_[slot].Update(value) != 0) ExecuteTrigger(slot, channel);
  }
}

void TriggerRun::ExecuteTrigger(int slot, int channel) {
  if (slot < 0 || slot >= kTriggerSlots) return;
  DoAction(slot);
  DoNotes(slot, channel);
}

void TriggerRun::DoAction(int slot) {
  const TriggerDefinition& trigger = triggers_[slot];
  const TriggerAction action = ActionOf(trigger.Action);
  if (action == TriggerAction::Execute) return Execute(slot);
  if (!DrivesOutput(trigger)) return;
  const Outcome driven = outputs_ != nullptr ? Drive(trigger) : NoWay();
  if (driven || driven.Words() == told_[slot]) return;
  told_[slot] = driven.Words();
  session_.Add2SLog(Called(slot) + " could not set " + NameOfDevice(action) + ": " + driven.Words());
}

void TriggerRun::Execute(int slot) {
  const std::string commandLine = Expand(triggers_[slot].Parameter);
  std::string why;
  if (session_.host.processes.StartMinimised(commandLine, why)) return;
  session_.Add2SLog(Called(slot) + " could not start \"" + commandLine + "\": " + why);
}

Outcome TriggerRun::Drive(const TriggerDefinition& trigger) {
  switch (ActionOf(trigger.Action)) {
    case TriggerAction::Lpt:
      return DriveLpt(trigger);
    case TriggerAction::LjU3:
      return DriveU3(trigger);
    case TriggerAction::LjU12:
      return DriveU12(trigger);
    default:
      return Done();
  }
}

Outcome TriggerRun::DriveLpt(const TriggerDefinition& trigger) {
  return outputs_->SetPin(trigger.LPTnum, PinOfRow(trigger.LPTpin), trigger.LPTvalue == 1);
}

Outcome TriggerRun::DriveU3(const TriggerDefinition& trigger) {
  if (IsDigital(trigger.LJU3command)) return outputs_->SetU3Digital(trigger.LJU3channel, trigger.LJU3value);
  if (IsAnalog(trigger.LJU3command)) return outputs_->SetU3Analog(trigger.LJU3channel, trigger.LJU3value);
  return Done();
}

// The device takes both levels at once: the one that is not meant keeps its own.
Outcome TriggerRun::DriveU12(const TriggerDefinition& trigger) {
  if (IsDigital(trigger.LJU12command)) return outputs_->SetU12Digital(trigger.LJU12channel, trigger.LJU12value);
  if (!IsAnalog(trigger.LJU12command)) return Done();
  if (trigger.LJU12channel != 0 && trigger.LJU12channel != 1) return Failure{"its analog outputs are 0 and 1"};
  u12Levels_[trigger.LJU12channel] = trigger.LJU12value;
  return outputs_->SetU12Analog(u12Levels_[0], u12Levels_[1]);
}

void TriggerRun::DoNotes(int slot, int channel) {
  const TriggerDefinition& trigger = triggers_[slot];
  if (!trigger.Annotate && !trigger.ShowInObLog && !trigger.ShowInStatusBar && !trigger.ShowInSessionLog) return;
  const std::string note = Expand(trigger.Notation);
  if (trigger.Annotate) AddLabelNow(window_, channel, note);
  const bool isEntered = !trigger.ShowInObLog || EnterInObLog(note);
  if (trigger.ShowInStatusBar) ShowInStatusBar(note);
  if (!isEntered) {
    session_.Add2SLog(Called(slot) + " for the observer log, which is not open: " + note);
  } else if (trigger.ShowInSessionLog) {
    session_.Add2SLog(note);
  }
}

// False where there is no observer log to open, as at a station without a screen.
bool TriggerRun::EnterInObLog(const std::string& note) {
  ObserverLog& log = window_.olog;
  if (!log.IsOpen()) log.Open();
  log.AddEntry(note, true);
  return log.IsOpen();
}

void TriggerRun::ShowInStatusBar(const std::string& note) {
  window_.view.Status.Hold(note, kHold);
}

std::string TriggerRun::Expand(const std::string& text) const {
  return ReplaceTags(text, session_.host, window_.run);
}

}  // namespace tarvolt
