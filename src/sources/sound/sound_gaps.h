// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/chart_window.h"
#include "platform/clock.h"

namespace tarvolt {

/// A gap of so many seconds is over now.
void EndSoundGap(Clock& clock, double seconds, ChartWindow& window);

/// Puts the gaps of the run into the metadata of its log, as one row; nothing when there were none.
void AddSoundGaps(ChartWindow& window);

}  // namespace tarvolt
