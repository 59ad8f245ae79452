// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <vector>

#include "display/block_column.h"
#include "display/min_max_pyramid.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// One time column, one value column a channel and a pyramid beside each. Movable, not copyable: there is one copy
/// of the data. Indices and channels are not checked here.
class SampleColumns {
 public:
  explicit SampleColumns(int channels = 1) : values_(channels), pyramids_(channels) {}

  int ChannelCount() const { return static_cast<int>(values_.size()); }
  std::int32_t Count() const { return times_.Count(); }

  /// Adds columns in which nothing is written. Throws std::bad_alloc with the columns as they were.
  void AddChannels(int count);

  /// Appends a position whose values are all 0. A value counts for the ranges once SetValue has written it. Throws
  /// std::bad_alloc with the columns as they were.
  void Append(TimeStamp stamp);

  /// Appends samples: their times, and as many values of each of the first channels. The others are as above. Throws
  /// as above.
  void Append(std::span<const double> times, std::span<const std::span<const double>> values);

  /// Writes a value of any position; one that was already written is replaced, in the ranges too.
  void SetValue(int channel, std::int32_t index, double value);

  TimeStamp Time(std::int32_t index) const { return times_[index]; }

  /// The first position whose stamp lies before the one in front of it, or is not a number; -1 while times rise, equal
  /// ones included. Only then can a time be found by halving.
  std::int32_t FirstStepBack() const { return firstStepBack_; }
  bool TimesRise() const { return firstStepBack_ < 0; }

  /// The earliest and the latest of the finite stamps, in whatever order they come; empty without any.
  const MinMax& TimeSpan() const { return timeSpan_; }

  double Value(int channel, std::int32_t index) const { return Shown(values_[channel][index]); }

  /// For writers, who go through everything: the times, or the values of a channel, from `first` on that lie in one
  /// piece of memory, at most `most`. All columns are cut at the same positions. Values are to be read by Shown.
  std::span<const double> TimePiece(std::int32_t first, std::int32_t most) const { return times_.Piece(first, most); }
  std::span<const double> ValuePiece(int channel, std::int32_t first, std::int32_t most) const {
    return values_[channel].Piece(first, most);
  }

  /// What a value column holds, as everybody is to see it: 0 for what nobody has written.
  static double Shown(double stored) { return IsUnwritten(stored) ? 0 : stored; }

  /// Lowest and highest of the positions first..last, both included, in steps that do not grow with their number.
  MinMax Range(int channel, std::int32_t first, std::int32_t last) const;

  /// Lowest and highest of a whole channel, kept as the values arrive.
  MinMax Extremes(int channel) const;

 private:
  /// Stands in a value column for a value that nobody has written yet: one bit pattern among those that are not a
  /// number, so that the ranges pass over it without being told.
  static constexpr std::uint64_t kUnwrittenBits = 0x7FF8'5441'5256'4F4C;
  static constexpr double kUnwritten = std::bit_cast<double>(kUnwrittenBits);
  static bool IsUnwritten(double stored) { return std::bit_cast<std::uint64_t>(stored) == kUnwrittenBits; }

  void NoteTime(TimeStamp stamp);

  BlockColumn times_;
  std::int32_t firstStepBack_ = -1;
  MinMax timeSpan_;
  std::vector<BlockColumn> values_;
  std::vector<MinMaxPyramid> pyramids_;
};

}  // namespace tarvolt
