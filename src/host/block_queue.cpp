// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/block_queue.h"

#include <algorithm>
#include <utility>

namespace tarvolt {

BlockQueue::BlockQueue(std::size_t blockBytes, std::size_t mostBlocks, double bytesPerMillisecond)
    : blockBytes_(std::max<std::size_t>(blockBytes, 1)),
      mostBlocks_(std::max<std::size_t>(mostBlocks, 1)),
      bytesPerMillisecond_(bytesPerMillisecond) {}

void BlockQueue::Put(const char* bytes, std::size_t count, double heardAt) {
  const std::lock_guard lock(mutex_);
  while (count > 0) {
    const std::size_t taken = std::min(count, blockBytes_ - growing_.bytes.size());
    growing_.bytes.insert(growing_.bytes.end(), bytes, bytes + taken);
    bytes += taken;
    count -= taken;
    growing_.heardAt = heardAt - static_cast<double>(count) / bytesPerMillisecond_;
    if (growing_.bytes.size() == blockBytes_) KeepOrDrop();
  }
}

void BlockQueue::KeepOrDrop() {
  if (ready_.size() < mostBlocks_) {
    ready_.push_back(std::move(growing_));
    growing_ = Block();
    if (!spare_.empty()) {
      growing_ = std::move(spare_.back());
      spare_.pop_back();
    }
    growing_.bytes.reserve(blockBytes_);
  } else {
    ++lost_;
  }
  growing_.bytes.clear();
}

void BlockQueue::Clear() {
  const std::lock_guard lock(mutex_);
  growing_.bytes.clear();
  ready_.clear();
}

std::optional<BlockQueue::Block> BlockQueue::Take() {
  const std::lock_guard lock(mutex_);
  if (ready_.empty()) return std::nullopt;
  Block block = std::move(ready_.front());
  ready_.pop_front();
  return block;
}

void BlockQueue::Return(Block block) {
  const std::lock_guard lock(mutex_);
  if (spare_.size() < mostBlocks_) spare_.push_back(std::move(block));
}

std::size_t BlockQueue::Ready() const {
  const std::lock_guard lock(mutex_);
  return ready_.size();
}

void BlockQueue::NoteLost(std::int64_t blocks) {
  const std::lock_guard lock(mutex_);
  growing_.bytes.clear();  // what comes next does not follow on it
  lost_ += blocks;
}

std::int64_t BlockQueue::TakeLost() {
  const std::lock_guard lock(mutex_);
  return std::exchange(lost_, 0);
}

}  // namespace tarvolt
