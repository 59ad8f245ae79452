// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "apps/tv-uds/signals/galaxy.h"
#include "apps/tv-uds/signals/lightning.h"
#include "apps/tv-uds/signals/live_source.h"
#include "apps/tv-uds/signals/noise_storm.h"

namespace tarvolt::uds {
namespace {

constexpr double kSiderealDay = 86164.0905;

std::vector<double> Stretch(const std::string& kind, std::uint64_t seed, int channel) {
  const auto signal = MakeSignal(kind, seed);
  std::vector<double> values;
  for (int n = 0; n < 6000; ++n) values.push_back(signal->Value(channel, {n, n / 10.0}));
  return values;
}

TEST(TvUdsSignals, AreRepeatableFromTheirSeedAndDifferFromChannelToChannel) {
  for (const std::string& kind : SignalKinds()) {
    SCOPED_TRACE(kind);
    const std::vector<double> first = Stretch(kind, 7, 0);
    EXPECT_TRUE(std::all_of(first.begin(), first.end(), [](double v) { return std::isfinite(v); }));
    EXPECT_EQ(first, Stretch(kind, 7, 0));
    EXPECT_NE(first, Stretch(kind, 7, 1));
    EXPECT_NE(Stretch(kind, 7, 6), Stretch(kind, 7, 7));
    const bool isExact = kind == "sine" || kind == "ramp" || kind == "staircase";
    EXPECT_EQ(first == Stretch(kind, 8, 0), isExact);
  }
  EXPECT_EQ(MakeSignal("Sine", 1), nullptr);
}

TEST(TvUdsSignals, StaircaseHasElevenLevelsAndStartsAnew) {
  const LiveSource source(MakeSignal("staircase", 1), 2, 10);
  EXPECT_EQ(source.Set(49), (std::vector<double>{0, 0}));
  EXPECT_EQ(source.Set(50), (std::vector<double>{100, 200}));
  EXPECT_EQ(source.Set(549), (std::vector<double>{1000, 2000}));
  EXPECT_EQ(source.Set(550), (std::vector<double>{0, 0}));
}

// What the eye would look for: the galaxy comes once in a sidereal day, noise has its width, a storm has bursts and
// pauses between them, and lightning strikes all channels at once.
TEST(TvUdsSignals, LookLikeWhatTheyAreNamedAfter) {
  const Galaxy galaxy(3);
  EXPECT_NEAR(galaxy.Value(0, {0, 0.37 * kSiderealDay}), galaxy.Value(0, {0, 1.37 * kSiderealDay}), 1e-6);
  EXPECT_GT(std::abs(galaxy.Value(0, {0, 0}) - galaxy.Value(0, {0, 0.5 * kSiderealDay})), 100);

  const NoiseStorm storm(5);
  const Lightning lightning(2);
  double squares = 0;
  int quiet = 0;
  int strikes = 0;
  constexpr int kSamples = 40000;
  for (int n = 0; n < kSamples; ++n) {
    squares += std::pow(storm.Noise(0, {n, n / 10.0}), 2) / kSamples;
    if (storm.Bursts(0, n / 10.0) < 1) ++quiet;
    if (lightning.Spikes(0, n / 100.0) <= lightning.Spikes(0, (n - 1) / 100.0) + 50) continue;
    ++strikes;
    EXPECT_GT(lightning.Spikes(7, n / 100.0), 10);
  }
  EXPECT_NEAR(std::sqrt(squares), 12, 0.3);
  EXPECT_TRUE(quiet > kSamples / 3 && quiet < kSamples * 19 / 20) << quiet;
  EXPECT_TRUE(strikes > 5 && strikes < 100) << strikes;
}

}  // namespace
}  // namespace tarvolt::uds
