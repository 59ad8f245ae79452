// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "platform/file_system.h"

namespace tarvolt {

/// What stands behind the name of a file in the making.
inline constexpr const char* kPartEnding = ".part";

/// A file in the making: written as "<name>.part" in the folder of its final name and renamed over that when it is
/// complete, so that an old file of that name stays whole until then. Unless it was committed, destroying it removes
/// the part file.
class PartFile {
 public:
  /// Begins the file that will be `name`; a failure shows in Error().
  PartFile(FileSystem& files, std::filesystem::path name);
  ~PartFile();
  PartFile(const PartFile&) = delete;
  PartFile& operator=(const PartFile&) = delete;

  /// Writes behind what was written before. After the first failure does nothing.
  void Write(std::string_view bytes);

  /// Copies `size` bytes from `offset` on of another file, in pieces. A source that ends early is a failure.
  void CopyFrom(File& source, std::uint64_t offset, std::uint64_t size);

  /// Brings the bytes to the disk itself and gives the file its final name. Returns what failed first, if anything did.
  std::error_code Commit();

  /// What failed first; clear while all is well.
  const std::error_code& Error() const { return error_; }

 private:
  FileSystem& files_;
  std::filesystem::path name_;
  std::filesystem::path partName_;
  std::unique_ptr<File> file_;
  std::error_code error_;
  bool committed_ = false;
};

}  // namespace tarvolt
