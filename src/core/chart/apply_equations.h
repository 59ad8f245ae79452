// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/channel_equations/channel_equations.h"
#include "model/chart_window.h"

namespace tarvolt {

/// The most channels that can be added for equation data.
int FreeChannels(const StripChart& chart);

/// Adds channels "EQ CH" with their number. False, with the chart as it was, when there is no room or no memory.
bool AddEquationChannels(ChartWindow& window, int count);

/// What came of a pass of equations over a chart.
struct EquationPass {
  std::int32_t done = 0;              ///< samples that it reached
  std::int32_t count = 0;             ///< samples of the chart
  std::vector<std::string> problems;  ///< of the metadata
};

/// Runs the equations over all samples, in their order, and writes what they give back. A chart that was changed counts
/// as one that is to be saved, with all of its samples in memory; its metadata name each equation and `when`, a stamp
/// such as "261124120000". `goesOn` is asked after every 500 samples, may yield, and ends the pass with false.
EquationPass ApplyEquations(ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                            std::string_view when, const std::function<bool()>& goesOn = {});

}  // namespace tarvolt
