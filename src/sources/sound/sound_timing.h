// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/wave_in_device.h"

namespace tarvolt {

/// What a run asks of the sound input's timing.
struct SoundTimingRequest {
  double SampleRate = 100;  ///< sample period in milliseconds
  std::int32_t vAvg = 1;
  bool paces = false;        ///< the buffers are the clock of the run
  double SCTadjust = 1;      ///< correction of the sound card's own clock
  std::int32_t Pbuffer = 0;  ///< bytes of a buffer that is no clock
  WaveFormat format;
};

/// How buffers and reads make up the sample period.
struct SoundTiming {
  double bufMs = 0;               ///< milliseconds of a buffer that is the clock
  std::int32_t EffectiveAvg = 1;  ///< buffers in a sample
  bool divided = false;           ///< a period over a second was divided without a remainder
  std::int32_t bufferBytes = 0;   ///< whole frames, at least one
};

/// Splits a period of more than a second into buffers of at most one: by the largest of 10 to 3 that divides it without
/// a remainder, again and again, else by halves. A factor below 0.5 or above 1.5 counts as 1. The bytes are rounded to
/// whole frames, or else left and right would change places from buffer to buffer.
SoundTiming PlanSoundTiming(const SoundTimingRequest& request);

/// Entries of the ring that keeps `preBuffLen` seconds, counted with the nominal sample period; with split periods that
/// is fewer seconds (meant). At least one, and at most what a computer can spare.
std::int32_t PreBufferEntries(std::int32_t bufferBytes, bool stereo, double preBuffLen, double sampleRate);

}  // namespace tarvolt
