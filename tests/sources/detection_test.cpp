// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/detection.h"

#include <gtest/gtest.h>

#include <cmath>

#include "sim/sim_random.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// The passes once more, side by side and in doubles, as slow as they are told.
class SlowPasses {
 public:
  SlowPasses(const DetectionSetup& setup, SoundState& state) : setup_(setup), state_(state) {}

  void Stereo(const std::vector<std::int16_t>& samples) {
    const double frames = std::nearbyint(static_cast<double>(samples.size()) / 2.0);
    state_.CrossCorrelation = 0;
    for (std::size_t i = 0; i + 1 < samples.size(); i += 2) {
      state_.CrossCorrelation = Sample(samples[i], setup_.backgroundL) * Sample(samples[i + 1], setup_.backgroundR);
    }
    if (frames > 0) state_.CrossCorrelation /= frames;
    for (const std::int16_t sample : samples) Push(sample);
    for (const bool right : {false, true}) {
      int blocks = 0;
      Side(samples, right, 2, frames, blocks);
    }
  }

  void Mono(const std::vector<std::int16_t>& samples) {
    int blocks = 0;  // counted on from the left side to the right
    for (const bool right : {false, true}) {
      const bool used = right ? setup_.SoundRightInUse : setup_.SoundLeftInUse;
      if (used) {
        for (const std::int16_t sample : samples) Push(sample);
      }
      Side(used ? samples : std::vector<std::int16_t>(), right, 1, used ? static_cast<double>(samples.size()) : 0,
           blocks);
    }
  }

 private:
  void Side(const std::vector<std::int16_t>& samples, bool right, int step, double divisor, int& blocks) {
    const int block = std::max(1, static_cast<int>(std::nearbyint(static_cast<double>(samples.size()) / 10.0)));
    double sum = 0, squares = 0, peakSum = 0;
    int high = 0, count = 0;
    const int before = blocks;
    for (std::size_t i = step == 2 && right ? 1 : 0; i < samples.size(); i += step) {
      double value = Sample(samples[i], right ? setup_.backgroundR : setup_.backgroundL);
      if (step == 2) value = std::fabs(value);
      sum += value;
      squares += value * value;
      high = std::max(high, static_cast<int>(value));
      if ((count += step) < block) continue;
      peakSum += high;
      high = count = 0;
      ++blocks;
    }
    double& peak = right ? state_.LastPeakR : state_.LastPeakL;
    double& average = right ? state_.LastAvgR : state_.LastAvgL;
    auto& sums = right ? state_.SoundAccumR : state_.SoundAccumL;
    const double factor = right ? setup_.PwrMultiR : setup_.PwrMultiL;
    if (blocks > before) peak = peakSum / blocks;
    if (divisor > 0) average = sum / divisor;
    sums[1] += peak;
    sums[2] += average;
    if (divisor > 0 && factor != 0) sums[3] += squares / divisor / factor;
  }

  double Sample(int sample, int background) const {
    const double value = sample < -32767 ? sample + 1 : sample;
    return state_.MeasuringBackground ? value : std::fabs(value) - background;
  }

  void Push(std::int16_t sample) {
    SoundRing& ring = state_.ring;
    const auto bound = static_cast<int>(ring.PreBufferRing.size()) - 1;
    if (bound < 0) return;
    if (++ring.RingWrite > bound) ring.RingWrite = 0;
    if (ring.RingWrite == ring.RingRead && ++ring.RingRead > bound) ring.RingRead = 0;
    ring.PreBufferRing[ring.RingWrite] = sample;
  }

  const DetectionSetup& setup_;
  SoundState& state_;
};

void ExpectSame(const SoundState& fast, const SoundState& slow, const std::string& what) {
  for (int row = 0; row < 9; ++row) {
    EXPECT_DOUBLE_EQ(fast.SoundAccumL[row], slow.SoundAccumL[row]) << what << " left " << row;
    EXPECT_DOUBLE_EQ(fast.SoundAccumR[row], slow.SoundAccumR[row]) << what << " right " << row;
  }
  EXPECT_EQ(fast.CrossCorrelation, slow.CrossCorrelation) << what;
  EXPECT_EQ(fast.ring.PreBufferRing, slow.ring.PreBufferRing) << what;
  EXPECT_EQ(fast.ring.RingRead, slow.ring.RingRead) << what;
  EXPECT_EQ(fast.ring.RingWrite, slow.ring.RingWrite) << what;
}

