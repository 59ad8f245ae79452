// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/settings.h"

namespace tarvolt {

/// Leading rows of the channel table with a source: the first row without one ends the list.
int ActiveChannels(const Settings& settings);

}  // namespace tarvolt
