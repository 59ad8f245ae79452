// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>
#include <string>

#include "forms/plot/strip_chart_plot.h"

class QPrinter;

namespace tarvolt {

/// Pictures of a plot as it is drawn now. The form follows the name's ending: .png, .svg or .pdf.

/// Writes the picture in so many pixels (points in a PDF). False with `problem` in words for another ending, a size out
/// of 1 to 20,000, or a file that cannot be written.
bool SaveChartPicture(StripChartPlot& plot, const QString& file, int width, int height, std::string& problem);

/// Draws a window's chart into a file of 1200 x 600 without touching what is on the screen. `range` is the range to
/// draw, nothing for the chart's own.
bool DrawChartFile(const ChartWindow& window, const std::optional<ChartRange>& range, const QString& file,
                   std::string& problem);

void CopyChartPicture(StripChartPlot& plot);

/// Prints on one page in the plot's own proportions. False when the printer takes nothing.
bool PrintChartOn(StripChartPlot& plot, QPrinter& printer);

/// Asks for the printer and prints; what fails is reported.
void PrintChart(StripChartPlot& plot);

}  // namespace tarvolt
