// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/wav_maker.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>

#include "apps/tv-uds/signals/random.h"

namespace tarvolt::uds {
namespace {

constexpr std::uint32_t kRate = 44100;
constexpr std::uint32_t kSides = 2;
constexpr std::uint32_t kFrameBytes = 2 * kSides;
constexpr int kFramesALevel = 441;  // the level follows the signal a hundred times a second
constexpr std::uint64_t kNoise = 0x5A00;

void Add(std::string& bytes, std::uint32_t number, int width) {
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

std::string Header(std::uint32_t dataBytes) {
  std::string bytes = "RIFF";
  Add(bytes, 36 + dataBytes, 4);
  bytes += "WAVEfmt ";
  Add(bytes, 16, 4);
  Add(bytes, 1, 2);
  Add(bytes, kSides, 2);
  Add(bytes, kRate, 4);
  Add(bytes, kRate * kFrameBytes, 4);
  Add(bytes, kFrameBytes, 2);
  Add(bytes, 16, 2);
  bytes += "data";
  Add(bytes, dataBytes, 4);
  return bytes;
}

}  // namespace

bool WriteWav(const std::string& path, const Signal& signal, double seconds, std::uint64_t seed, std::string& why) {
  const auto frames = static_cast<std::uint32_t>(seconds * kRate);
  std::string bytes = Header(frames * kFrameBytes);
  const Random random(seed);
  double levels[kSides] = {};
  for (std::uint32_t frame = 0; frame < frames; ++frame) {
    for (std::uint32_t side = 0; side < kSides; ++side) {
      if (frame % kFramesALevel == 0) {
        const Signal::Moment moment{frame / kFramesALevel, static_cast<double>(frame) / kRate};
        levels[side] = signal.Value(static_cast<int>(side), moment);
      }
      const double sample = levels[side] * random.Gaussian(kNoise + side, frame);
      Add(bytes, static_cast<std::uint32_t>(std::lround(std::clamp(sample, -32767.0, 32767.0))), 2);
    }
  }
  std::ofstream stream(path, std::ios::binary);
  stream << bytes;
  stream.close();
  if (stream) return true;
  why = path + ": " + std::strerror(errno);
  return false;
}

}  // namespace tarvolt::uds
