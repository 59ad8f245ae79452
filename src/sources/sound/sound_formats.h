// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/wave_in_device.h"

namespace tarvolt {

/// The table of sound formats: sWavFormat is the number of a row. Rows are never moved, only added, for settings and
/// profiles keep their numbers. Row 0 is 44100 Hz 16 bit stereo, which the background measurement relies on. The rows
/// of 8 bits are there to be named: a chart refuses them.
std::span<const WaveFormat> SoundFormats();

/// The row that sWavFormat names; row 0 for a number without one.
const WaveFormat& SoundFormat(std::int32_t sWavFormat);

/// Number of the row of a format, -1 when the table has none.
std::int32_t SoundFormatRow(const WaveFormat& format);

/// Description, such as "44100 Hz 16 Bit Stereo".
std::string SoundFormatText(const WaveFormat& format);

}  // namespace tarvolt
