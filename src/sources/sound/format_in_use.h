// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "config/settings.h"
#include "model/session.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// The format that the input is opened with: that of sWavFormat, or the input's own when it has but one, as a file has.
WaveFormat SoundFormatInUse(const Session& session, const SoundSettings& sound);

/// The formats of the table that the input `card` offers, as a text; empty when it offers none or cannot be asked.
std::string FormatsOffered(const Session& session, const std::string& card);

}  // namespace tarvolt
