// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/plot_events.h"

namespace tarvolt {

PlotEvents PlotEventsFor(ChartCommands& commands) {
  PlotEvents events;
  events.moved = [&commands](double x, double y) { commands.cursor.MoveCursor(x, y); };
  events.zoomedTo = [&commands](const ChartRange& range) { commands.view.ZoomTo(range); };
  events.panned = [&commands](double days, double units) { commands.view.Pan(days, units); };
  events.fullView = [&commands] { commands.view.cmdFullView(); };
  return events;
}

}  // namespace tarvolt
