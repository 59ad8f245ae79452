// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "analysis/level_meter.h"

namespace tarvolt {
namespace {

constexpr std::size_t kSize = 4096;
constexpr double kRate = 44100;

// A sine of `periods` in a transform, which need not be whole.
std::vector<double> Tone(double periods, double amplitude, double phase = 0.3) {
  std::vector<double> samples(kSize);
  for (std::size_t i = 0; i < kSize; ++i) {
    samples[i] = amplitude * std::sin(2 * std::numbers::pi * periods * static_cast<double>(i) / kSize + phase);
  }
  return samples;
}

TEST(Spectrum, AToneStandsAtItsFrequencyWithItsLevelWhateverTheWeights) {
  for (const auto weights : {SpectrumWeights::Hann, SpectrumWeights::Blackman, SpectrumWeights::Rectangular}) {
    Spectrum spectrum(kSize);
    spectrum.SetWeights(weights);
    spectrum.Add(Tone(100, kFullScale / 2));
    const std::vector<double> levels = spectrum.Levels();
    ASSERT_EQ(levels.size(), kSize / 2 + 1);
    EXPECT_NEAR(StrongestLine(levels).bin, 100, 1e-3);
    EXPECT_NEAR(StrongestLine(levels).decibels, -6.0206, 1e-3);
    EXPECT_NEAR(levels[100], -6.0206, 1e-4);
    EXPECT_NEAR(spectrum.HertzOf(100, kRate), 1076.66, 0.01);
    EXPECT_LT(levels[110], -130) << "a whole number of periods does not leak";
  }
}

// Between two bins the highest loss and the leakage are those in the tables of the weights.
TEST(Spectrum, WeightsTradeLeakageForTheirLossBetweenBins) {
  struct Case {
    SpectrumWeights weights;
    double loss;
    double leastFar, mostFar;  // a tenth of the rate away
  };
  for (const Case& known :
       {Case{SpectrumWeights::Hann, -1.42, -141, -110}, Case{SpectrumWeights::Blackman, -1.10, -141, -110},
        Case{SpectrumWeights::Rectangular, -3.92, -70, -20}}) {
    Spectrum spectrum(kSize);
    spectrum.SetWeights(known.weights);
    spectrum.Add(Tone(100.5, kFullScale));
    const std::vector<double> levels = spectrum.Levels();
    EXPECT_NEAR(levels[100], known.loss, 0.02);
    EXPECT_NEAR(StrongestLine(levels).bin, 100.5, 0.02);
    EXPECT_GT(StrongestLine(levels).decibels, known.loss + 0.2) << "the top is between the bins";
    EXPECT_GT(levels[510], known.leastFar);
    EXPECT_LT(levels[510], known.mostFar);
  }
}

TEST(Spectrum, AnOffsetAndTheHighestFrequencyAreNotCountedTwice) {
  Spectrum spectrum(kSize);
  spectrum.SetWeights(SpectrumWeights::Rectangular);
  spectrum.Add(std::vector<double>(kSize, kFullScale));
  EXPECT_NEAR(spectrum.Levels()[0], 0, 1e-9);
  EXPECT_GT(StrongestLine(spectrum.Levels()).bin, 0.4) << "an offset is no tone";
  spectrum.Clear();
  EXPECT_TRUE(spectrum.Levels().empty());
  std::vector<double> alternating(kSize);
  for (std::size_t i = 0; i < kSize; ++i) alternating[i] = i % 2 == 0 ? kFullScale : -kFullScale;
  spectrum.Add(alternating);
  EXPECT_NEAR(spectrum.Levels().back(), 0, 1e-9);
}

TEST(Spectrum, AveragingIsOfThePowersAndThePeakStaysUntilItIsCleared) {
  Spectrum spectrum(kSize);
  spectrum.SetAveraging(4);
  spectrum.Add(Tone(100, kFullScale));
  for (int i = 0; i < 3; ++i) spectrum.Add(Tone(100, 0));
  EXPECT_NEAR(spectrum.Levels()[100], -6.0206, 1e-3) << "the mean of 1, 0, 0, 0";
  spectrum.Add(Tone(100, 0));
  EXPECT_NEAR(spectrum.Levels()[100], -6.0206 - 1.2494, 1e-3) << "a quarter of it has faded";
  EXPECT_NEAR(spectrum.Peaks()[100], 0, 1e-3);
  spectrum.SetAveraging(1);
  spectrum.ClearPeaks();
  spectrum.Add(Tone(100, kFullScale / 10));
  EXPECT_NEAR(spectrum.Levels()[100], -20, 1e-3);
  EXPECT_NEAR(spectrum.Peaks()[100], -20, 1e-3);
  spectrum.Add(std::vector<double>(kSize / 2, kFullScale));
  EXPECT_NEAR(spectrum.Levels()[100], -20, 1e-3) << "samples of another size are no transform";
}

TEST(LevelMeter, TheMarkStaysAWhileAndFallsEvenlyHoweverOftenItIsLookedAt) {
  EXPECT_EQ(DecibelsFullScale(0), kLowestDecibels);
  EXPECT_EQ(DecibelsFullScale(-50), kLowestDecibels) << "a reading below the background";
  EXPECT_NEAR(DecibelsFullScale(3276.8), -20, 1e-9);
  PeakMark often;
  PeakMark seldom;
  often.Update(-10, 1000);
  seldom.Update(-10, 1000);
  for (double now = 1033; now < 3500; now += 33) {
    often.Update(-90, now);
    if (now < 2500) {
      EXPECT_EQ(often.Level(), -10);
    }
  }
  often.Update(-90, 3500);
  seldom.Update(-90, 3500);
  EXPECT_NEAR(often.Level(), -22, 1e-6);
  EXPECT_NEAR(seldom.Level(), -22, 1e-6);
  seldom.Update(-5, 3501);
  EXPECT_EQ(seldom.Level(), -5);
}

}  // namespace
}  // namespace tarvolt
