#pragma once

#include <optional>
#include <string>

#include "core/chart_commands.h"

namespace tarvolt {

/// The data file that a person chooses, its folder being remembered for the next time. Yields.
std::optional<std::string> AskForDataFile(Session& session);

/// Loads a data file into a window without a run and shows the whole of it. False, and told, when it cannot be loaded.
/// Yields.
bool LoadAndShow(Session& session, ChartWindow& window, ChartCommands& commands, const std::string& path);

}  // namespace tarvolt
