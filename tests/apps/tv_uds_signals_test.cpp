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

TEST(TvUdsSignals, RampTellsTheSampleAndTheChannel) {
  const LiveSource source(MakeSignal("ramp", 1), 3, 1000);
  EXPECT_EQ(source.Set(0), (std::vector<double>{0, 1000000, 2000000}));
  EXPECT_EQ(source.Set(123456), (std::vector<double>{123456, 1123456, 2123456}));
}

TEST(TvUdsSignals, StaircaseHasElevenLevelsAndStartsAnew) {
  const LiveSource source(MakeSignal("staircase", 1), 2, 10);
  EXPECT_EQ(source.Set(49), (std::vector<double>{0, 0}));
  EXPECT_EQ(source.Set(50), (std::vector<double>{100, 200}));
  EXPECT_EQ(source.Set(549), (std::vector<double>{1000, 2000}));
  EXPECT_EQ(source.Set(550), (std::vector<double>{0, 0}));
}

TEST(TvUdsSignals, GalaxyHasTwoHumpsInASiderealDay) {
  const Galaxy galaxy(3);
  const auto at = [&](double fraction) { return galaxy.Value(0, {0, fraction * kSiderealDay}); };
  std::vector<double> humps;
  for (int i = 0; i < 1000; ++i) {
    const double here = at(i / 1000.0);
    if (here > at((i - 1) / 1000.0) && here >= at((i + 1) / 1000.0)) humps.push_back(here);
  }
  ASSERT_EQ(humps.size(), 2U);
  EXPECT_GT(std::abs(humps[0] - humps[1]), 300);
  EXPECT_NEAR(at(0.37), at(1.37), 1e-6);
}

TEST(TvUdsSignals, NoiseIsGaussianAndUnrelatedBetweenChannels) {
  const NoiseStorm storm(5);
  constexpr int kSamples = 40000;
  double sum = 0;
  double squares = 0;
  double products = 0;
  int beyondTwo = 0;
  for (int n = 0; n < kSamples; ++n) {
    const double a = storm.Noise(0, {n, n / 10.0}) / 12;
    const double b = storm.Noise(1, {n, n / 10.0}) / 12;
    sum += a;
    squares += a * a;
    products += a * b;
    if (std::abs(a) > 2) ++beyondTwo;
  }
  EXPECT_NEAR(sum / kSamples, 0, 0.03);
  EXPECT_NEAR(squares / kSamples, 1, 0.04);
  EXPECT_NEAR(products / kSamples, 0, 0.03);
  EXPECT_NEAR(beyondTwo / double{kSamples}, 0.0455, 0.01);
}

TEST(TvUdsSignals, BurstsComeInStormsRiseFastAndDecaySlowly) {
  const NoiseStorm storm(11);
  constexpr int kSteps = 20 * 3600 * 2;  // two hours of twentieths of a second
  int quiet = 0;
  int rising = 0;
  int falling = 0;
  double before = 0;
  for (int i = 0; i < kSteps; ++i) {
    const double here = storm.Bursts(0, i / 20.0);
    if (here < 1) ++quiet;
    if (here > before && before > 10) ++rising;
    if (here < before && before > 10) ++falling;
    EXPECT_LT(std::abs(here - before), 5000) << "at " << i / 20.0;
    before = here;
  }
  EXPECT_GT(quiet, kSteps / 2);
  EXPECT_LT(quiet, kSteps * 9 / 10);
  EXPECT_GT(rising, 100);
  EXPECT_GT(falling, 3 * rising);
}

TEST(TvUdsSignals, LightningStrikesAllChannelsAtOnceAndIsSoonOver) {
  const Lightning lightning(2);
  int strikes = 0;
  double before = 0;
  for (int i = 0; i < 100 * 600; ++i) {
    const double seconds = i / 100.0;
    const double here = lightning.Spikes(0, seconds);
    if (here > before + 50) {
      ++strikes;
      EXPECT_GT(lightning.Spikes(7, seconds), 10);
      EXPECT_LT(lightning.Spikes(0, seconds - 0.01), here);
    }
    before = here;
  }
  EXPECT_GT(strikes, 10);
  EXPECT_LT(strikes, 100);
}

}  // namespace
}  // namespace tarvolt::uds
