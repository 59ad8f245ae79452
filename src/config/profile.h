#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings_table.h"
#include "platform/file_system.h"

namespace tarvolt {

/// One lookup: the text after the first "=" of the first line that holds the key followed by " =" or "=",
/// upper-cased, anywhere; trimmed, less one trailing ";". Empty or missing gives `fallback`.
std::string GetProfileValue(const std::vector<std::string>& lines, std::string_view key, std::string_view fallback);

/// Sets every key of the profile list: one that the file does not hold falls back to its default, never to the value
/// in use. Overrides are laid on top. An empty path, or a file that cannot be read (with `problem` in words), changes
/// nothing and returns false. A file over 16 MiB is refused.
bool LoadProfileFile(FileSystem& files, const std::filesystem::path& path, const SettingOverrides& overrides,
                     const std::string& home, Settings& settings, std::string& problem);

/// Writes the list in its order, beside the final name and renamed over it. False with `problem` in words.
bool SaveProfileFile(FileSystem& files, const std::filesystem::path& path, const Settings& settings,
                     std::string& problem);

}  // namespace tarvolt
