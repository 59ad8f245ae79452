// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/alsa_params.h"

#include <algorithm>

namespace tarvolt {
namespace {

constexpr double kShortestPeriod = 5;  // milliseconds; half of the shortest read of a run
constexpr double kLongestPeriod = 50;
constexpr unsigned kHeld = 500'000;  // microseconds

/// The parameters with all but the times of the buffer set; 0 or the error of ALSA.
int Narrow(snd_pcm_t& pcm, snd_pcm_hw_params_t& params, const WaveFormat& format) {
  if (format.bits != 16) return -EINVAL;
  if (const int error = snd_pcm_hw_params_any(&pcm, &params); error < 0) return error;
  if (const int error = snd_pcm_hw_params_set_rate_resample(&pcm, &params, 0); error < 0) return error;
  if (const int error = snd_pcm_hw_params_set_access(&pcm, &params, SND_PCM_ACCESS_RW_INTERLEAVED); error < 0) {
    return error;
  }
  if (const int error = snd_pcm_hw_params_set_format(&pcm, &params, SND_PCM_FORMAT_S16_LE); error < 0) return error;
  if (const int error = snd_pcm_hw_params_set_channels(&pcm, &params, format.stereo ? 2 : 1); error < 0) return error;
  return snd_pcm_hw_params_set_rate(&pcm, &params, static_cast<unsigned>(format.samplesPerSecond), 0);
}

}  // namespace

AlsaPcm OpenAlsaPcm(const std::string& pcmName, int* error) {
  snd_pcm_t* pcm = nullptr;
  const int result = snd_pcm_open(&pcm, pcmName.c_str(), SND_PCM_STREAM_CAPTURE, SND_PCM_NONBLOCK);
  if (error != nullptr) *error = result;
  return result < 0 ? nullptr : AlsaPcm(pcm);
}

bool AlsaOffers(snd_pcm_t& pcm, const WaveFormat& format) {
  snd_pcm_hw_params_t* params = nullptr;
  snd_pcm_hw_params_alloca(&params);
  return Narrow(pcm, *params, format) == 0;
}

int SetAlsaParams(snd_pcm_t& pcm, const WaveFormat& format, double latency) {
  snd_pcm_hw_params_t* params = nullptr;
  snd_pcm_hw_params_alloca(&params);
  if (const int error = Narrow(pcm, *params, format); error < 0) return error;
  auto period = static_cast<unsigned>(1000 * std::clamp(latency, kShortestPeriod, kLongestPeriod));
  unsigned held = kHeld;
  // What the driver makes of the two times is its own affair; the capture works with any.
  snd_pcm_hw_params_set_period_time_near(&pcm, params, &period, nullptr);
  snd_pcm_hw_params_set_buffer_time_near(&pcm, params, &held, nullptr);
  if (const int error = snd_pcm_hw_params(&pcm, params); error < 0) return error;
  snd_pcm_sw_params_t* software = nullptr;
  snd_pcm_sw_params_alloca(&software);
  if (const int error = snd_pcm_sw_params_current(&pcm, software); error < 0) return error;
  snd_pcm_uframes_t periodFrames = 0;
  snd_pcm_hw_params_get_period_size(params, &periodFrames, nullptr);
  snd_pcm_sw_params_set_avail_min(&pcm, software, std::max<snd_pcm_uframes_t>(periodFrames, 1));
  return snd_pcm_sw_params(&pcm, software);
}

}  // namespace tarvolt
