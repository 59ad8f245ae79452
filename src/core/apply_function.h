#pragma once

#include <functional>
#include <string>

#include "automation/channel_equations/channel_equations.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// What the form of the equations is opened with.
struct EquationsRequest {
  std::string caption;
  int channels = kChannels;  ///< rows to show
};

/// A person at the form of the equations: edits them in place, false when that was cancelled. Yields.
using EditEquations = std::function<bool(const EquationsRequest&, EquationSet&)>;

/// The most channels that can be added for equation data.
int FreeChannels(const StripChart& chart);

/// Adds channels "EQ CH" with their number to a chart at rest, all 0. False, with the chart as it was, when there is no
/// room or no memory for them.
bool AddEquationChannels(ChartWindow& window, int count);

/// Shows a text in the status line that stays until the next one: a message that was to be taken off is forgotten.
void ShowWork(ChartWindow& window, const std::string& text);

/// Runs the equations over all samples of a chart at rest, in their order, and writes what they give back. The chart
/// then counts as changed and as none that was saved; its metadata tell of each equation. Holds loads and starts off
/// while it works. Yields every 500 samples. Ends early when the program is to end: the samples that it reached are
/// changed then, and the session log tells how many.
void ApplyFunction(Session& session, ChartWindow& window, ChannelEquations& equations, const EquationSet& set);

}  // namespace tarvolt
