// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

namespace tarvolt {

/// Makes blocks of one size out of what a driver delivers in any pieces, and holds them for another thread. Safe to be
/// used by two threads. What nobody takes in time is dropped, the newest first, and counted.
class BlockQueue {
 public:
  /// A block, and when its last byte was heard, in milliseconds.
  struct Block {
    std::vector<char> bytes;
    double heardAt = 0;
  };

  /// `blockBytes` and `mostBlocks` are at least 1.
  BlockQueue(std::size_t blockBytes, std::size_t mostBlocks, double bytesPerMillisecond);

  /// Adds bytes behind those before, of which the last was heard at `heardAt`.
  void Put(const char* bytes, std::size_t count, double heardAt);

  /// Forgets what is held, and the beginning of a block.
  void Clear();

  /// The oldest block; nothing when none is ready.
  std::optional<Block> Take();

  /// Gives the memory of a block back for the next one.
  void Return(Block block);

  /// Blocks that are ready.
  std::size_t Ready() const;

  /// Notes blocks that were lost before they came here; the block that had begun is lost with them.
  void NoteLost(std::int64_t blocks);

  /// Blocks lost since the last call.
  std::int64_t TakeLost();

 private:
  void KeepOrDrop();

  mutable std::mutex mutex_;
  const std::size_t blockBytes_;
  const std::size_t mostBlocks_;
  const double bytesPerMillisecond_;
  Block growing_;
  std::deque<Block> ready_;
  std::vector<Block> spare_;
  std::int64_t lost_ = 0;
};

}  // namespace tarvolt
