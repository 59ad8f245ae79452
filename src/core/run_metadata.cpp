#include "core/run_metadata.h"

#include "core/mixer_control.h"
#include "model/channel_table.h"
#include "sources/source_table.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {

namespace {

std::string ChannelNumber(int channel) {
  return NumberText(std::int64_t{channel + 1});
}

// Each row names its channel, for a second row of the same name would replace the first.
void AddDataSources(const Settings& settings, Metadata& metadata) {
  for (int channel = 0; channel < ActiveChannels(settings); ++channel) {
    metadata.AddToMetaData("Data Source :CH " + ChannelNumber(channel), SourceName(settings.Dsrc[channel]));
  }
}

void AddEquations(const Settings& settings, Metadata& metadata) {
  if (!settings.ApplyToIncoming) return;
  const EquationSet set = EquationsOf(settings);
  for (int channel = 0; channel < ActiveChannels(settings); ++channel) {
    if (!set.Applies(channel)) continue;
    metadata.AddToMetaData("Equation Applied When Collected CH " + ChannelNumber(channel), EquationText(set, channel));
  }
}

// The factor is that of the channel's own side.
void AddDetection(const Settings& settings, Metadata& metadata) {
  constexpr const char* kDetectors[] = {"", "Peak", "Average", "Power"};
  constexpr int kPowerDetector = 3;
  for (int channel = 0; channel < ActiveChannels(settings); ++channel) {
    const DataSourceId source = settings.Dsrc[channel];
    if (source != kSoundLeft && source != kSoundRight) continue;
    const int detector = settings.Detection[channel];
    const bool known = detector >= 1 && detector <= kPowerDetector;
    metadata.AddToMetaData("Detection Method: CH " + ChannelNumber(channel),
                           known ? kDetectors[detector] : NumberText(std::int64_t{detector}));
    if (detector != kPowerDetector) continue;
    metadata.AddToMetaData("Power Detection Factor: CH " + ChannelNumber(channel),
                           NumberText(source == kSoundLeft ? settings.PwrMultiL : settings.PwrMultiR));
  }
}

void AddSoundCard(const Session& session, Metadata& metadata) {
  if (!FindSourcesInUse(session.settings).SoundInUse()) return;
  metadata.AddToMetaData("Sound Card Device", session.settings.SoundCardName);
  metadata.AddToMetaData("Last Sound Card Calibration",
                         session.store.GetSetting(Section::Settings, "LastSoundCardCalibration"));
}

}  // namespace

std::string EquationText(const EquationSet& set, int channel) {
  return "CH: " + ChannelNumber(channel) + "  Equation: " + Trim(set.EquString[static_cast<std::size_t>(channel)]);
}

void BuildRunMetadata(const Session& session, ChartWindow& window) {
  window.metadata.DeleteMetaData();
  AddDataSources(session.settings, window.metadata);
  AddEquations(session.settings, window.metadata);
  window.metadata.AddToMetaData("Email", session.settings.ServerEmail);
  AddDetection(session.settings, window.metadata);
  AddSoundCard(session, window.metadata);
}

void AddSoundMetadata(const Session& session, const std::string& formatText, std::int32_t bufferBytes,
                      ChartWindow& window) {
  const int source = session.settings.MixerSource;
  window.metadata.AddToMetaData("Sound: ", formatText + " Buffer:" + NumberText(std::int64_t{bufferBytes}));
  window.metadata.AddToMetaData("Mixer: ", std::string("Source:") + MixerSourceName(source) +
                                               " Vol:" + NumberText(std::int64_t{MixerVolumeNow(session)}));
}

void AddTimingMetadata(const Session& session, const TimingFacts& facts, ChartWindow& window) {
  const Settings& settings = session.settings;
  const RunState& run = window.run;
  window.metadata.AddToMetaData("Timing Method: ", facts.soundPaces ? "Sound Card" : "Timer");
  if (facts.soundPaces) {
    window.metadata.AddToMetaData("Sound Card Device", settings.SoundCardName);
    window.metadata.AddToMetaData("Sound Card Timing Correction", NumberText(run.SCTadjust));
  }
  window.metadata.AddToMetaData("Requested Sample Period: ", NumberText(run.SampleRate));
  if (facts.actualPeriod) {
    window.metadata.AddToMetaData("Actual Sample Period: ", NumberText(*facts.actualPeriod));
  }
  if (!facts.udsInUse) return;
  window.metadata.AddToMetaData("Using UDS: ", settings.UDSexe);
  window.metadata.AddToMetaData("UDS Data: ", run.UDSpush ? "Pushed" : "Polled");
}

}  // namespace tarvolt
