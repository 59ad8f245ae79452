// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarvolt {

/// One source file of the project, with its lines.
struct SourceFile {
  std::filesystem::path path;  ///< below the project's folder, with "/"
  std::vector<std::string> lines;

  /// What it includes in quotes, as written.
  std::vector<std::string> Includes() const;

  /// The folder under src/ that the file lives in, such as "core"; empty outside src/.
  std::string Floor() const;
};

/// All C++ files below the folders src, tests, fuzz and bench.
std::vector<SourceFile> ReadSourceTree();

/// The lines with comments and string literals blanked out.
std::vector<std::string> CodeOnly(const std::vector<std::string>& lines);

}  // namespace tarvolt
