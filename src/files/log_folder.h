// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The folder for the observer log of this window: that of the observation during and after a run with
/// StoreLogWithObservation, else the DefaultLogDirectory. Makes nothing.
std::filesystem::path OLogFolder(const Session& session, const ChartWindow& window);

}  // namespace tarvolt
