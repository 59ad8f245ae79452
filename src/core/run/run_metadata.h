// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Clears the metadata of the window and adds the rows that describe the run about to start.
void BuildRunMetadata(const Session& session, ChartWindow& window);

/// A channel's equation as the metadata describe it.
std::string EquationText(const EquationSet& set, int channel);

/// Adds the rows about the pacing of the run. `actualPeriod`, in milliseconds, when the period asked for cannot be made
/// up.
void AddTimingMetadata(const RunPlan& plan, std::optional<double> actualPeriod, Metadata& metadata);

}  // namespace tarvolt
