// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/min_max_pyramid.h"

#include <algorithm>

namespace tarvolt {

void MinMaxPyramid::Cover(std::int32_t index) {
  if (index % kBase != 0) return;
  std::int32_t bin = index >> kBaseBits;
  for (auto& level : levels_) {
    // Each level is looked at by itself: an earlier call may have run out of memory half way up.
    if (static_cast<std::size_t>(bin) == level.size()) level.emplace_back();
    bin >>= kFanBits;
  }
}

void MinMaxPyramid::Add(std::int32_t index, double value) {
  std::int32_t bin = index >> kBaseBits;
  for (auto& level : levels_) {
    MinMax& known = level[bin];
    const MinMax before = known;
    known.Widen(value);
    if (known == before) return;  // a coarser bin holds at least as much
    bin >>= kFanBits;
  }
}

void MinMaxPyramid::Add(std::int32_t first, std::span<const double> values) {
  while (!values.empty()) {
    const std::span<const double> inBin =
        values.first(std::min(values.size(), static_cast<std::size_t>(kBase - first % kBase)));
    MinMax ofBin;
    for (const double value : inBin) {
      ofBin.lowest = value < ofBin.lowest ? value : ofBin.lowest;
      ofBin.highest = value > ofBin.highest ? value : ofBin.highest;
    }
    Widen(first >> kBaseBits, ofBin);
    first += static_cast<std::int32_t>(inBin.size());
    values = values.subspan(inBin.size());
  }
}

void MinMaxPyramid::Widen(std::int32_t bin, const MinMax& values) {
  for (auto& level : levels_) {
    MinMax& known = level[bin];
    const MinMax before = known;
    known.Widen(values);
    if (known == before) return;  // a coarser bin holds at least as much
    bin >>= kFanBits;
  }
}

void MinMaxPyramid::Recount(const BlockColumn& values, std::int32_t index) {
  std::int32_t bin = index >> kBaseBits;
  for (int level = 0; level < kLevels; ++level) {
    const MinMax fresh = BinFromBelow(values, level, bin);
    if (fresh == levels_[level][bin]) return;  // nothing above can have changed
    levels_[level][bin] = fresh;
    bin >>= kFanBits;
  }
}

MinMax MinMaxPyramid::BinFromBelow(const BlockColumn& values, int level, std::int32_t bin) const {
  MinMax result;
  if (level == 0) {
    const std::int64_t begin = std::int64_t{bin} << kBaseBits;
    const std::int64_t end = std::min<std::int64_t>(begin + kBase, values.Count());
    for (std::int64_t i = begin; i < end; ++i) result.Widen(values[static_cast<std::int32_t>(i)]);
    return result;
  }
  const std::vector<MinMax>& below = levels_[level - 1];
  const std::size_t begin = static_cast<std::size_t>(bin) << kFanBits;
  const std::size_t end = std::min(begin + kFan, below.size());
  for (std::size_t i = begin; i < end; ++i) result.Widen(below[i]);
  return result;
}

MinMax MinMaxPyramid::Range(const BlockColumn& values, std::int32_t first, std::int32_t last) const {
  MinMax result;
  std::int64_t begin = first;
  std::int64_t end = std::int64_t{last} + 1;

  // The ragged ends are read at the finest level that has them; what is left between are whole coarser bins.
  while (begin < end && begin % kBase != 0) result.Widen(values[static_cast<std::int32_t>(begin++)]);
  while (begin < end && end % kBase != 0) result.Widen(values[static_cast<std::int32_t>(--end)]);
  begin >>= kBaseBits;
  end >>= kBaseBits;
  for (int level = 0; level + 1 < kLevels && begin < end; ++level) {
    while (begin < end && begin % kFan != 0) result.Widen(levels_[level][begin++]);
    while (begin < end && end % kFan != 0) result.Widen(levels_[level][--end]);
    begin >>= kFanBits;
    end >>= kFanBits;
  }
  while (begin < end) result.Widen(levels_.back()[begin++]);
  return result;
}

MinMax MinMaxPyramid::Whole() const {
  MinMax result;
  for (const MinMax& bin : levels_.back()) result.Widen(bin);
  return result;
}

}  // namespace tarvolt
