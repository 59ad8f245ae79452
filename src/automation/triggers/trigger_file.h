// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "automation/triggers/trigger_slots.h"
#include "platform/file_system.h"
#include "text/result.h"

namespace tarvolt {

/// Reads the text of a trigger file: a line "{n}" begins trigger n (any with a "{" and no "=" does), and lines
/// "KEY=value" in any order describe it. What stands under a number outside 1 to 10, or under none, is passed over, and
/// so are unknown keys. A trigger or a key that is not there has its default. Nothing when the text has no trigger at
/// all.
std::optional<TriggerDefinitions> ParseTriggers(std::string_view text);

/// The text of such a file, with all ten triggers. A line end inside a text becomes a blank.
std::string FormatTriggers(const TriggerDefinitions& triggers);

/// Reads a trigger file. Fails when it cannot be read or holds no trigger.
Result<TriggerDefinitions> ReadTriggerFile(FileSystem& files, const std::filesystem::path& path);

}  // namespace tarvolt
