// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/detection.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tarvolt {
namespace {

// All samples, and so their differences, squares and sums, are whole numbers that a double holds exactly. The passes
// work with integers of the same values because a computer adds many of them at a time.

/// What the samples of a side come to.
struct SideSums {
  std::int64_t sum = 0;
  std::uint64_t squares = 0;
  std::int64_t peakSum = 0;  ///< of the peaks of the blocks
};

/// A tenth of `samples`, to nearest with ties to even; at least 1.
std::int64_t BlockOf(std::size_t samples) {
  return std::max<std::int64_t>(1, std::llrint(static_cast<double>(samples) / 10));
}

/// The lowest sample has no positive counterpart in 16 bits: it reads as the one above it.
inline std::int32_t Raised(std::int16_t sample) {
  return std::max<std::int32_t>(sample, -32767);
}

/// A sample less the background; with `measuring` it is left as it is.
template <bool measuring>
inline std::int32_t AboveBackground(std::int16_t sample, std::int32_t background) {
  const std::int32_t raised = Raised(sample);
  return measuring ? raised : std::abs(raised) - background;
}

inline std::uint32_t Square(std::int32_t value) {
  const auto size = static_cast<std::uint32_t>(std::abs(value));  // at most 65535, so the square fits
  return size * size;
}

/// Adds frames to the sums of both sides; the peaks are raised to the largest of them.
template <bool measuring>
[[gnu::always_inline]] inline void AddFrames(const std::int16_t* samples, std::size_t frames,
                                             const DetectionSetup& setup, SideSums& left, SideSums& right,
                                             std::int32_t& peakL, std::int32_t& peakR) {
  const std::int32_t backgroundL = setup.backgroundL;
  const std::int32_t backgroundR = setup.backgroundR;
  std::int64_t sumL = 0;
  std::int64_t sumR = 0;
  std::uint64_t sqL = 0;
  std::uint64_t sqR = 0;
  std::int32_t highL = peakL;
  std::int32_t highR = peakR;
  for (std::size_t i = 0; i < frames; ++i) {
    // Rectified once more: in stereo a value below the background counts as positive (meant).
    const std::int32_t l = std::abs(AboveBackground<measuring>(samples[2 * i], backgroundL));
    const std::int32_t r = std::abs(AboveBackground<measuring>(samples[2 * i + 1], backgroundR));
    sumL += l;
    sumR += r;
    sqL += Square(l);
    sqR += Square(r);
    highL = std::max(highL, l);
    highR = std::max(highR, r);
  }
  left.sum += sumL;
  right.sum += sumR;
  left.squares += sqL;
  right.squares += sqR;
  peakL = highL;
  peakR = highR;
}

/// The same for one side of a mono stream: here a value below the background stays negative (meant), and never is a
/// peak.
template <bool measuring>
void AddSamples(const std::int16_t* samples, std::size_t count, std::int32_t background, SideSums& side,
                std::int32_t& peak) {
  std::int64_t sum = 0;
  std::uint64_t squares = 0;
  std::int32_t high = peak;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t value = AboveBackground<measuring>(samples[i], background);
    sum += value;
    squares += Square(value);
    high = std::max(high, value);
  }
  side.sum += sum;
  side.squares += squares;
  peak = high;
}

/// Walks `count` steps in blocks: `add(first, steps)` for each stretch, `close()` behind each whole block. The last
/// block, when it is not whole, is added and not closed.
template <class Add, class Close>
[[gnu::always_inline]] inline void WalkBlocks(std::size_t count, std::size_t stepsOfBlock, Add add, Close close) {
  std::size_t first = 0;
  for (; first + stepsOfBlock <= count; first += stepsOfBlock) {
    add(first, stepsOfBlock);
    close();
  }
  if (first < count) add(first, count - first);
}

template <bool measuring>
[[gnu::always_inline]] inline std::int64_t SumStereo(std::span<const std::int16_t> samples, const DetectionSetup& setup,
                                                     SideSums& left, SideSums& right) {
  std::int64_t blocks = 0;
  std::int32_t peakL = 0;
  std::int32_t peakR = 0;
  // A frame counts two towards its block, so a block of an odd size ends one sample late.
  const auto framesOfBlock = static_cast<std::size_t>((BlockOf(samples.size()) + 1) / 2);
  WalkBlocks(
      samples.size() / 2, framesOfBlock,
      [&](std::size_t first, std::size_t frames) __attribute__((always_inline)) {
        AddFrames<measuring>(samples.data() + 2 * first, frames, setup, left, right, peakL, peakR);
      },
      [&] {
        left.peakSum += peakL;
        right.peakSum += peakR;
        peakL = 0;
        peakR = 0;
        ++blocks;
      });
  return blocks;
}

