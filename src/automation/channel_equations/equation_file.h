#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "config/settings_store.h"
#include "model/equation_set.h"
#include "platform/file_system.h"

namespace tarvolt {

/// Longer equations than this are not run: their channels keep their values.
inline constexpr std::size_t kLongestChannelEquation = 4000;

/// An equation as it may stand on a line of its own: no control characters, and no longer than is run.
std::string CleanEquation(std::string_view text);

/// An equation file: eight lines, one a channel. Ticks are not in it.
std::string WriteEquations(const EquationSet& set);

/// Takes the lines of an equation file; channels behind its end stay as they are, and so do all ticks.
void ParseEquations(std::string_view contents, EquationSet& set);

/// Writes the file, or reads it into `set`. False, with the problem in words and the old file or set untouched, when
/// the disk refuses.
bool SaveEquationFile(FileSystem& files, const std::filesystem::path& path, const EquationSet& set,
                      std::string& problem);
bool LoadEquationFile(FileSystem& files, const std::filesystem::path& path, EquationSet& set, std::string& problem);

/// The equations as they are stored, to begin with.
EquationSet LoadDefaultEquations(const SettingsStore& store);
void SaveDefaultEquations(SettingsStore& store, const EquationSet& set);

}  // namespace tarvolt
