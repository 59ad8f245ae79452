// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "model/sound_state.h"

namespace tarvolt {

/// What the passes over a buffer are given besides its samples.
struct DetectionSetup {
  std::int32_t backgroundL = 0;  ///< taken from the size of each sample, in sample units
  std::int32_t backgroundR = 0;
  double PwrMultiL = 2000;  ///< the mean square is divided by it
  double PwrMultiR = 2000;
  bool SoundLeftInUse = true;  ///< the mono pass reads the stream once for each side in use
  bool SoundRightInUse = true;
};

/// Index of a reading in the accumulators.
inline constexpr int kPeak = 1;
inline constexpr int kAverage = 2;
inline constexpr int kPower = 3;

/// Reduces a filled buffer of interleaved samples to one Peak, Average and Power reading a side, puts its samples into
/// the ring and into the arrays of the spectrum, and adds the readings to the accumulators. A reading that cannot be
/// had (no frame, a factor of 0) keeps its last value, that of Power is 0. Yields only when the spectrum takes samples.
void StereoPass(std::span<const std::int16_t> samples, const DetectionSetup& setup, SoundState& sound);

/// The same for a mono stream. It differs deliberately: a sample below the background counts as negative, the right
/// side's peaks are divided by the blocks of both sides, and there is no correlation.
void MonoPass(std::span<const std::int16_t> samples, const DetectionSetup& setup, SoundState& sound);

/// Raises the highest samples of a meter that wants them; those of a mono stream count for both sides.
void FeedLevels(std::span<const std::int16_t> samples, bool stereo, LevelFeed& levels);

/// Puts samples into the ring, each one step behind the last; the oldest are written over.
void PushIntoRing(std::span<const std::int16_t> samples, SoundRing& ring);

}  // namespace tarvolt
