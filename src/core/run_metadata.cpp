#include "core/run_metadata.h"

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

}  // namespace

std::string EquationText(const EquationSet& set, int channel) {
  return "CH: " + ChannelNumber(channel) + "  Equation: " + Trim(set.EquString[static_cast<std::size_t>(channel)]);
}

void BuildRunMetadata(const Session& session, ChartWindow& window) {
  window.metadata.DeleteMetaData();
  AddDataSources(session.settings, window.metadata);
  AddEquations(session.settings, window.metadata);
  window.metadata.AddToMetaData("Email", session.settings.ServerEmail);
}

void AddTimingMetadata(const Session& session, bool udsInUse, ChartWindow& window) {
  const Settings& settings = session.settings;
  window.metadata.AddToMetaData("Timing Method: ", "Timer");
  window.metadata.AddToMetaData("Requested Sample Period: ", NumberText(settings.SampleRate));
  if (!udsInUse) return;
  window.metadata.AddToMetaData("Using UDS: ", settings.UDSexe);
  window.metadata.AddToMetaData("UDS Data: ", settings.UDSpush ? "Pushed" : "Polled");
}

}  // namespace tarvolt
