#include "forms/chart/plot_events.h"

namespace tarvolt {

PlotEvents PlotEventsFor(ChartCommands& commands) {
  PlotEvents events;
  events.moved = [&commands](double x, double y) { commands.MoveCursor(x, y); };
  events.zoomedTo = [&commands](const ChartRange& range) { commands.ZoomTo(range); };
  events.panned = [&commands](double days, double units) { commands.Pan(days, units); };
  events.fullView = [&commands] { commands.cmdFullView(); };
  return events;
}

}  // namespace tarvolt
