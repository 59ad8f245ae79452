// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/galaxy.h"

#include <cmath>
#include <numbers>

#include "apps/tv-uds/signals/random.h"

namespace tarvolt::uds {
namespace {

constexpr double kSecondsOfSiderealDay = 86164.0905;
constexpr double kQuietLevel = 800;

/// 1 at the hump's own hour, falling to both sides and closed round the clock.
double Hump(double hour, double centreHour, double sharpness) {
  const double angle = 2 * std::numbers::pi * (hour - centreHour) / 24;
  return std::exp(sharpness * (std::cos(angle) - 1));
}

}  // namespace

Galaxy::Galaxy(std::uint64_t seed) : startHour_(24 * Random(seed).Uniform(0x6A1A, 0)) {}

double Galaxy::Value(int channel, const Moment& moment) const {
  const double hour = startHour_ + 24 * moment.seconds / kSecondsOfSiderealDay;
  const double sky = 900 * Hump(hour, 18.3, 4) + 350 * Hump(hour, 6.0, 5);
  return (kQuietLevel + sky) / (1 + 0.25 * channel);
}

}  // namespace tarvolt::uds
