// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

namespace tarvolt {

/// Peak, Average and Power of one side (0 left) of `frames` frames from `first` on of a stereo sound, from what the
/// words mean; the power divided by `factor`.
inline std::vector<double> ReadingsOf(const std::vector<std::int16_t>& samples, int side, int first, int frames,
                                      double factor) {
  const auto size = [&](int frame) { return std::fabs(samples[static_cast<std::size_t>(2 * (first + frame) + side)]); };
  double peaks = 0;
  for (int block = 0; block < 10; ++block) {
    double high = 0;
    for (int i = 0; i < frames / 10; ++i) high = std::fmax(high, size(block * (frames / 10) + i));
    peaks += high / 10;
  }
  double mean = 0;
  double square = 0;
  for (int i = 0; i < frames; ++i) {
    mean += size(i) / frames;
    square += size(i) * size(i) / frames;
  }
  return {peaks, mean, square / factor};
}

}  // namespace tarvolt
