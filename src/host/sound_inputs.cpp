// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/sound_inputs.h"

#include "host/alsa_wave_in.h"
#include "host/wav_file_device.h"

namespace tarvolt {

SoundInputs::SoundInputs(QtEventLoop& loop, Clock& clock, FileSystem& files, DriverCalls& drivers)
    : loop_(loop), clock_(clock), files_(files), drivers_(drivers), alsa_(drivers) {}

std::vector<std::string> SoundInputs::List() {
  return alsa_.List();
}

bool SoundInputs::IsThere(const std::string& name) {
  const auto file = ReadWavFileName(name);
  return file ? files_.FileExists(file->path) : alsa_.IsThere(name);
}

std::optional<WaveFormat> SoundInputs::FixedFormat(const std::string& name) {
  const auto file = ReadWavFileName(name);
  if (!file) return std::nullopt;
  std::string why;
  const auto reader = WavFileReader::Open(files_, file->path, why);
  return reader ? std::optional(reader->Format()) : std::nullopt;
}

std::vector<WaveFormat> SoundInputs::Formats(const std::string& name, std::span<const WaveFormat> asked) {
  if (!ReadWavFileName(name)) return alsa_.Formats(name, asked);
  const std::optional<WaveFormat> fixed = FixedFormat(name);
  return fixed ? std::vector<WaveFormat>{*fixed} : std::vector<WaveFormat>();
}

std::unique_ptr<WaveInDevice> SoundInputs::Make(const std::string& name) {
  if (auto file = ReadWavFileName(name)) {
    return std::make_unique<WavFileDevice>(loop_, clock_, files_, *std::move(file));
  }
  return std::make_unique<AlsaWaveIn>(loop_, drivers_, name);
}

}  // namespace tarvolt
