// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/level_meter.h"

#include <algorithm>
#include <cmath>

namespace tarvolt {
namespace {

constexpr double kHoldMilliseconds = 1500;
constexpr double kFallPerSecond = 12;  // decibels

}  // namespace

double DecibelsFullScale(double counts) {
  if (!(counts > 0)) return kLowestDecibels;
  return std::max(20 * std::log10(counts / kFullScale), kLowestDecibels);
}

void PeakMark::Update(double decibels, double now) {
  const double fallsFrom = std::max(last_, reached_ + kHoldMilliseconds);
  if (now > fallsFrom) level_ -= (now - fallsFrom) / 1000 * kFallPerSecond;
  if (decibels >= level_) {
    level_ = decibels;
    reached_ = now;
  }
  last_ = now;
}

}  // namespace tarvolt
