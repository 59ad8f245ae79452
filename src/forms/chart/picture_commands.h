// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>
#include <functional>
#include <string>

#include "forms/plot/strip_chart_plot.h"

namespace tarvolt {

/// Told the name of a picture that was saved.
using PictureSaved = std::function<void(const std::string& file)>;

/// Save as picture, copy and print, for the File menu of a window with that plot.
void AddPictureCommands(QMenu& menu, StripChartPlot& plot, const PictureSaved& saved = {});

}  // namespace tarvolt
