// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_timing.h"

#include <gtest/gtest.h>

#include "sources/sound/sound_formats.h"

namespace tarvolt {
namespace {

SoundTiming Plan(double sampleRate, std::int32_t vAvg = 1, double adjust = 1, WaveFormat format = {44100, 16, true}) {
  SoundTimingRequest request;
  request.SampleRate = sampleRate;
  request.vAvg = vAvg;
  request.paces = true;
  request.SCTadjust = adjust;
  request.format = format;
  return PlanSoundTiming(request);
}

TEST(SoundTiming, PeriodsOverASecondAreSplit) {
  const struct {
    double period;
    std::int32_t vAvg;
    double bufMs;
    std::int32_t effective;
    bool divided;
  } cases[] = {{1000, 1, 1000, 1, false},       {5000, 1, 500, 10, true},        {5000, 3, 500, 30, true},
               {7001, 1, 7001 / 8.0, 8, false}, {1001, 2, 1001 / 7.0, 14, true}, {60000, 1, 600, 100, true},
               {1500.5, 1, 750.25, 2, false}};
  for (const auto& c : cases) {
    const SoundTiming timing = Plan(c.period, c.vAvg);
    EXPECT_DOUBLE_EQ(timing.bufMs, c.bufMs) << c.period;
    EXPECT_EQ(timing.EffectiveAvg, c.effective) << c.period;
    EXPECT_EQ(timing.divided, c.divided) << c.period;
  }
}

TEST(SoundTiming, BuffersAreWholeFramesOfThePeriod) {
  EXPECT_EQ(Plan(100).bufferBytes, 17640);
  EXPECT_EQ(Plan(100, 1, 1, {44100, 16, false}).bufferBytes, 8820);
  EXPECT_EQ(Plan(100, 1, 1.01).bufferBytes, 17816);
  EXPECT_EQ(Plan(100, 1, 1.6).bufferBytes, 17640) << "such a factor counts as 1";
  EXPECT_EQ(Plan(7001).bufferBytes, 154372) << "38592.9 frames";
  SoundTimingRequest timer;
  for (const auto& [asked, given] : {std::pair(100, 100), {101, 100}, {0, 4}, {-5, 4}, {2147483647, 1 << 24}}) {
    timer.Pbuffer = asked;
    EXPECT_EQ(PlanSoundTiming(timer).bufferBytes, given) << asked;
  }
}

TEST(SoundTiming, NoSettingMakesASizeOutOfBounds) {
  for (const double period : {1e300, -1e300, 0.0, 1e9}) {
    const SoundTiming timing = Plan(period, 2147483647);
    EXPECT_GT(timing.bufferBytes, 0);
    EXPECT_LE(timing.bufferBytes, 1 << 24);
  }
  EXPECT_EQ(PreBufferEntries(17640, true, 10, 100), (8820 - 2) * 100 + 1);
  EXPECT_EQ(PreBufferEntries(17640, false, -10, 100), 1);
  EXPECT_EQ(PreBufferEntries(17640, true, 1e300, 100), (1 << 26) + 1);
}

TEST(SoundTiming, ANumberWithoutARowIsTheFirstFormat) {
  EXPECT_EQ(SoundFormatText(SoundFormat(0)), "44100 Hz 16 Bit Stereo");
  EXPECT_EQ(SoundFormat(-1), SoundFormat(0));
  EXPECT_EQ(SoundFormat(1000), SoundFormat(0));
  std::int32_t row = 0;
  for (const WaveFormat& format : SoundFormats()) EXPECT_EQ(SoundFormatRow(format), row++);
}

}  // namespace
}  // namespace tarvolt
