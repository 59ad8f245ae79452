// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "display/strip_chart.h"

namespace tarvolt::bench {

inline constexpr int kBenchChannels = 8;
using Values = std::array<double, kBenchChannels>;

/// The stamps and values of the samples that the figures are taken with: ten a second, with some noise on each channel.
inline TimeStamp StampOf(std::int64_t sample) {
  return 40180.5 + static_cast<double>(sample) * 0.1 / 86400;
}

inline Values ValuesOf(std::int64_t sample) {
  auto noise = static_cast<std::uint64_t>(sample) * 0x9E3779B97F4A7C15u;
  Values values{};
  for (double& value : values) {
    value = 500 + static_cast<double>(noise % 4096) / 16;
    noise = (noise >> 7) | (noise << 57);
  }
  return values;
}

inline void StoreSample(StripChart& chart, std::int64_t sample) {
  const std::int32_t index = chart.AddTime(StampOf(sample));
  const Values values = ValuesOf(sample);
  for (int channel = 0; channel < kBenchChannels; ++channel) chart.SetValue(channel, index, values[channel]);
}

}  // namespace tarvolt::bench
