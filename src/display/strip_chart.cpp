#include "display/strip_chart.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace tarvolt {

void StripChart::SetCapacity(std::int32_t count) {
  capacity_ = std::max(count, 0);
}

std::int32_t StripChart::Capacity() const {
  return capacity_;
}

void StripChart::SetChannelCount(int channels) {
  if (Count() > 0) return;
  samples_ = SampleColumns(std::clamp(channels, 1, kMaxChannels));
  ++RepaintRequests;
}

bool StripChart::AddChannels(int count) {
  if (count < 0 || ChannelCount() + count > kMaxChannels) return false;
  try {
    samples_.AddChannels(count);
  } catch (const std::bad_alloc&) {
    return false;
  }
  ++RepaintRequests;
  return true;
}

int StripChart::ChannelCount() const {
  return samples_.ChannelCount();
}

void StripChart::ClearData() {
  TakeSamples();
}

SampleColumns StripChart::TakeSamples() {
  ++RepaintRequests;
  return std::exchange(samples_, SampleColumns(ChannelCount()));
}

const SampleColumns& StripChart::Samples() const {
  return samples_;
}

std::int32_t StripChart::AddTime(TimeStamp stamp) {
  const std::int32_t index = Count();
  if (index >= capacity_) return index;
  try {
    samples_.Append(stamp);
  } catch (const std::bad_alloc&) {
    return index;  // what is stored already must outlive a full memory
  }
  return index;
}

void StripChart::SetValue(int channel, std::int32_t index, double value) {
  if (!Holds(channel, index)) return;
  samples_.SetValue(channel, index, value);
}

TimeStamp StripChart::GetTime(std::int32_t index) const {
  if (index < 0 || index >= Count()) throw std::out_of_range("TIME INDEX out of range");
  return samples_.Time(index);
}

double StripChart::GetValue(int channel, std::int32_t index) const {
  return Holds(channel, index) ? samples_.Value(channel, index) : 0;
}

std::int32_t StripChart::Count() const {
  return samples_.Count();
}

double StripChart::DataMin() const {
  const MinMax extremes = Extremes();
  return extremes.IsEmpty() ? 0 : extremes.lowest;
}

double StripChart::DataMax() const {
  const MinMax extremes = Extremes();
  return extremes.IsEmpty() ? 0 : extremes.highest;
}

double StripChart::ChannelMin(int channel) const {
  const MinMax extremes = Extremes(channel);
  return extremes.IsEmpty() ? 0 : extremes.lowest;
}

double StripChart::ChannelMax(int channel) const {
  const MinMax extremes = Extremes(channel);
  return extremes.IsEmpty() ? 0 : extremes.highest;
}

MinMax StripChart::Range(int channel, std::int32_t first, std::int32_t last) const {
  first = std::max(first, 0);
  last = std::min(last, Count() - 1);
  if (!Holds(channel) || first > last) return {};
  return samples_.Range(channel, first, last);
}

MinMax StripChart::Extremes(int channel) const {
  return Holds(channel) ? samples_.Extremes(channel) : MinMax{};
}

MinMax StripChart::Extremes() const {
  MinMax result;
  for (int channel = 0; channel < ChannelCount(); ++channel) result.Widen(samples_.Extremes(channel));
  return result;
}

void StripChart::ScaleYToData() {
  if (Count() == 0) return;
  YAxisMin = DataMin();
  YAxisMax = DataMax();
  if (YAxisMin != YAxisMax) return;
  YAxisMin -= 0.1;
  YAxisMax += 0.1;
}

}  // namespace tarvolt
