// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "apps/tv-uds/signals/signal.h"

namespace tarvolt::uds {

/// Writes what the loudspeaker of a receiver would play: noise in 44100 Hz 16 bit stereo whose level is the signal's
/// channels 0 and 1. False with the reason in `why` when the file cannot be written.
bool WriteWav(const std::string& path, const Signal& signal, double seconds, std::uint64_t seed, std::string& why);

}  // namespace tarvolt::uds
