// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "display/block_column.h"

namespace tarvolt {

/// Lowest and highest of some values. `lowest > highest` when there were none; values that are not numbers do not
/// count.
struct MinMax {
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -std::numeric_limits<double>::infinity();

  bool IsEmpty() const { return lowest > highest; }

  /// Takes a value in. Both comparisons are false for what is not a number.
  void Widen(double value) {
    if (value < lowest) lowest = value;
    if (value > highest) highest = value;
  }
  void Widen(const MinMax& other) {
    if (other.lowest < lowest) lowest = other.lowest;
    if (other.highest > highest) highest = other.highest;
  }

  bool operator==(const MinMax&) const = default;
};

/// Levels of lowest and highest over one column of values. A bin of the base level covers 32 positions, one of each
/// further level 8 bins of the level below. Bin n of a level always covers the same positions, however much is
/// stored, so an answer never depends on the view; the bin still being filled is as good as any other.
class MinMaxPyramid {
 public:
  static constexpr int kBaseBits = 5;
  static constexpr int kFanBits = 3;

  /// Takes the memory for position `index`, one behind the last covered so far or an earlier one. Throws
  /// std::bad_alloc.
  void Cover(std::int32_t index);

  /// Counts a value at a covered position that held none. Steps: the levels.
  void Add(std::int32_t index, double value);

  /// The same for values at the covered positions from `first` on.
  void Add(std::int32_t first, std::span<const double> values);

  /// Counts anew after the value at a covered position was replaced. Steps: the bins above it.
  void Recount(const BlockColumn& values, std::int32_t index);

  /// Over the positions first..last of the column, both included and both stored. Steps: fan-out x levels.
  MinMax Range(const BlockColumn& values, std::int32_t first, std::int32_t last) const;

  /// Over everything.
  MinMax Whole() const;

 private:
  /// The top bins cover 2^26 positions each: few enough to walk for any 32-bit count.
  static constexpr int kLevels = 8;
  static constexpr std::int32_t kBase = 1 << kBaseBits;
  static constexpr std::int32_t kFan = 1 << kFanBits;

  void Widen(std::int32_t baseBin, const MinMax& values);
  MinMax BinFromBelow(const BlockColumn& values, int level, std::int32_t bin) const;

  std::array<std::vector<MinMax>, kLevels> levels_;
};

}  // namespace tarvolt