template <bool measuring>
void SumMono(std::span<const std::int16_t> samples, std::int32_t background, SideSums& side, std::int64_t& blocks) {
  std::int32_t peak = 0;
  WalkBlocks(
      samples.size(), static_cast<std::size_t>(BlockOf(samples.size())),
      [&](std::size_t first, std::size_t count) {
        AddSamples<measuring>(samples.data() + first, count, background, side, peak);
      },
      [&] {
        side.peakSum += peak;
        peak = 0;
        ++blocks;
      });
}

std::int64_t StereoSumsPlain(std::span<const std::int16_t> samples, const DetectionSetup& setup, bool measuring,
                             SideSums& left, SideSums& right) {
  return measuring ? SumStereo<true>(samples, setup, left, right) : SumStereo<false>(samples, setup, left, right);
}

#if defined(__x86_64__)
// The same code once more, for processors that add eight numbers at a time.
[[gnu::target("avx2")]] std::int64_t StereoSumsWide(std::span<const std::int16_t> samples, const DetectionSetup& setup,
                                                    bool measuring, SideSums& left, SideSums& right) {
  return measuring ? SumStereo<true>(samples, setup, left, right) : SumStereo<false>(samples, setup, left, right);
}

// And for older ones, which add four.
[[gnu::target("sse4.1")]] std::int64_t StereoSumsHalfWide(std::span<const std::int16_t> samples,
                                                          const DetectionSetup& setup, bool measuring, SideSums& left,
                                                          SideSums& right) {
  return measuring ? SumStereo<true>(samples, setup, left, right) : SumStereo<false>(samples, setup, left, right);
}

auto* FastestStereoSums() {
  if (__builtin_cpu_supports("avx2") != 0) return StereoSumsWide;
  return __builtin_cpu_supports("sse4.1") != 0 ? StereoSumsHalfWide : StereoSumsPlain;
}
#else
auto* FastestStereoSums() {
  return StereoSumsPlain;
}
#endif

// Only the last frame of a buffer counts (meant).
double CorrelationOf(std::span<const std::int16_t> samples, const DetectionSetup& setup, bool measuring,
                     double frames) {
  if (samples.size() < 2) return 0;
  const std::size_t last = samples.size() / 2 * 2 - 2;
  const auto value = [&](std::int16_t sample, std::int32_t background) -> double {
    return measuring ? AboveBackground<true>(sample, background) : AboveBackground<false>(sample, background);
  };
  return value(samples[last], setup.backgroundL) * value(samples[last + 1], setup.backgroundR) / frames;
}

void SetQuotient(double& reading, double dividend, double divisor) {
  if (divisor != 0) reading = dividend / divisor;
}

/// The three readings of a side.
double TakeReadings(const SideSums& side, std::int64_t blocks, double divisor, double multi, double& lastPeak,
                    double& lastAvg) {
  SetQuotient(lastPeak, static_cast<double>(side.peakSum), static_cast<double>(blocks));
  SetQuotient(lastAvg, static_cast<double>(side.sum), divisor);
  double power = 0;
  if (divisor != 0) SetQuotient(power, static_cast<double>(side.squares) / divisor, multi);
  return power;
}

void Accumulate(double powerL, double powerR, SoundState& sound) {
  sound.SoundAccumL[kPeak] += sound.LastPeakL;
  sound.SoundAccumL[kAverage] += sound.LastAvgL;
  sound.SoundAccumL[kPower] += powerL;
  sound.SoundAccumR[kPeak] += sound.LastPeakR;
  sound.SoundAccumR[kAverage] += sound.LastAvgR;
  sound.SoundAccumR[kPower] += powerR;
}

/// True when the spectrum wants samples and has the room at `index` that it says it has.
bool Gathers(const SpectrumFeed& feed, std::int32_t index) {
  const auto size = static_cast<std::size_t>(std::max(feed.SpectrumSize, 0));
  return feed.SpectrumActive && size > 0 && feed.SpectrumBufL.size() >= size && feed.SpectrumBufR.size() >= size &&
         index >= 0 && index < feed.SpectrumSize;
}

/// Steps on; true when the arrays were full and have been handed over.
bool HandOverWhenFull(SpectrumFeed& feed, std::int32_t& index, int side) {
  if (++index < feed.SpectrumSize) return false;
  if (feed.receive) feed.receive(side, feed.SpectrumBufL, feed.SpectrumBufR);
  index = 0;
  return true;
}

