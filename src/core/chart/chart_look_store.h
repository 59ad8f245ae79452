// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "display/chart_look.h"
#include "model/session.h"

namespace tarvolt {

/// The look of the charts as the settings and the store have it. What cannot be read has its default.
ChartLook LoadChartLook(const Session& session);
ChartColors GetStripChartColors(const Session& session);
TickGrid GetTickGrid(const Session& session);
ChartFonts GetFonts(const Session& session);

/// Store what a dialog has changed. The pens of the channels are session settings as well.
void SaveColors(Session& session, const ChartColors& colors);
void SaveTickGrid(Session& session, const TickGrid& ticks);
void SaveFonts(Session& session, const ChartFonts& fonts);

}  // namespace tarvolt
