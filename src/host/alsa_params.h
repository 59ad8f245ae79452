// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <alsa/asoundlib.h>

#include <memory>
#include <string>

#include "platform/wave_in_device.h"

namespace tarvolt {

struct CloseAlsaPcm {
  void operator()(snd_pcm_t* pcm) const { snd_pcm_close(pcm); }
};

/// An open capture stream of ALSA; closed when it goes.
using AlsaPcm = std::unique_ptr<snd_pcm_t, CloseAlsaPcm>;

/// Opens a capture stream that never blocks; null, with the error of ALSA in `error`, when that fails.
AlsaPcm OpenAlsaPcm(const std::string& pcmName, int* error = nullptr);

/// True when the stream can be had in that format at exactly that rate. A card that has other sample widths or channels
/// is converted; its rate never is.
bool AlsaOffers(snd_pcm_t& pcm, const WaveFormat& format);

/// Sets the format and lets the driver deliver every `latency` milliseconds or so, and hold half a second at least.
/// Gives 0 or the error of ALSA.
int SetAlsaParams(snd_pcm_t& pcm, const WaveFormat& format, double latency);

}  // namespace tarvolt
