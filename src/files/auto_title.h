// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// A chart's title by a format. In it "%name" stands for the local name and "%observer" for the observer, both from the
/// chart's header, "%date" and "%time" for the start of the chart as "YYYY/MM/DD" and "hh:nn:ss", and "%base" for its
/// time base: "LMST", "UT" or "Local". All else stands for itself. An empty format is "%name  %date %time".
std::string AutoTitleText(const ChartWindow& window, const std::string& format);

/// With AutoTitle on, gives the chart the title that AutoTitleFormat asks for; otherwise its title stays.
void DoAutoTitle(const Session& session, ChartWindow& window);

}  // namespace tarvolt
