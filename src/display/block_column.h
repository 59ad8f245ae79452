// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace tarvolt {

/// One column of doubles in blocks of kBlock, so that growing never moves a value. Indices are not checked.
class BlockColumn {
 public:
  static constexpr std::int32_t kBlockBits = 14;
  static constexpr std::int32_t kBlock = 1 << kBlockBits;

  BlockColumn() = default;
  BlockColumn(BlockColumn&& other) noexcept
      : blocks_(std::move(other.blocks_)), count_(std::exchange(other.count_, 0)) {}
  BlockColumn& operator=(BlockColumn&& other) noexcept {
    blocks_ = std::move(other.blocks_);
    count_ = std::exchange(other.count_, 0);
    return *this;
  }

  /// Takes the memory for the next Append, which then cannot fail. Throws std::bad_alloc.
  void MakeRoom() {
    if (static_cast<std::size_t>(count_ >> kBlockBits) == blocks_.size()) {
      blocks_.push_back(std::make_unique_for_overwrite<double[]>(kBlock));
    }
  }
  /// The same for so many.
  void MakeRoom(std::int32_t values) {
    while (static_cast<std::int64_t>(blocks_.size()) << kBlockBits < std::int64_t{count_} + values) {
      blocks_.push_back(std::make_unique_for_overwrite<double[]>(kBlock));
    }
  }
  void Append(double value) {
    MakeRoom();
    Set(count_++, value);
  }
  void Append(std::span<const double> values) {
    MakeRoom(static_cast<std::int32_t>(values.size()));
    while (!values.empty()) {
      const std::size_t inBlock = static_cast<std::size_t>(count_ & (kBlock - 1));
      const std::span<const double> piece = values.first(std::min(values.size(), kBlock - inBlock));
      std::copy(piece.begin(), piece.end(), &blocks_[count_ >> kBlockBits][inBlock]);
      count_ += static_cast<std::int32_t>(piece.size());
      values = values.subspan(piece.size());
    }
  }
  double operator[](std::int32_t index) const { return blocks_[index >> kBlockBits][index & (kBlock - 1)]; }
  void Set(std::int32_t index, double value) { blocks_[index >> kBlockBits][index & (kBlock - 1)] = value; }
  std::int32_t Count() const { return count_; }

  /// The values from `index` on that lie in one piece of memory, at most `most`; one at least when `most` is.
  std::span<const double> Piece(std::int32_t index, std::int32_t most) const {
    const std::int32_t inBlock = index & (kBlock - 1);
    return {&blocks_[index >> kBlockBits][inBlock], static_cast<std::size_t>(std::min(most, kBlock - inBlock))};
  }

 private:
  std::vector<std::unique_ptr<double[]>> blocks_;
  std::int32_t count_ = 0;
};

}  // namespace tarvolt
