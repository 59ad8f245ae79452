// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/sample_view.h"

#include <limits>

#include "timebase/time_stamp.h"

namespace tarvolt {

double EquationSample::At(int channel, std::int64_t sample) const {
  const std::int64_t position = sample - clearedAway;
  if (position < 0 || position > std::numeric_limits<std::int32_t>::max()) return 0;
  return chart.GetValue(channel, static_cast<std::int32_t>(position));
}

double EquationSample::Lowest(int channel) const {
  if (extremes == nullptr) return chart.ChannelMin(channel);
  const MinMax& range = (*extremes)[static_cast<std::size_t>(channel)];
  return range.IsEmpty() ? 0 : range.lowest;
}

double EquationSample::Highest(int channel) const {
  if (extremes == nullptr) return chart.ChannelMax(channel);
  const MinMax& range = (*extremes)[static_cast<std::size_t>(channel)];
  return range.IsEmpty() ? 0 : range.highest;
}

EquationSample SampleOfRun(const ChartWindow& window, std::int32_t position) {
  const RunState& run = window.run;
  EquationSample sample{window.chart, run};
  sample.index = run.Dcount;
  sample.last = run.Dcount;
  sample.clearedAway = run.Dcount - position;
  sample.TDay = run.CurrentStamp - WholeDay(run.CurrentStamp);
  const bool stored = position < window.chart.Count();
  sample.TSDay = stored ? run.CurrentStamp - window.chart.GetTime(position) : 0;
  return sample;
}

EquationSample SampleOfChart(const ChartWindow& window, std::int32_t position, const ChannelExtremes& extremes) {
  EquationSample sample{window.chart, window.run};
  sample.index = position;
  sample.last = window.LastSampleIndex();
  sample.TDay = window.chart.GetTime(position);
  sample.TSDay = sample.TDay - window.chart.GetTime(0);
  sample.extremes = &extremes;
  return sample;
}

ChannelExtremes ExtremesOf(const StripChart& chart) {
  ChannelExtremes extremes;
  for (int channel = 0; channel < kChannels; ++channel) {
    extremes[static_cast<std::size_t>(channel)] = chart.Range(channel, 0, chart.Count() - 1);
  }
  return extremes;
}

}  // namespace tarvolt
