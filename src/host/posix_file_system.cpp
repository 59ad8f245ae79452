// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/posix_file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <optional>
#include <utility>

#include "host/disk_path.h"

namespace tarvolt {
namespace {

std::error_code LastError() {
  return {errno, std::generic_category()};
}

void SetResult(bool succeeded, std::error_code& error) {
  if (succeeded) {
    error.clear();
  } else {
    error = LastError();
  }
}

template <typename Call>
auto Resumed(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

std::filesystem::path FolderOf(const std::filesystem::path& path) {
  const auto folder = path.parent_path();
  return folder.empty() ? std::filesystem::path(".") : folder;
}

/// Some file systems cannot sync a folder, and a folder that may be written need not be readable: neither is a failure.
bool SyncingFoldersIsRefused(int number) {
  return number == EINVAL || number == ENOTSUP || number == EACCES;
}

/// Names are entries of their folder: a new one lasts only when the folder is on the disk as well.
void SyncFolder(const std::filesystem::path& folder, std::error_code& error) {
  const int fd = Resumed([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  SetResult(fd != -1 && Resumed([&] { return ::fsync(fd); }) == 0, error);
  if (error && SyncingFoldersIsRefused(error.value())) error.clear();
  if (fd != -1) ::close(fd);
}

class PosixFile final : public File {
 public:
  /// Takes over `fd`. `newName`: the name whose folder is to be synced with the file, empty when the file was there
  /// before.
  PosixFile(int fd, std::filesystem::path newName) : fd_(fd), newName_(std::move(newName)) {}
  ~PosixFile() override { ::close(fd_); }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  /// The first call on a file just opened: an error for what is no plain file and no character device.
  void CheckKind(OpenMode mode, std::error_code& error) {
    if (mode == OpenMode::AppendExisting) return error.clear();  // a kind that cannot be written says so then
    if (mode == OpenMode::Append) return FindEnd(error);
    const auto info = Look(error);
    if (error) return;
    if (S_ISREG(info.stx_mode) || S_ISCHR(info.stx_mode)) {
      sizeAtOpening_ = info.stx_size;
    } else {
      error =
          std::make_error_code(S_ISDIR(info.stx_mode) ? std::errc::is_a_directory : std::errc::operation_not_supported);
    }
  }

  // What is only appended to has an end to go to, or is a pipe. Costs less than a look at the kind.
  void FindEnd(std::error_code& error) {
    const off_t end = ::lseek(fd_, 0, SEEK_END);
    if (end == -1) {
      error = std::make_error_code(std::errc::operation_not_supported);
    } else {
      sizeAtOpening_ = static_cast<std::uint64_t>(end);
    }
  }

  std::size_t Read(void* bytes, std::size_t size, std::error_code& error) override {
    sizeAtOpening_.reset();
    error.clear();
    std::size_t done = 0;
    while (done < size) {
      const auto got = Resumed([&] { return ::read(fd_, static_cast<char*>(bytes) + done, size - done); });
      if (got == -1) error = LastError();
      if (got <= 0) break;
      done += static_cast<std::size_t>(got);
    }
    return done;
  }

  void Write(std::string_view bytes, std::error_code& error) override {
    sizeAtOpening_.reset();
    error.clear();
    while (!bytes.empty()) {
      const auto put = Resumed([&] { return ::write(fd_, bytes.data(), bytes.size()); });
      if (put <= 0) {
        error = put == 0 ? std::make_error_code(std::errc::io_error) : LastError();
        return;
      }
      bytes.remove_prefix(static_cast<std::size_t>(put));
    }
  }

  void Seek(std::uint64_t position, std::error_code& error) override {
    if (IsTooLarge(position, error)) return;
    SetResult(::lseek(fd_, static_cast<off_t>(position), SEEK_SET) != -1, error);
  }

  std::uint64_t Size(std::error_code& error) override {
    error.clear();
    if (const auto known = std::exchange(sizeAtOpening_, std::nullopt)) return *known;
    const auto info = Look(error);
    return error ? 0 : info.stx_size;
  }

  void Truncate(std::uint64_t size, std::error_code& error) override {
    sizeAtOpening_.reset();
    if (IsTooLarge(size, error)) return;
    SetResult(Resumed([&] { return ::ftruncate(fd_, static_cast<off_t>(size)); }) == 0, error);
  }

  void Sync(std::error_code& error) override {
    SetResult(Resumed([&] { return ::fsync(fd_); }) == 0, error);
    if (error || newName_.empty()) return;
    SyncFolder(FolderOf(newName_), error);
    if (!error) newName_.clear();
  }

 private:
  // Asks for no times: one that has been looked at is written anew with the next append, which costs that call more.
  struct statx Look(std::error_code& error) const {
    struct statx info {};
    SetResult(::statx(fd_, "", AT_EMPTY_PATH, STATX_TYPE | STATX_SIZE, &info) == 0, error);
    return info;
  }

  static bool IsTooLarge(std::uint64_t value, std::error_code& error) {
    const bool tooLarge = value > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
    if (tooLarge) error = std::make_error_code(std::errc::value_too_large);
    return tooLarge;
  }

  int fd_;
  std::filesystem::path newName_;

  /// What CheckKind saw, until the next call: a backup opens its file and asks for the size with each sample, and is
  /// spared one call of the system.
  std::optional<std::uint64_t> sizeAtOpening_;
};

int FlagsOf(OpenMode mode) {
  switch (mode) {
    case OpenMode::Read:
      return O_RDONLY;
    case OpenMode::Create:
      return O_RDWR | O_CREAT | O_TRUNC;
    case OpenMode::ReadWrite:
      return O_RDWR;
    case OpenMode::Append:
      return O_RDWR | O_CREAT | O_APPEND;
    case OpenMode::AppendExisting:
      return O_RDWR | O_APPEND;
  }
  return O_RDONLY;
}

std::optional<struct stat> Look(const std::filesystem::path& path) {
  struct stat info {};
  if (::stat(DiskPath(path).c_str(), &info) != 0) return std::nullopt;
  return info;
}

}  // namespace

std::unique_ptr<File> PosixFileSystem::Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) {
  auto diskPath = DiskPath(path);
  const int flags =
      FlagsOf(mode) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;  // not blocking: a pipe is noticed, not waited for
  const int fd = Resumed([&] { return ::open(diskPath.c_str(), flags, 0666); });
  SetResult(fd != -1, error);
  if (error) return nullptr;
  const bool mayBeNew = (flags & O_CREAT) != 0;
  auto file = std::make_unique<PosixFile>(fd, mayBeNew ? std::move(diskPath) : std::filesystem::path());
  file->CheckKind(mode, error);
  if (error) return nullptr;
  return file;
}

bool PosixFileSystem::FileExists(const std::filesystem::path& path) {
  const auto info = Look(path);
  return info && !S_ISDIR(info->st_mode);
}

bool PosixFileSystem::FolderExists(const std::filesystem::path& path) {
  const auto info = Look(path);
  return info && S_ISDIR(info->st_mode);
}

void PosixFileSystem::MakeFolders(const std::filesystem::path& path, std::error_code& error) {
  error.clear();
  std::filesystem::path made;
  for (const auto& part : DiskPath(path)) {
    made /= part;
    if (part.empty() || FolderExists(made)) continue;
    SetResult(::mkdir(made.c_str(), 0777) == 0, error);
    if (!error) SyncFolder(FolderOf(made), error);
    if (error) return;
  }
}

void PosixFileSystem::Rename(const std::filesystem::path& from, const std::filesystem::path& to,
                             std::error_code& error) {
  const auto diskFrom = DiskPath(from);
  const auto diskTo = DiskPath(to);
  SetResult(::rename(diskFrom.c_str(), diskTo.c_str()) == 0, error);
  if (!error) SyncFolder(FolderOf(diskTo), error);
  if (!error && FolderOf(diskFrom) != FolderOf(diskTo)) SyncFolder(FolderOf(diskFrom), error);
}

void PosixFileSystem::Remove(const std::filesystem::path& path, std::error_code& error) {
  SetResult(std::remove(DiskPath(path).c_str()) == 0 || errno == ENOENT, error);
}

std::vector<std::filesystem::path> PosixFileSystem::ListFiles(const std::filesystem::path& folder,
                                                              std::error_code& error) {
  std::vector<std::filesystem::path> names;
  std::size_t entries = 0;
  std::filesystem::directory_iterator entry(DiskPath(folder), error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    if (++entries > kMaxEntries) error = std::make_error_code(std::errc::value_too_large);
    if (error) break;
    std::error_code unreadable;  // a broken link or a file just removed is no file, and no reason to fail
    if (!entry->is_regular_file(unreadable)) continue;
    if (auto name = NameFromDisk(entry->path().filename().native())) names.emplace_back(std::move(*name));
  }
  if (error) return {};
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tarvolt
