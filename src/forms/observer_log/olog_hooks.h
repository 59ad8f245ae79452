// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "logs/log_words.h"

namespace tarvolt {

/// What the observer log has its surroundings do.
struct OLogHooks {
  /// Puts the picture of the chart on the clipboard.
  std::function<void()> grabPicture;

  /// Opens what a word of the log names. False when that cannot be done.
  std::function<bool(WordKind kind, const std::string& word)> openWord;

  /// Asks for a folder, beginning at one; nothing when it was cancelled. Yields.
  std::function<std::optional<std::string>(const std::string& folder)> chooseFolder;
};

/// Those of a desktop: web addresses and files are opened by the programs that the system holds for them.
OLogHooks DesktopOLogHooks(std::function<void()> grabPicture);

}  // namespace tarvolt
