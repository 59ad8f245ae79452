// SPDX-License-Identifier: GPL-3.0-or-later
// The reduction of a sound buffer to its readings: 44,100 Hz stereo, buffers of a tenth of a second.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "side_by_side.h"
#include "sim/sim_random.h"
#include "sources/sound/detection.h"

namespace tarvolt::bench {
namespace {

constexpr int kRate = 44100;
constexpr int kFramesOfBuffer = kRate / 10;
constexpr int kSeconds = 60;
constexpr int kBuffers = 10 * kSeconds;

std::vector<std::int16_t> Noise() {
  SimRandom random(1);
  std::vector<std::int16_t> samples(2 * kFramesOfBuffer);
  for (auto& sample : samples) sample = static_cast<std::int16_t>(static_cast<int>(random.Below(20000)) - 10000);
  return samples;
}

double Detect(const std::vector<std::int16_t>& samples, SoundState& sound) {
  DetectionSetup setup;
  setup.backgroundL = 12;
  setup.backgroundR = 15;
  return SecondsOf([&] {
    for (int i = 0; i < kBuffers; ++i) StereoPass(samples, setup, sound);
    benchmark::DoNotOptimize(sound.SoundAccumL);
  });
}

SoundState WithRing() {
  SoundState sound;
  sound.ring.PreBufferRing.resize(static_cast<std::size_t>(10) * 2 * kRate);
  return sound;
}

/// Nothing but the two sums, in the doubles in which they are wanted.
double SumInDoubles(const std::vector<std::int16_t>& samples) {
  return SecondsOf([&] {
    for (int i = 0; i < kBuffers; ++i) {
      double left = 0;
      double right = 0;
      for (std::size_t k = 0; k < samples.size(); k += 2) {
        left += samples[k];
        right += samples[k + 1];
      }
      benchmark::DoNotOptimize(left);
      benchmark::DoNotOptimize(right);
    }
  });
}

/// The same sums in integers, which a compiler may add many at a time.
double SumInIntegers(const std::vector<std::int16_t>& samples) {
  return SecondsOf([&] {
    for (int i = 0; i < kBuffers; ++i) {
      std::int64_t left = 0;
      std::int64_t right = 0;
      for (std::size_t k = 0; k < samples.size(); k += 2) {
        left += samples[k];
        right += samples[k + 1];
      }
      benchmark::DoNotOptimize(left);
      benchmark::DoNotOptimize(right);
    }
  });
}

void StereoDetection(benchmark::State& state, double (*bare)(const std::vector<std::int16_t>&)) {
  const std::vector<std::int16_t> samples = Noise();
  SoundState sound = WithRing();
  std::vector<double> seconds;
  RunSideBySide(
      state, static_cast<double>(kBuffers) * kFramesOfBuffer,
      [&] {
        seconds.push_back(Detect(samples, sound));
        return seconds.back();
      },
      [&] { return bare(samples); });
  state.counters["times_real"] = kSeconds / Median(seconds);
  if (!(sound.LastAvgL > 0)) state.SkipWithError("nothing was detected");
}
BENCHMARK_CAPTURE(StereoDetection, BesideSumInDoubles, SumInDoubles)
    ->Iterations(Rounds(31))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StereoDetection, BesideSumInIntegers, SumInIntegers)
    ->Iterations(Rounds(31))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

BENCHMARK_MAIN();
