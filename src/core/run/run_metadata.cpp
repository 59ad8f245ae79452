// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/run_metadata.h"

#include <algorithm>

#include "automation/channel_equations/equation_check.h"
#include "sources/source_table.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {

namespace {

std::string ChannelNumber(int channel) {
  return NumberText(std::int64_t{channel + 1});
}

// Each row names its channel, for a second row of the same name would replace the first.
void AddDataSources(const RunPlan& plan, Metadata& metadata) {
  for (int channel = 0; channel < plan.ActiveChannels(); ++channel) {
    metadata.AddToMetaData("Data Source :CH " + ChannelNumber(channel), SourceName(plan.Dsrc[channel]));
  }
}

void AddEquations(const RunPlan& plan, Metadata& metadata) {
  if (!plan.ApplyToIncoming) return;
  for (int channel = 0; channel < plan.ActiveChannels(); ++channel) {
    const bool isTooLong = plan.Equations.EquString[channel].size() > kLongestChannelEquation;
    if (!plan.Equations.Applies(channel) || isTooLong) continue;
    metadata.AddToMetaData("Equation Applied When Collected CH " + ChannelNumber(channel),
                           EquationText(plan.Equations, channel));
  }
}

// The factor is that of the channel's own side.
void AddDetection(const RunPlan& plan, Metadata& metadata) {
  constexpr const char* kDetectors[] = {"", "Peak", "Average", "Power"};
  constexpr int kPowerDetector = 3;
  for (int channel = 0; channel < plan.ActiveChannels(); ++channel) {
    const DataSourceId source = plan.Dsrc[channel];
    if (source != kSoundLeft && source != kSoundRight) continue;
    const int detector = plan.Detection[channel];
    const bool known = detector >= 1 && detector <= kPowerDetector;
    metadata.AddToMetaData("Detection Method: CH " + ChannelNumber(channel),
                           known ? kDetectors[detector] : NumberText(std::int64_t{detector}));
    if (detector != kPowerDetector) continue;
    metadata.AddToMetaData("Power Detection Factor: CH " + ChannelNumber(channel),
                           NumberText(source == kSoundLeft ? plan.card.PwrMultiL : plan.card.PwrMultiR));
  }
}

void AddSoundCard(const Session& session, const RunPlan& plan, Metadata& metadata) {
  const auto end = plan.Dsrc.begin() + plan.ActiveChannels();
  if (std::none_of(plan.Dsrc.begin(), end, ReadsSound)) return;
  metadata.AddToMetaData("Sound Card Device", plan.sound.SoundCardName);
  metadata.AddToMetaData("Last Sound Card Calibration",
                         session.store.GetSetting(Section::Settings, "LastSoundCardCalibration"));
}

const char* TimingMethod(Pacer pacer) {
  switch (pacer) {
    case Pacer::Timer:
      return "Timer";
    case Pacer::Sound:
      return "Sound Card";
    case Pacer::Push:
      return "UDS";
  }
  return "";
}

}  // namespace

std::string EquationText(const EquationSet& set, int channel) {
  return "CH: " + ChannelNumber(channel) + "  Equation: " + Trim(set.EquString[static_cast<std::size_t>(channel)]);
}

void BuildRunMetadata(const Session& session, ChartWindow& window) {
  const RunPlan& plan = window.run.plan;
  window.metadata.DeleteMetaData();
  AddDataSources(plan, window.metadata);
  AddEquations(plan, window.metadata);
  window.metadata.AddToMetaData("Email", session.settings.station.ServerEmail);
  AddDetection(plan, window.metadata);
  AddSoundCard(session, plan, window.metadata);
}

void AddTimingMetadata(const RunPlan& plan, std::optional<double> actualPeriod, Metadata& metadata) {
  metadata.AddToMetaData("Timing Method: ", TimingMethod(plan.pacer));
  if (plan.pacer == Pacer::Sound) {
    metadata.AddToMetaData("Sound Card Device", plan.sound.SoundCardName);
    metadata.AddToMetaData("Sound Card Timing Correction", NumberText(plan.card.SCTadjust));
  }
  metadata.AddToMetaData("Requested Sample Period: ", NumberText(plan.SampleRate));
  if (actualPeriod) metadata.AddToMetaData("Actual Sample Period: ", NumberText(*actualPeriod));
}

}  // namespace tarvolt
