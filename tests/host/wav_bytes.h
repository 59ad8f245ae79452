// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarvolt {

inline void AddNumber(std::string& bytes, std::uint32_t number, int width) {
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

inline std::string Chunk(const std::string& name, const std::string& content) {
  std::string bytes = name;
  AddNumber(bytes, static_cast<std::uint32_t>(content.size()), 4);
  return bytes + content + std::string(content.size() % 2, '\0');
}

inline std::string FormatChunk(int kind, int channels, int rate, int bits) {
  std::string content;
  AddNumber(content, kind, 2);
  AddNumber(content, channels, 2);
  AddNumber(content, rate, 4);
  AddNumber(content, rate * channels * bits / 8, 4);
  AddNumber(content, channels * bits / 8, 2);
  AddNumber(content, bits, 2);
  return Chunk("fmt ", content);
}

inline std::string Samples16(const std::vector<std::int16_t>& samples) {
  std::string bytes;
  for (const std::int16_t sample : samples) AddNumber(bytes, static_cast<std::uint16_t>(sample), 2);
  return bytes;
}

inline std::string Riff(const std::string& chunks) {
  std::string bytes = "RIFF";
  AddNumber(bytes, static_cast<std::uint32_t>(chunks.size() + 4), 4);
  return bytes + "WAVE" + chunks;
}

/// A whole wave file of 16-bit samples, interleaved.
inline std::string WavBytes(const std::vector<std::int16_t>& samples, int rate, int channels) {
  return Riff(FormatChunk(1, channels, rate, 16) + Chunk("data", Samples16(samples)));
}

}  // namespace tarvolt
