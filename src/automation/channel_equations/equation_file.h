// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "model/equation_set.h"
#include "platform/file_system.h"
#include "text/result.h"

namespace tarvolt {

/// An equation as it may stand on a line of its own, without control characters.
std::string CleanEquation(std::string_view text);

/// An equation file: eight lines, one a channel. Ticks are not in it.
std::string WriteEquations(const EquationSet& set);

/// Takes the lines of an equation file; channels behind its end stay as they are, and so do all ticks.
void ParseEquations(std::string_view contents, EquationSet& set);

/// Writes the file, or reads it into `set`. Fails, with the old file or set untouched, when the disk refuses or an
/// equation is longer than is run.
Outcome SaveEquationFile(FileSystem& files, const std::filesystem::path& path, const EquationSet& set);
Outcome LoadEquationFile(FileSystem& files, const std::filesystem::path& path, EquationSet& set);

}  // namespace tarvolt