void FeedStereo(std::span<const std::int16_t> samples, SpectrumFeed& feed) {
  std::int32_t& index = feed.SpectrumIndex;
  for (std::size_t i = 0; i + 1 < samples.size() && Gathers(feed, index); i += 2) {
    feed.SpectrumBufL[index] = samples[i];
    feed.SpectrumBufR[index] = samples[i + 1];
    if (HandOverWhenFull(feed, index, 2)) return;
  }
}

// The left side hands over once a buffer, the right side as often as its array is full (meant).
void FeedMono(std::span<const std::int16_t> samples, bool isLeft, SpectrumFeed& feed) {
  std::vector<double>& side = isLeft ? feed.SpectrumBufL : feed.SpectrumBufR;
  std::int32_t& index = isLeft ? feed.SpectrumIndex : feed.SpectrumIndexR;
  for (std::size_t i = 0; i < samples.size() && Gathers(feed, index); ++i) {
    side[index] = samples[i];
    if (HandOverWhenFull(feed, index, isLeft ? 0 : 1) && isLeft) return;
  }
}

}  // namespace

// The index steps before each store, so a ring that has never wrapped leaves its first entry free. Once the newest
// sample has caught up with the oldest, that one is always the next.
void PushIntoRing(std::span<const std::int16_t> samples, SoundRing& ring) {
  const auto size = static_cast<std::int64_t>(ring.PreBufferRing.size());
  if (size == 0 || samples.empty()) return;
  const auto count = static_cast<std::int64_t>(samples.size());
  const std::int64_t untilMet = (ring.RingRead - ring.RingWrite + size - 1) % size + 1;
  std::int64_t at = ring.RingWrite;
  for (std::int64_t done = 0; done < count;) {
    at = (at + 1) % size;
    const std::int64_t length = std::min(count - done, size - at);
    std::copy_n(samples.begin() + done, length, ring.PreBufferRing.begin() + at);
    done += length;
    at += length - 1;
  }
  ring.RingWrite = static_cast<std::int32_t>(at);
  if (count >= untilMet) ring.RingRead = static_cast<std::int32_t>((at + 1) % size);
}

void FeedLevels(std::span<const std::int16_t> samples, bool stereo, LevelFeed& levels) {
  if (!levels.active) return;
  ++levels.buffers;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const std::int32_t size = std::abs(Raised(samples[i]));
    const bool isRight = stereo && i % 2 == 1;
    if (!isRight) levels.highL = std::max(levels.highL, size);
    if (isRight || !stereo) levels.highR = std::max(levels.highR, size);
  }
}

void StereoPass(std::span<const std::int16_t> samples, const DetectionSetup& setup, SoundState& sound) {
  const double frames = std::nearbyint(static_cast<double>(samples.size()) / 2);
  PushIntoRing(samples.first(samples.size() / 2 * 2), sound.ring);
  SideSums left;
  SideSums right;
  const std::int64_t blocks = FastestStereoSums()(samples, setup, sound.MeasuringBackground, left, right);
  sound.CrossCorrelation = CorrelationOf(samples, setup, sound.MeasuringBackground, frames);
  FeedStereo(samples, sound.spectrum);
  const double powerL = TakeReadings(left, blocks, frames, setup.PwrMultiL, sound.LastPeakL, sound.LastAvgL);
  const double powerR = TakeReadings(right, blocks, frames, setup.PwrMultiR, sound.LastPeakR, sound.LastAvgR);
  Accumulate(powerL, powerR, sound);
}

void MonoPass(std::span<const std::int16_t> samples, const DetectionSetup& setup, SoundState& sound) {
  const auto count = static_cast<double>(samples.size());
  std::int64_t blocks = 0;  // not begun anew for the right side (meant)
  const auto passSide = [&](bool isLeft, std::int32_t background, double multi, double& lastPeak, double& lastAvg) {
    PushIntoRing(samples, sound.ring);
    SideSums side;
    sound.MeasuringBackground ? SumMono<true>(samples, background, side, blocks)
                              : SumMono<false>(samples, background, side, blocks);
    FeedMono(samples, isLeft, sound.spectrum);
    return TakeReadings(side, blocks, count, multi, lastPeak, lastAvg);
  };
  double powerL = 0;
  double powerR = 0;
  if (setup.SoundLeftInUse) {
    powerL = passSide(true, setup.backgroundL, setup.PwrMultiL, sound.LastPeakL, sound.LastAvgL);
  }
  if (setup.SoundRightInUse) {
    powerR = passSide(false, setup.backgroundR, setup.PwrMultiR, sound.LastPeakR, sound.LastAvgR);
  }
  Accumulate(powerL, powerR, sound);
}

}  // namespace tarvolt