TEST(Detection, AnyBuffersGiveWhatTheSlowPassesGive) {
  SimRandom random(5);
  constexpr int kExtremes[] = {-32768, -32767, 32767, 0, 1, -1};
  for (int round = 0; round < 400; ++round) {
    DetectionSetup setup;
    setup.backgroundL = static_cast<int>(random.Below(65536)) - 32768;
    setup.backgroundR = static_cast<int>(random.Below(300));
    setup.PwrMultiR = random.Chance(0.1) ? 0 : 17.5;
    setup.SoundLeftInUse = random.Chance(0.7);
    setup.SoundRightInUse = random.Chance(0.7);
    SoundState fast;
    fast.MeasuringBackground = random.Chance(0.3);
    fast.ring.PreBufferRing.resize(random.Below(200));
    SoundState slow = fast;
    SlowPasses passes(setup, slow);
    for (int buffer = 0; buffer < 4; ++buffer) {
      std::vector<std::int16_t> samples(random.Below(random.Chance(0.5) ? 24 : 500));
      for (auto& sample : samples) {
        sample = static_cast<std::int16_t>(random.Chance(0.2) ? kExtremes[random.Below(6)]
                                                              : static_cast<int>(random.Below(65536)) - 32768);
      }
      const bool stereo = round % 2 == 0;
      if (stereo && samples.size() % 2 != 0) samples.pop_back();
      (stereo ? StereoPass : MonoPass)(samples, setup, fast);
      stereo ? passes.Stereo(samples) : passes.Mono(samples);
      ExpectSame(fast, slow, "round " + NumberText(std::int64_t{round}));
    }
  }
}

TEST(Detection, ThePeakIsTheMeanOfTenBlocksAndAPartialBlockIsLeftOut) {
  std::vector<std::int16_t> samples(400, 0);
  for (int block = 0; block < 10; ++block) samples[block * 40] = static_cast<std::int16_t>(100 * (block + 1));
  SoundState sound;
  StereoPass(samples, {}, sound);
  EXPECT_EQ(sound.LastPeakL, 550);
  std::vector<std::int16_t> ragged(48, 10);  // blocks of 6 samples after rounding 4.8: the last 3 frames end none
  ragged[46] = 9000;
  StereoPass(ragged, {}, sound);
  EXPECT_EQ(sound.LastPeakL, 1133.75) << "a block of five ends with the third frame, and 24 frames are eight of them";
}

struct HandOver {
  int side;
  double first;
  bool operator==(const HandOver&) const = default;
};

// Each value is the one before plus one.
bool IsRamp(const std::vector<double>& values) {
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] != values[i - 1] + 1) return false;
  }
  return true;
}

std::vector<HandOver> HandOversOf(int size, bool stereo, int samples, int buffers = 1) {
  SoundState sound;
  std::vector<HandOver> seen;
  sound.spectrum.SpectrumActive = true;
  sound.spectrum.SpectrumSize = size;
  sound.spectrum.SpectrumBufL.resize(size);
  sound.spectrum.SpectrumBufR.resize(size);
  sound.spectrum.receive = [&](int side, const std::vector<double>& left, const std::vector<double>& right) {
    seen.push_back({side, side == 1 ? right[0] : left[0]});
    if (!stereo) {
      EXPECT_TRUE(IsRamp(side == 1 ? right : left)) << side;
    }
  };
  std::vector<std::int16_t> ramp(samples);
  for (int i = 0; i < buffers * samples; ++i) {
    ramp[i % samples] = static_cast<std::int16_t>(i - 100);
    if (i % samples == samples - 1) (stereo ? StereoPass : MonoPass)(ramp, {}, sound);
  }
  return seen;
}

TEST(Detection, TheSpectrumIsHandedRawSamples) {
  EXPECT_EQ(HandOversOf(16, true, 200), (std::vector<HandOver>{{2, -100}}));
  EXPECT_EQ(HandOversOf(50, false, 120), (std::vector<HandOver>{{0, -100}, {1, -100}, {1, -50}}));
  EXPECT_TRUE(HandOversOf(300, true, 200).empty());
  EXPECT_EQ(HandOversOf(150, false, 120, 3), (std::vector<HandOver>{{0, -100}, {1, -100}, {1, 50}}));
}

}  // namespace
}  // namespace tarvolt
