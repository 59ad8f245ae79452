// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/run_plan.h"

#include <algorithm>

namespace tarvolt {
namespace {

/// TimerType of a run whose clock is the sound input; any other stands for the sampling timer.
constexpr std::int32_t kSoundTimer = 1;

Pacer PacerOf(const RunPlan& plan, std::int32_t timerType) {
  if (plan.uds.UDSpush && plan.HasRow(IsUds)) return Pacer::Push;
  return timerType == kSoundTimer ? Pacer::Sound : Pacer::Timer;
}

}  // namespace

int RunPlan::ActiveChannels() const {
  const auto end = std::find_if(Dsrc.begin(), Dsrc.end(), [](DataSourceId source) { return source <= 0; });
  return static_cast<int>(end - Dsrc.begin());
}

RunPlan PlanOfRun(const Settings& settings) {
  RunPlan plan;
  plan.Dsrc = settings.channels.Dsrc;
  plan.Detection = settings.channels.Detection;
  plan.SampleRate = settings.timing.SampleRate;
  plan.vAvg = settings.timing.vAvg;
  plan.StartOnSecondBoundary = settings.timing.StartOnSecondBoundary;
  plan.TimeRefZero = settings.timing.TimeRefZero;
  plan.ApplyToIncoming = settings.channels.ApplyToIncoming;
  plan.Equations = EquationsOf(settings);
  plan.ChannelLabel = settings.channels.ChannelLabel;
  if (settings.channels.UseOffsets) {
    std::copy_n(settings.channels.DefaultChannelOffset.begin(), kChannels, plan.ChannelOffset.begin());
  }
  plan.triggers = TriggerChannelsOf(settings);
  plan.uds = settings.uds;
  plan.sound = settings.sound;
  plan.card = settings.card;
  plan.pacer = PacerOf(plan, settings.timing.TimerType);
  return plan;
}

LogPlan PlanOfLog(const Settings& settings, const RunPlan& run, bool isClient) {
  LogPlan plan;
  plan.MaxArrayCount = settings.timing.MaxArrayCount;
  plan.MaxDuration = settings.timing.MaxDuration;
  plan.ChartWidth = std::max(settings.timing.ChartWidth, 1.0);
  plan.Continuous = settings.timing.Continuous;
  plan.UseRestartTime = settings.timing.UseRestartTime;
  plan.RestartTime = settings.timing.RestartTime;
  plan.LogLMST = settings.place.LogLMST;
  plan.LogUsingUT = settings.place.LogUsingUT;
  plan.TimeRefZero = run.TimeRefZero && !plan.LogLMST;
  plan.DetectTZ = settings.place.DetectTZ;
  plan.TZ = settings.place.TZ;
  plan.UserLng = settings.place.UserLng;
  plan.MiniServer = isClient ? settings.files.MiniClient : settings.files.MiniServer;
  plan.DiskBackUp = isClient ? settings.files.ClientDiskBackUp : settings.files.DiskBackUp;
  plan.NoTimeStamps = settings.timing.NoTimeStamps;
  plan.SaveAsIntegers = settings.files.SaveAsIntegers;
  plan.AutoSave = isClient ? settings.files.AutoSaveClient : settings.files.AutoSaveStandAlone;
  plan.SaveIF = settings.files.SaveIF;
  plan.SaveIFVal = settings.files.SaveIFVal;
  plan.MetaDataActive = settings.files.MetaDataActive != 0;
  return plan;
}

void SettleKeeping(const LogPlan& log, int channels, LogKeeping& keeping) {
  keeping.LoadedFromFile = false;
  keeping.Mini = log.MiniServer;
  keeping.BackupWanted = log.DiskBackUp;
  keeping.BackupActive = false;
  keeping.Form = {channels, !log.NoTimeStamps, log.SaveAsIntegers};
}

}  // namespace tarvolt
