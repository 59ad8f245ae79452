// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/lightning.h"

#include <cmath>

namespace tarvolt::uds {
namespace {

enum Stream : std::uint64_t { kHasSpike = 0x7101, kSpikeStart, kStrength, kShare = 0x7200, kNoise = 0x7300 };

constexpr double kQuietLevel = 500;
constexpr double kSpikeChance = 0.06;  // in a second
constexpr double kMeanStrength = 1800;
constexpr double kDecaySeconds = 0.06;
constexpr std::int64_t kSlotsRemembered = 2;  // seconds after which nothing is left of a spike

}  // namespace

double Lightning::Value(int channel, const Moment& moment) const {
  const double noise = 3 * random_.Gaussian(kNoise + static_cast<std::uint64_t>(channel), moment.number);
  return kQuietLevel + noise + Spikes(channel, moment.seconds);
}

double Lightning::Spikes(int channel, double seconds) const {
  const auto now = static_cast<std::int64_t>(std::floor(seconds));
  double sum = 0;
  for (std::int64_t slot = now - kSlotsRemembered; slot <= now; ++slot) {
    const double age = seconds - (static_cast<double>(slot) + random_.Uniform(kSpikeStart, slot));
    if (age < 0 || random_.Uniform(kHasSpike, slot) >= kSpikeChance) continue;
    const double share = 0.4 + 0.6 * random_.Uniform(kShare + static_cast<std::uint64_t>(channel), slot);
    sum += share * kMeanStrength * random_.Exponential(kStrength, slot) * std::exp(-age / kDecaySeconds);
  }
  return sum;
}

}  // namespace tarvolt::uds
