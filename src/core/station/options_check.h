// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/settings.h"

namespace tarvolt {

/// Texts of the options dialog as a person left them, each with the key of its setting.
using OptionTexts = std::vector<std::pair<std::string, std::string>>;

/// What stands against a set of options, or is to be said about it.
struct OptionsProblem {
  std::string title;
  std::string text;
  std::string key;  ///< of the setting whose field is to be looked at
};

/// What is known of the sound input.
struct SoundFacts {
  bool available = false;
  std::string format;  ///< description of the format in use
};

/// The text that the dialog has for a setting: as it is stored, but for MaxDuration, which is entered in hours, SaveIF,
/// of which only the sign counts, and the position, in degrees, minutes and seconds and the sense of DisplayWest,
/// "unknown" for none. Empty for an unknown key.
std::string OptionText(const Settings& settings, std::string_view key);

/// Lays texts over `draft` by the lenient readings, "," being a decimal point as well. Gives the first one, in their
/// order, that holds no number where one is needed, or no position; the draft then holds those before it.
std::optional<OptionsProblem> ReadOptionTexts(const OptionTexts& texts, Settings& draft);

/// Raises what has a lowest value to it; the words say what was raised.
std::vector<OptionsProblem> LiftOptions(Settings& draft);

/// All that stands against the options, in the order of the dialog's pages, but of the rows of sources the first one
/// alone. Empty when they are fine.
std::vector<OptionsProblem> CheckOptions(const Settings& draft, const SoundFacts& sound);

/// What is reported about options that are accepted all the same. `before` are those in force until now.
std::vector<OptionsProblem> OptionWarnings(const Settings& before, const Settings& draft, const SoundFacts& sound);

}  // namespace tarvolt
