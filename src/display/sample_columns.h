#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "display/min_max_pyramid.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// One column of doubles in blocks of kBlock, so that growing never moves a value.
class BlockColumn {
 public:
  static constexpr std::int32_t kBlockBits = 14;
  static constexpr std::int32_t kBlock = 1 << kBlockBits;

  void Append(double value) {
    if ((count_ & (kBlock - 1)) == 0) blocks_.push_back(std::make_unique<double[]>(kBlock));
    blocks_.back()[count_ & (kBlock - 1)] = value;
    ++count_;
  }
  double operator[](std::int32_t index) const { return blocks_[index >> kBlockBits][index & (kBlock - 1)]; }
  void Set(std::int32_t index, double value) { blocks_[index >> kBlockBits][index & (kBlock - 1)] = value; }
  std::int32_t Count() const { return count_; }

 private:
  std::vector<std::unique_ptr<double[]>> blocks_;
  std::int32_t count_ = 0;
};

/// One time column, one value column a channel and a pyramid beside each. Movable, not copyable: there is one copy
/// of the data. Indices and channels are not checked here.
class SampleColumns {
 public:
  explicit SampleColumns(int channels = 1) : values_(channels), pyramids_(channels) {}

  int ChannelCount() const { return static_cast<int>(values_.size()); }
  std::int32_t Count() const { return times_.Count(); }

  /// Appends a position whose values are all 0. A value counts for the ranges once SetValue has written it.
  void Append(TimeStamp stamp);

  /// Writes a value of any position; one that was already written is replaced, in the ranges too.
  void SetValue(int channel, std::int32_t index, double value);

  TimeStamp Time(std::int32_t index) const { return times_[index]; }
  double Value(int channel, std::int32_t index) const { return values_[channel][index]; }

  /// Lowest and highest of the positions first..last, both included, in steps that do not grow with their number.
  MinMax Range(int channel, std::int32_t first, std::int32_t last) const;

  /// Lowest and highest of a whole channel, kept as the values arrive.
  MinMax Extremes(int channel) const;

 private:
  BlockColumn times_;
  std::vector<BlockColumn> values_;
  std::vector<MinMaxPyramid> pyramids_;
};

}  // namespace tarvolt
