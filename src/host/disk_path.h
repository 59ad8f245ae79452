// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tarvolt {

/// Names inside the recorder are Windows-1252; names on the disk are UTF-8. The rule, folder by folder of a path: a
/// name whose bytes are valid UTF-8 stands as it is (plain ASCII, and what came from a shell or an environment
/// variable); any other is taken as Windows-1252 and converted. So a path may join a home folder given in UTF-8 with
/// a file named by the recorder.
std::filesystem::path DiskPath(const std::filesystem::path& path);

/// The recorder's name for a name found on the disk: Windows-1252 where that leads back to the same file, else the
/// name as it is. Nothing when no path could reach the file (its name is not UTF-8).
std::optional<std::string> NameFromDisk(const std::string& diskName);

}  // namespace tarvolt
