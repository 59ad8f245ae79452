// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings_table.h"
#include "platform/file_system.h"
#include "text/result.h"

namespace tarvolt {

/// One lookup: the text after the first "=" of the first line that holds the key followed by " =" or "=",
/// upper-cased, anywhere; trimmed, less one trailing ";". Empty or missing gives `fallback`.
std::string GetProfileValue(const std::vector<std::string>& lines, std::string_view key, std::string_view fallback);

/// Sets every key of the profile list: one that the file does not hold falls back to its default, never to the value
/// in use. Overrides are laid on top. Changes nothing and fails in words for an empty path, a file that cannot be read
/// or is over 16 MiB, and one in which no line begins with a key of the list: that is no profile.
Outcome LoadProfileFile(FileSystem& files, const std::filesystem::path& path, const SettingOverrides& overrides,
                        const std::string& home, Settings& settings);

/// Writes the list in its order, beside the final name and renamed over it. Fails in words.
Outcome SaveProfileFile(FileSystem& files, const std::filesystem::path& path, const Settings& settings);

}  // namespace tarvolt
