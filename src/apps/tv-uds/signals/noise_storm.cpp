// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/noise_storm.h"

#include <cmath>

namespace tarvolt::uds {
namespace {

enum Stream : std::uint64_t {
  kHasStorm = 0x5701,
  kStormEnd,
  kHasBurst,
  kBurstStart,
  kStrength,
  kDecay,
  kNoise = 0x5800
};

constexpr double kQuietLevel = 1000;
constexpr double kDeviation = 12;
constexpr double kSecondsAStormSlot = 120;
constexpr double kStormChance = 0.4;
constexpr double kBurstChance = 0.35;  // in a second of a storm
constexpr double kMeanStrength = 700;
constexpr double kRiseSeconds = 0.15;
constexpr double kShortestDecay = 0.4;
constexpr double kLongestDecay = 2.5;
constexpr double kDelayAChannel = 0.08;

// Slots of a second before the present one whose bursts are still above the noise.
constexpr int kSlotsRemembered = 20;

}  // namespace

double NoiseStorm::Value(int channel, const Moment& moment) const {
  return kQuietLevel + Noise(channel, moment) + Bursts(channel, moment.seconds);
}

double NoiseStorm::Noise(int channel, const Moment& moment) const {
  return kDeviation * random_.Gaussian(kNoise + static_cast<std::uint64_t>(channel), moment.number);
}

double NoiseStorm::Bursts(int channel, double seconds) const {
  const double here = seconds - kDelayAChannel * channel;
  const auto now = static_cast<std::int64_t>(std::floor(here));
  double sum = 0;
  for (std::int64_t slot = now - kSlotsRemembered; slot <= now; ++slot) sum += Burst(slot, here);
  return sum / (1 + 0.15 * channel);
}

double NoiseStorm::Burst(std::int64_t slot, double seconds) const {
  const double start = static_cast<double>(slot) + random_.Uniform(kBurstStart, slot);
  if (seconds < start || !InStorm(start) || random_.Uniform(kHasBurst, slot) >= kBurstChance) return 0;
  const double strength = kMeanStrength * random_.Exponential(kStrength, slot);
  const double decay = kShortestDecay + (kLongestDecay - kShortestDecay) * random_.Uniform(kDecay, slot);
  const double age = seconds - start;
  return strength * (1 - std::exp(-age / kRiseSeconds)) * std::exp(-age / decay);
}

bool NoiseStorm::InStorm(double seconds) const {
  const double slots = seconds / kSecondsAStormSlot;
  const auto slot = static_cast<std::int64_t>(std::floor(slots));
  if (random_.Uniform(kHasStorm, slot) >= kStormChance) return false;
  const double length = 0.25 + 0.75 * random_.Uniform(kStormEnd, slot);
  return slots - static_cast<double>(slot) < length;
}

}  // namespace tarvolt::uds
