// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace tarvolt {

/// What a file of settings may hold at most, in bytes.
inline constexpr std::size_t kTextFileLimit = std::size_t{16} << 20;

/// The whole file; nothing, with `problem` in words, when it cannot be read or is over the limit.
std::optional<std::string> ReadTextFile(FileSystem& files, const std::filesystem::path& path, std::string& problem);

/// Writes "<path>.new", syncs it and renames it over `path`, so that a crash at any byte leaves the old text or the
/// new one. False, with `problem` in words and the old text untouched, when a step fails or `text` is over the limit.
bool ReplaceTextFile(FileSystem& files, const std::filesystem::path& path, std::string_view text, std::string& problem);

/// Takes the first line off `text` and gives it without its end, which is LF or CR LF.
std::string_view TakeLine(std::string_view& text);

}  // namespace tarvolt
