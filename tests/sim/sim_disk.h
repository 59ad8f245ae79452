// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "sim/sim_random.h"

namespace tarvolt {

/// Thrown out of the disk operation in which the simulated program dies. No std::exception, so that no handler of
/// the program takes it for a fault that it could live with.
struct SimCrash {
  std::uint64_t operation = 0;  ///< the number of the operation, from 1
};

/// A disk in memory that outlives a crash of the program, and fails when it is reported to.
///
/// An operation, here, is one that changes the disk: opening a file that is made or emptied, Write, Truncate,
/// Rename, Remove, MakeFolders that makes one, and Sync. Reading is free.
class SimDisk final : public FileSystem {
 public:
  static constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();
  enum class Repeat { Once, ForEver };

  explicit SimDisk(std::uint64_t seed);
  ~SimDisk() override;

  std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) override;
  bool FileExists(const std::filesystem::path& path) override;
  bool FolderExists(const std::filesystem::path& path) override;
  void MakeFolders(const std::filesystem::path& path, std::error_code& error) override;
  void Rename(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) override;
  void Remove(const std::filesystem::path& path, std::error_code& error) override;
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path& folder, std::error_code& error) override;

  /// The bytes of a file as they stand, nothing when there is none. Works on a crashed disk too.
  std::optional<std::string> Contents(const std::filesystem::path& path) const;

  /// Every file on the disk with its bytes, by full name.
  std::map<std::string, std::string> AllFiles() const;

  /// Puts a file there, with its folders, past all faults and as no operation.
  void Put(const std::filesystem::path& path, std::string_view bytes);

  /// Takes a folder away with all that is in it, as when a drive is unplugged. Open files go on as files without a
  /// name.
  void RemoveTree(const std::filesystem::path& folder);

  /// Bytes in all files.
  std::uint64_t Used() const;

  /// The disk holds so many bytes: a write beyond it stores what fits and fails with no_space_on_device.
  void SetCapacity(std::uint64_t bytes) { capacity_ = bytes; }

  /// Nothing in this folder, or below it, can be opened for writing, made, renamed or removed: permission_denied.
  void SetReadOnly(const std::filesystem::path& folder, bool readOnly);

  /// The file cannot be opened at all: permission_denied.
  void SetUnreadable(const std::filesystem::path& file, bool unreadable);

  /// The `n`-th operation from now fails with `reason`, or all from there on. A write that fails keeps a random
  /// leading part, anything else does nothing.
  void FailOperation(std::uint64_t n, Repeat repeat, std::errc reason = std::errc::io_error);

  /// Ends the failing of operations.
  void Heal() { failAt_ = 0; }

  /// The program dies in the `n`-th operation from now: a random leading part of a write is kept, anything else is
  /// done or not. SimCrash is thrown there, and by every later operation and reading until Reboot; while that is
  /// being handled, and after Kill, they fail with io_error, so that destructors can run.
  void CrashAtOperation(std::uint64_t n, std::uint64_t seed);

  /// The program dies here and now, between two operations.
  void Kill();

  /// Called inside each Sync: a slow disk lets time pass there.
  void OnSync(std::function<void()> call) { onSync_ = std::move(call); }

  /// From here on a Reboot after a crash also loses power: of the writes to each file since its last Sync only a
  /// random first few survive, the last of them perhaps in part, and of the names made, moved and removed since the
  /// last Sync of any file only a random first few. Off by default: a program that dies loses nothing that it wrote.
  void SetPowerLoss(bool on);

  /// The disk as the next start of the program finds it. Files still open from before fail. Other faults stay.
  void Reboot();

  /// Operations begun so far.
  std::uint64_t Operations() const { return operations_; }

 private:
  struct Node;
  class OpenFile;
  enum class Fate { Happens, Fails, Dies };
  using Key = std::string;
  struct Names {
    std::map<Key, std::shared_ptr<Node>> files;
    std::set<Key> folders;
  };

  static Key KeyOf(const std::filesystem::path& path);
  static Key ParentOf(const Key& key);

  bool Alive(std::error_code& error);
  Fate NextFate();
  [[noreturn]] void Die();
  template <typename Change>
  void Operate(std::error_code& error, Change change);

  bool IsFolder(const Key& key) const { return names_.folders.contains(key); }
  bool IsReadOnly(const Key& key) const;
  bool IsEmptyFolder(const Key& key) const;
  std::shared_ptr<Node> FindFile(const Key& key) const;
  std::shared_ptr<Node> OpenNode(const Key& key, OpenMode mode, std::error_code& error);
  Names& NamesToChange();

  void WriteNode(Node& node, std::uint64_t position, std::string_view bytes, std::error_code& error);
  void ChangeNode(Node& node, std::uint64_t position, std::string_view bytes = {});
  std::size_t RoomFor(const Node& node, std::uint64_t position, std::size_t size) const;
  void SyncNode(Node& node);

  void LosePower();
  void LoseWrites(Node& node);

  SimRandom random_;
  Names names_{{}, {"/"}};
  std::set<Key> readOnly_;
  std::set<Key> unreadable_;
  std::vector<Names> unsyncedNames_;  // as they stood before each operation on them since the last Sync
  std::uint64_t capacity_ = kUnlimited;
  std::uint64_t operations_ = 0;
  std::uint64_t failAt_ = 0;  // 0: never
  Repeat failRepeat_ = Repeat::Once;
  std::error_code failure_;
  std::uint64_t crashAt_ = 0;  // 0: never
  std::uint64_t boots_ = 0;
  std::function<void()> onSync_;
  bool powerLoss_ = false;
  bool down_ = false;
  bool quiet_ = false;
};

}  // namespace tarvolt
