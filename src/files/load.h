#pragma once

#include <filesystem>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Loads a data file into a window that has no run. Refusals are told in a box and leave the chart cleared; false then.
bool LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file);

}  // namespace tarvolt
