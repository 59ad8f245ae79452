// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "display/min_max_pyramid.h"
#include "display/sample_columns.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// The samples of a chart: one time and a value for each channel at every index, from 0 on. Values are stored with
/// their channel offset.
class SampleStore {
 public:
  static constexpr int kMaxChannels = 9;

  /// Reserves nothing but sets the limit, at least 0: AddTime refuses beyond it. Samples already stored stay.
  void SetCapacity(std::int32_t count);
  std::int32_t Capacity() const;

  /// Number of value columns of the samples added from now on, held to 1 to kMaxChannels. Ignored unless the store
  /// is empty.
  void SetChannelCount(int channels);
  int ChannelCount() const;

  /// Adds value columns to the samples that are stored, all 0 until set. False, with nothing changed, when that were
  /// more than kMaxChannels or memory is full.
  bool AddChannels(int count);

  /// Drops all samples and the data range.
  void ClearData();

  /// Takes all samples away, leaving the store empty with the same channels and capacity.
  SampleColumns TakeSamples();

  /// The stored samples, for writers and drawing.
  const SampleColumns& Samples() const;

  /// Appends a position at that x value and gives its index. When the store is full, or memory is, nothing is
  /// stored and the index is Count(). The values of a new position are 0 until set.
  std::int32_t AddTime(TimeStamp stamp);

  /// Appends samples: their times, and as many values of each channel in `values`, which may be the first channels
  /// alone; those of the others are 0 until set. False, with nothing stored,
  /// when they are more than the store, or memory, has room for.
  bool AddSamples(std::span<const double> times, std::span<const std::span<const double>> values);

  /// Writes one value. An index or channel outside the store is ignored.
  void SetValue(int channel, std::int32_t index, double value);

  /// Throws std::out_of_range with "TIME INDEX" in its text when the index has no sample.
  TimeStamp GetTime(std::int32_t index) const;

  /// 0 when the index or channel has no sample.
  double GetValue(int channel, std::int32_t index) const;

  std::int32_t Count() const;

  /// Lowest and highest stored value over all channels; 0 with no data. Not-a-number values do not count.
  double DataMin() const;
  double DataMax() const;

  /// Both at once; empty with no data.
  MinMax Extremes() const;

  /// The same for one channel; 0 for a channel outside the store.
  double ChannelMin(int channel) const;
  double ChannelMax(int channel) const;

  /// Lowest and highest of the samples first..last of a channel, both included, cut to the store.
  MinMax Range(int channel, std::int32_t first, std::int32_t last) const;

  /// Rises with every change that a drawing is to show at once. New samples do not: whoever adds them asks when due.
  std::uint64_t RepaintRequests = 0;

 private:
  bool Holds(int channel) const { return channel >= 0 && channel < ChannelCount(); }
  bool Holds(int channel, std::int32_t index) const { return Holds(channel) && index >= 0 && index < Count(); }
  MinMax Extremes(int channel) const;

  SampleColumns samples_;
  std::int32_t capacity_ = 1000000;
};

}  // namespace tarvolt
