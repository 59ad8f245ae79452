// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tarvolt {

/// An open file. Destroying it closes it. Errors come through the `error` argument, which is cleared on success.
class File {
 public:
  virtual ~File() = default;

  /// Reads up to `size` bytes at the position; fewer only at the end of the file or with an error.
  virtual std::size_t Read(void* bytes, std::size_t size, std::error_code& error) = 0;

  /// Writes all of `bytes` at the position. With an error an unknown leading part of them may have been written.
  virtual void Write(std::string_view bytes, std::error_code& error) = 0;

  /// Moves the position, counted in bytes from the start.
  virtual void Seek(std::uint64_t position, std::error_code& error) = 0;

  /// Length in bytes; 0 with an error.
  virtual std::uint64_t Size(std::error_code& error) = 0;

  /// Cuts or lengthens the file to `size` bytes; the position stays.
  virtual void Truncate(std::uint64_t size, std::error_code& error) = 0;

  /// Returns when the bytes are on the disk itself.
  virtual void Sync(std::error_code& error) = 0;
};

enum class OpenMode {
  Read,           ///< must exist; position 0
  Create,         ///< made, or emptied when it exists; read and write
  ReadWrite,      ///< must exist; position 0
  Append,         ///< made when missing; every write goes to the end
  AppendExisting  ///< must exist; every write goes to the end. The cheapest way to add to a file again and again
};

/// Files and folders. Paths hold the system's own single-byte text; the implementation gives it the platform's form.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// The open file, or null with `error` set.
  virtual std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) = 0;

  virtual bool FileExists(const std::filesystem::path& path) = 0;
  virtual bool FolderExists(const std::filesystem::path& path) = 0;

  /// Makes the folder and those above it. No error when it exists.
  virtual void MakeFolders(const std::filesystem::path& path, std::error_code& error) = 0;

  /// Renames, replacing an existing file in one step, so that a crash leaves the old one or the new one whole.
  virtual void Rename(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) = 0;

  /// Removes a file or an empty folder. No error when it is not there.
  virtual void Remove(const std::filesystem::path& path, std::error_code& error) = 0;

  /// Names of the files in a folder, without their folder, sorted.
  virtual std::vector<std::filesystem::path> ListFiles(const std::filesystem::path& folder, std::error_code& error) = 0;
};

}  // namespace tarvolt
