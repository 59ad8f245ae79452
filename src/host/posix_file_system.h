// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/file_system.h"

namespace tarvolt {

/// Files and folders of a POSIX system. Names follow the rule of DiskPath. Calls cut off by a signal are resumed; files
/// are not handed on to programs that are started. Only plain files and character devices are opened, so that no
/// name in a profile can make the recorder wait at a pipe.
class PosixFileSystem final : public FileSystem {
 public:
  /// A listing beyond this many entries is refused with value_too_large.
  static constexpr std::size_t kMaxEntries = 1'000'000;

  /// A file asked for its size before anything else answers with the size at its opening.
  std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) override;
  bool FileExists(const std::filesystem::path& path) override;
  bool FolderExists(const std::filesystem::path& path) override;
  void MakeFolders(const std::filesystem::path& path, std::error_code& error) override;

  /// On return the new name is on the disk itself.
  void Rename(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) override;
  void Remove(const std::filesystem::path& path, std::error_code& error) override;

  /// A file whose name no path can express is left out.
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path& folder, std::error_code& error) override;
};

}  // namespace tarvolt
