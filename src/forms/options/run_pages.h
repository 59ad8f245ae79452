// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/options/option_page.h"

namespace tarvolt {

/// The pages of what a run and its chart are like. `fields` outlives them.
OptionPage* MakeTimingPage(OptionFields& fields, QWidget* parent);
OptionPage* MakeChartPage(OptionFields& fields, QWidget* parent);

/// The estimates of the page Timing, for the settings as they would be.
void ConvertCount(QWidget& timingPage, const Settings& draft);

}  // namespace tarvolt
