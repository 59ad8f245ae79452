// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// What stands in front of the name of a file that the observer refers to.
inline constexpr std::string_view kFileReference = "File Reference: ";

/// The word of a line at a column, counted from 0: from blank to blank, but the whole name, blanks and all, in a line
/// that refers to a file. Empty when a blank stands there.
std::string WordAt(std::string_view line, std::size_t column);

/// What a word of the log can be opened with.
enum class WordKind {
  None,
  WebAddress,  ///< the web browser
  Picture,     ///< the program that the system holds for it
  Sound,       ///< the wave player
  Text         ///< the text editor
};

/// What a word names, by its beginning or its ending in either case.
WordKind KindOfWord(std::string_view word);

}  // namespace tarvolt
