// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/test_signals.h"

#include <cmath>
#include <numbers>

namespace tarvolt::uds {

double Sine::Value(int channel, const Moment& moment) const {
  const double period = 60.0 / (channel + 1);
  return 1000 * std::sin(2 * std::numbers::pi * moment.seconds / period);
}

double Ramp::Value(int channel, const Moment& moment) const {
  return static_cast<double>(moment.number) + 1000000.0 * channel;
}

double Staircase::Value(int channel, const Moment& moment) const {
  constexpr double kSecondsAStep = 5;
  constexpr double kLevels = 11;
  const double level = std::fmod(std::floor(moment.seconds / kSecondsAStep), kLevels);
  return level * 100 * (channel + 1);
}

}  // namespace tarvolt::uds
