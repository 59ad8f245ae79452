// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// The next planned restart after `base`: `restartTime` ("hh:nn:ss") on its day or the day after. A text that is no
/// time counts as midnight.
TimeStamp GetNextRestart(const std::string& restartTime, TimeStamp base);

}  // namespace tarvolt
