#pragma once

#include <QMenu>

#include "forms/plot/strip_chart_plot.h"

namespace tarvolt {

/// Save as picture, copy and print, for the File menu of a window with that plot.
void AddPictureCommands(QMenu& menu, StripChartPlot& plot);

}  // namespace tarvolt
