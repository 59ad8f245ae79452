// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/apply_equations.h"

#include <algorithm>

#include "core/run/run_metadata.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::int32_t kSamplesBetweenQuestions = 500;

void ApplyToSample(ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                   const ChannelExtremes& extremes, std::int32_t index) {
  StripChart& chart = window.chart;
  RunState& run = window.run;
  const int channels = std::min(chart.ChannelCount(), kChannels);
  for (int channel = 0; channel < channels; ++channel) run.ChannelValue[channel] = chart.GetValue(channel, index);
  equations.ApplyEquation(set, channels, SampleOfChart(window, index, extremes), run);
  for (int channel = 0; channel < channels; ++channel) chart.SetValue(channel, index, run.ChannelValue[channel]);
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

void AddMetadata(ChartWindow& window, const EquationSet& set, std::string_view when,
                 std::vector<std::string>& problems) {
  for (int channel = 0; channel < std::min(window.chart.ChannelCount(), kChannels); ++channel) {
    if (!set.Applies(channel)) continue;
    const std::string name = "Equation Applied:" + std::string(when) + NumberText(std::int64_t{channel + 1});
    const std::string problem = window.metadata.AddToMetaData(name, EquationText(set, channel));
    if (!problem.empty()) problems.push_back(problem);
  }
}

}  // namespace

int FreeChannels(const StripChart& chart) {
  return std::max(kChannels - chart.ChannelCount(), 0);
}

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

EquationPass ApplyEquations(ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                            std::string_view when, const std::function<bool()>& goesOn) {
  equations.LogBegan();
  const ChannelExtremes extremes = ExtremesOf(window.chart);
  EquationPass pass;
  pass.count = window.chart.Count();
  while (pass.done < pass.count) {
    ApplyToSample(window, equations, set, extremes, pass.done);
    if (++pass.done % kSamplesBetweenQuestions == 0 && goesOn && !goesOn()) break;
  }
  MarkChanged(window);
  AddMetadata(window, set, when, pass.problems);
  return pass;
}

}  // namespace tarvolt
