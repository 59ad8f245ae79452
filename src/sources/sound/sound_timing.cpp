// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_timing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/number.h"

namespace tarvolt {
namespace {

constexpr double kLongestBuffer = 1000;   // milliseconds
constexpr double kMostBytes = 1 << 24;    // of a buffer
constexpr double kMostEntries = 1 << 26;  // of the ring
constexpr int kTries[] = {10, 9, 8, 7, 6, 5, 4, 3};

void SplitBy(int parts, SoundTiming& timing) {
  while (timing.bufMs > kLongestBuffer && timing.EffectiveAvg <= std::numeric_limits<std::int32_t>::max() / parts) {
    timing.bufMs /= parts;
    timing.EffectiveAvg *= parts;
  }
}

void SplitPeriod(SoundTiming& timing) {
  if (!(timing.bufMs > kLongestBuffer)) return;
  const auto divides = [&](int parts) { return std::fmod(timing.bufMs, parts) == 0; };
  const auto parts = std::find_if(std::begin(kTries), std::end(kTries), divides);
  timing.divided = parts != std::end(kTries);
  SplitBy(timing.divided ? *parts : 2, timing);
}

std::int32_t WholeFrames(double bytes, int frameBytes) {
  const double frames = std::nearbyint(std::min(bytes, kMostBytes) / frameBytes);
  return static_cast<std::int32_t>(std::max(frames, 1.0)) * frameBytes;
}

}  // namespace

SoundTiming PlanSoundTiming(const SoundTimingRequest& request) {
  const int frameBytes = request.format.FrameBytes();
  SoundTiming timing;
  timing.bufMs = request.SampleRate;
  timing.EffectiveAvg = request.vAvg;
  if (!request.paces) {
    timing.bufferBytes = WholeFrames(request.Pbuffer, frameBytes);
    return timing;
  }
  SplitPeriod(timing);
  const bool usable = request.SCTadjust >= 0.5 && request.SCTadjust <= 1.5;
  const double factor = usable ? request.SCTadjust : 1;
  timing.bufferBytes =
      WholeFrames(timing.bufMs * (request.format.samplesPerSecond / 1000.0) * frameBytes * factor, frameBytes);
  return timing;
}

std::int32_t PreBufferEntries(std::int32_t bufferBytes, bool stereo, double preBuffLen, double sampleRate) {
  const int channels = stereo ? 2 : 1;
  const double upperBound = (bufferBytes / 2 - channels) * preBuffLen / (sampleRate / 1000);
  if (!(upperBound > 0)) return 1;
  return static_cast<std::int32_t>(std::nearbyint(std::min(upperBound, kMostEntries))) + 1;
}

}  // namespace tarvolt
