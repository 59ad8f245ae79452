// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/chart/chart_commands.h"
#include "forms/plot/strip_chart_plot.h"

namespace tarvolt {

/// What the mouse does over a plot as commands of its window.
PlotEvents PlotEventsFor(ChartCommands& commands);

}  // namespace tarvolt
