// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/sample_store.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace tarvolt {

void SampleStore::SetCapacity(std::int32_t count) {
  capacity_ = std::max(count, 0);
}

std::int32_t SampleStore::Capacity() const {
  return capacity_;
}

void SampleStore::SetChannelCount(int channels) {
  if (Count() > 0) return;
  samples_ = SampleColumns(std::clamp(channels, 1, kMaxChannels));
  ++RepaintRequests;
}

bool SampleStore::AddChannels(int count) {
  if (count < 0 || ChannelCount() + count > kMaxChannels) return false;
  try {
    samples_.AddChannels(count);
  } catch (const std::bad_alloc&) {
    return false;
  }
  ++RepaintRequests;
  return true;
}

int SampleStore::ChannelCount() const {
  return samples_.ChannelCount();
}

void SampleStore::ClearData() {
  TakeSamples();
}

SampleColumns SampleStore::TakeSamples() {
  ++RepaintRequests;
  return std::exchange(samples_, SampleColumns(ChannelCount()));
}

const SampleColumns& SampleStore::Samples() const {
  return samples_;
}

std::int32_t SampleStore::AddTime(TimeStamp stamp) {
  const std::int32_t index = Count();
  if (index >= capacity_) return index;
  try {
    samples_.Append(stamp);
  } catch (const std::bad_alloc&) {
    return index;  // what is stored already must outlive a full memory
  }
  return index;
}

bool SampleStore::AddSamples(std::span<const double> times, std::span<const std::span<const double>> values) {
  if (std::int64_t{Count()} + static_cast<std::int64_t>(times.size()) > capacity_) return false;
  try {
    samples_.Append(times, values);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

void SampleStore::SetValue(int channel, std::int32_t index, double value) {
  if (!Holds(channel, index)) return;
  samples_.SetValue(channel, index, value);
}

TimeStamp SampleStore::GetTime(std::int32_t index) const {
  if (index < 0 || index >= Count()) throw std::out_of_range("TIME INDEX out of range");
  return samples_.Time(index);
}

double SampleStore::GetValue(int channel, std::int32_t index) const {
  return Holds(channel, index) ? samples_.Value(channel, index) : 0;
}

std::int32_t SampleStore::Count() const {
  return samples_.Count();
}

double SampleStore::DataMin() const {
  const MinMax extremes = Extremes();
  return extremes.IsEmpty() ? 0 : extremes.lowest;
}

double SampleStore::DataMax() const {
  const MinMax extremes = Extremes();
  return extremes.IsEmpty() ? 0 : extremes.highest;
}

double SampleStore::ChannelMin(int channel) const {
  const MinMax extremes = Extremes(channel);
  return extremes.IsEmpty() ? 0 : extremes.lowest;
}

double SampleStore::ChannelMax(int channel) const {
  const MinMax extremes = Extremes(channel);
  return extremes.IsEmpty() ? 0 : extremes.highest;
}

MinMax SampleStore::Range(int channel, std::int32_t first, std::int32_t last) const {
  first = std::max(first, 0);
  last = std::min(last, Count() - 1);
  if (!Holds(channel) || first > last) return {};
  return samples_.Range(channel, first, last);
}

MinMax SampleStore::Extremes(int channel) const {
  return Holds(channel) ? samples_.Extremes(channel) : MinMax{};
}

MinMax SampleStore::Extremes() const {
  MinMax result;
  for (int channel = 0; channel < ChannelCount(); ++channel) result.Widen(samples_.Extremes(channel));
  return result;
}

}  // namespace tarvolt
