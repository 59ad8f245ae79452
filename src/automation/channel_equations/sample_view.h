// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "display/min_max_pyramid.h"
#include "model/chart_window.h"

namespace tarvolt {

/// Lowest and highest of each channel of a chart.
using ChannelExtremes = std::array<MinMax, kChannels>;

/// What the equations see of the sample that they work on. Refers to a window, and lives no longer than the sample.
struct EquationSample {
  const StripChart& chart;
  const RunState& run;           ///< its ChannelValue and MsgData
  std::int32_t index = 0;        ///< of the sample, counted from the begin of the log
  std::int32_t last = 0;         ///< the highest index that may be read
  std::int32_t clearedAway = 0;  ///< samples of the log that the chart no longer has
  double TDay = 0;
  double TSDay = 0;
  const ChannelExtremes* extremes = nullptr;  ///< as they were once; nothing to ask the chart

  /// A stored value; 0 where the chart has none.
  double At(int channel, std::int64_t sample) const;
  double Lowest(int channel) const;
  double Highest(int channel) const;
};

/// The sample of a run whose time stands in the chart at `position`; its values do not yet. TDay is the fraction of the
/// day, and TSDay the time since the chart's time of the sample itself, which is none (meant).
EquationSample SampleOfRun(const ChartWindow& window, std::int32_t position);

/// A sample of a chart at rest. TDay is its whole time stamp and TSDay the days since the first sample. `extremes` are
/// those of the chart before its samples were rewritten, and outlive the result.
EquationSample SampleOfChart(const ChartWindow& window, std::int32_t position, const ChannelExtremes& extremes);

ChannelExtremes ExtremesOf(const StripChart& chart);

}  // namespace tarvolt
