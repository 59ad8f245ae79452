// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "config/settings_store.h"

namespace tarvolt {

inline constexpr int kOMacros = 10;

/// One of the observer log's macro buttons.
struct OMacro {
  std::string caption;  ///< at most kLongestCaption characters
  std::string text;     ///< at most kLongestText characters

  static constexpr std::size_t kLongestCaption = 16;
  static constexpr std::size_t kLongestText = 1000;
};

using OMacroSet = std::array<OMacro, kOMacros>;

/// What a click on a macro button does.
struct OMacroAction {
  std::string text;      ///< the entry; the marks are taken out
  bool stamped = false;  ///< marked "~": the stamp goes in front
  bool marked = false;   ///< marked "*": the chart window is informed as well
};

/// Reads the marks, which stand among the last two characters; elsewhere "~" and "*" are text. Nothing for a macro of
/// fewer than two characters.
std::optional<OMacroAction> ReadOMacro(std::string_view text);

/// One line of text as a button can hold it: no controls, cut to its limit.
std::string CleanOMacroText(std::string_view text, std::size_t longest);

/// The macros as the settings hold them.
OMacroSet GetOMacros(const SettingsStore& store);
void SaveOMacros(SettingsStore& store, const OMacroSet& macros);

/// The contents of a file of macros: a heading, then caption and text of each, a line each, with CR LF.
std::string WriteOMacros(const OMacroSet& macros);

/// The macros of a file's contents; nothing when it is not such a file. Missing lines are empty, lines too many are
/// left out.
std::optional<OMacroSet> ParseOMacros(std::string_view contents);

}  // namespace tarvolt
