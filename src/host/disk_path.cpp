// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/disk_path.h"

#include "text/ansi.h"
#include "text/path_text.h"

namespace tarvolt {
namespace {

std::string DiskName(const std::string& name) {
  return IsUtf8(name) ? name : Utf8FromAnsi(name);
}

}  // namespace

std::filesystem::path DiskPath(const std::filesystem::path& path) {
  if (IsUtf8(path.native())) return path;
  std::filesystem::path result;
  for (const auto& part : path) result /= DiskName(part.native());
  return result;
}

std::optional<std::string> NameFromDisk(const std::string& diskName) {
  std::string name = AnsiFromUtf8(diskName);
  if (DiskName(name) == diskName) return name;
  if (IsUtf8(diskName)) return diskName;
  return std::nullopt;
}

}  // namespace tarvolt
