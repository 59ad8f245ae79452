// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "model/chart_window.h"

namespace tarvolt {

/// Pins a text to the newest sample of a channel, counted from 0. Without a sample, or with a text of blanks, it does
/// nothing. The chart shows it when it is next drawn.
void AddLabelNow(ChartWindow& window, int channel, const std::string& text);

}  // namespace tarvolt
