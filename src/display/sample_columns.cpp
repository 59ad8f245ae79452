// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/sample_columns.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tarvolt {

void SampleColumns::Append(TimeStamp stamp) {
  // All memory is taken before anything is stored, so that a failure leaves the columns of one length.
  times_.MakeRoom();
  for (auto& column : values_) column.MakeRoom();
  for (auto& pyramid : pyramids_) pyramid.Cover(Count());

  NoteTime(stamp);
  times_.Append(stamp);
  for (auto& column : values_) column.Append(kUnwritten);
}

void SampleColumns::Append(std::span<const double> times, std::span<const std::span<const double>> values) {
  const auto added = static_cast<std::int32_t>(times.size());
  const std::int32_t first = Count();
  times_.MakeRoom(added);
  for (auto& column : values_) column.MakeRoom(added);
  for (auto& pyramid : pyramids_) {
    for (std::int32_t index = first; index < first + added; ++index) pyramid.Cover(index);
  }

  for (const double time : times) {
    NoteTime(time);
    times_.Append(time);
  }
  const std::size_t written = std::min(values.size(), values_.size());
  for (std::size_t channel = 0; channel < written; ++channel) {
    values_[channel].Append(values[channel]);
    pyramids_[channel].Add(first, values[channel]);
    // What happens to be the mark of an unwritten value is no number either way.
    for (std::int32_t i = 0; i < added; ++i) {
      if (!IsUnwritten(values[channel][static_cast<std::size_t>(i)])) continue;
      values_[channel].Set(first + i, std::numeric_limits<double>::quiet_NaN());
    }
  }
  for (std::size_t channel = written; channel < values_.size(); ++channel) {
    for (std::int32_t i = 0; i < added; ++i) values_[channel].Append(kUnwritten);
  }
}

void SampleColumns::NoteTime(TimeStamp stamp) {
  const bool follows = Count() == 0 ? !std::isnan(stamp) : stamp >= Time(Count() - 1);
  if (!follows && TimesRise()) firstStepBack_ = Count();
  if (std::isfinite(stamp)) timeSpan_.Widen(stamp);
}

void SampleColumns::AddChannels(int count) {
  const auto wanted = values_.size() + static_cast<std::size_t>(count);
  values_.reserve(wanted);
  pyramids_.reserve(wanted);
  std::vector<BlockColumn> columns(static_cast<std::size_t>(count));
  std::vector<MinMaxPyramid> pyramids(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    for (std::int32_t index = 0; index < Count(); ++index) {
      pyramids[i].Cover(index);
      columns[i].Append(kUnwritten);
    }
  }
  for (auto& column : columns) values_.push_back(std::move(column));
  for (auto& pyramid : pyramids) pyramids_.push_back(std::move(pyramid));
}

void SampleColumns::SetValue(int channel, std::int32_t index, double value) {
  BlockColumn& column = values_[channel];
  const bool heldNumber = !std::isnan(column[index]);
  column.Set(index, IsUnwritten(value) ? std::numeric_limits<double>::quiet_NaN() : value);
  if (heldNumber) {
    pyramids_[channel].Recount(column, index);
  } else {
    pyramids_[channel].Add(index, value);
  }
}

MinMax SampleColumns::Range(int channel, std::int32_t first, std::int32_t last) const {
  return pyramids_[channel].Range(values_[channel], first, last);
}

MinMax SampleColumns::Extremes(int channel) const {
  return pyramids_[channel].Whole();
}

}  // namespace tarvolt
