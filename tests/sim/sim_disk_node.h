#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "sim/sim_disk.h"

namespace tarvolt {

/// A file's bytes, with what it takes to undo the writes that no Sync has made safe.
struct SimDisk::Node {
  /// A write, or a change of the size when `length` is 0.
  struct Write {
    std::uint64_t position = 0;
    std::uint64_t length = 0;
    std::uint64_t oldSize = 0;
    std::string oldBytes;  // those from `position` on that were overwritten or cut off
  };

  std::string bytes;
  std::vector<Write> unsynced;
  bool hasName = true;  // a removed file that is still open takes no room
};

/// What some names stood for before one operation.
struct SimDisk::NameChange {
  std::vector<std::pair<Key, std::shared_ptr<Node>>> filesBefore;  // null: no such file
  std::vector<Key> foldersMade;
  std::vector<Key> foldersRemoved;
};

}  // namespace tarvolt
