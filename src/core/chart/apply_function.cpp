// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/apply_function.h"

#include <algorithm>
#include <chrono>

#include "core/run/run_metadata.h"
#include "model/scoped_flag.h"
#include "text/number.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

constexpr std::int32_t kSamplesBetweenYields = 500;

void ApplyToSample(ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                   const ChannelExtremes& extremes, std::int32_t index) {
  StripChart& chart = window.chart;
  RunState& run = window.run;
  const int channels = std::min(chart.ChannelCount(), kChannels);
  for (int channel = 0; channel < channels; ++channel) run.ChannelValue[channel] = chart.GetValue(channel, index);
  equations.ApplyEquation(set, channels, SampleOfChart(window, index, extremes), run);
  for (int channel = 0; channel < channels; ++channel) chart.SetValue(channel, index, run.ChannelValue[channel]);
}

// False, with the chart as it was, when there is no room or no memory.
bool AddEquationChannels(ChartWindow& window, int count) {
  const int before = window.chart.ChannelCount();
  if (count < 0 || count > FreeChannels(window.chart) || !window.chart.AddChannels(count)) return false;
  for (int channel = before; channel < before + count; ++channel) {
    const std::string name = "EQ CH" + NumberText(std::int64_t{channel + 1});
    window.chart.ChannelName[channel] = name;
    window.channelLabels[channel] = name;
    window.chart.ChannelVisible[channel] = true;
    window.run.ChannelOffset[channel] = 0;
  }
  window.run.ChannelCount = before + count;
  return true;
}

// Stays until the next text: a message that was to be taken off is forgotten.
void ShowWork(ChartWindow& window, const std::string& text) {
  window.view.Status.Say(text);
  window.view.Status.Release();
}

// The samples are no longer those of a file or of a backup.
void MarkChanged(ChartWindow& window) {
  window.run.DataNeedsSave = true;
  window.save.SavedAs.clear();
  window.save.keeping.BackupActive = false;
  window.save.keeping.Mini = false;
  window.header.channels = static_cast<std::int16_t>(window.chart.ChannelCount());
  window.chart.ScaleYToData();
  ++window.chart.RepaintRequests;
}

void AddMetadata(Session& session, ChartWindow& window, const EquationSet& set) {
  const std::string when = FormatDate(NowPrecise(session.host.clock), "YYMMDDHHnnSS");
  for (int channel = 0; channel < std::min(window.chart.ChannelCount(), kChannels); ++channel) {
    if (!set.Applies(channel)) continue;
    const std::string problem = window.metadata.AddToMetaData(
        "Equation Applied:" + when + NumberText(std::int64_t{channel + 1}), EquationText(set, channel));
    if (!problem.empty()) session.Add2SLog(problem);
  }
}

void ApplyToAll(Session& session, ChartWindow& window, ChannelEquations& equations, const EquationSet& set) {
  equations.LogBegan();
  ShowWork(window, "Applying Function to Data ... Please Wait");
  session.host.loop.Yield(std::chrono::milliseconds(0));
  const ChannelExtremes extremes = ExtremesOf(window.chart);
  const std::int32_t count = window.chart.Count();
  std::int32_t done = 0;
  while (done < count && !window.run.EndRequested) {
    ApplyToSample(window, equations, set, extremes, done);
    if (++done % kSamplesBetweenYields != 0) continue;
    ++window.chart.RepaintRequests;
    session.host.loop.Yield(std::chrono::milliseconds(0));
  }
  if (done == 0 && count > 0) return;
  MarkChanged(window);
  AddMetadata(session, window, set);
  if (done < count) {
    session.Add2SLog("Equation Applied to " + NumberText(std::int64_t{done}) + " of " +
                     NumberText(std::int64_t{count}) + " samples: the program ends.");
    return;
  }
  ShowWork(window, "Equation Applied");
  session.Add2SLog("Equation Applied");
}

}  // namespace

int FreeChannels(const StripChart& chart) {
  return std::max(kChannels - chart.ChannelCount(), 0);
}

Outcome ApplyFunction(Session& session, ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                      int newChannels) {
  const int channels = std::min(window.chart.ChannelCount() + newChannels, kChannels);
  if (const Outcome sound = equations.Check(set, channels); !sound) return sound;
  const ScopedFlag busy(window.save.Loading);
  if (newChannels != 0) {
    ShowWork(window, "Adding New Channels ... Please Wait");
    session.host.loop.Yield(std::chrono::milliseconds(0));
    if (window.run.EndRequested) return Done();
    if (!AddEquationChannels(window, newChannels)) return Failure{"You cannot add that many channels."};
  }
  ApplyToAll(session, window, equations, set);
  return Done();
}

}  // namespace tarvolt
