// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <iosfwd>

#include "platform/wave_in_device.h"

namespace tarvolt {

/// Prints the names of the sound inputs that are there, as SoundCardName takes them, and below each its formats behind
/// their numbers in sWavFormat; kNoSoundCard without any.
void PrintSoundInputs(WaveInDevices& inputs, std::ostream& out);

}  // namespace tarvolt
