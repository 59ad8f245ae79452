// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/sample_columns.h"

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
