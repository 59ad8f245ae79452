// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tarvolt {

/// Writes a number at `to` as the file has it: little-endian, unaligned.
template <class Number>
void PutLittle(char* to, Number value) {
  auto bytes = std::bit_cast<std::array<char, sizeof(Number)>>(value);
  if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
  std::memcpy(to, bytes.data(), sizeof(Number));
}

/// Reads what PutLittle wrote.
template <class Number>
Number GetLittle(const char* from) {
  std::array<char, sizeof(Number)> bytes;
  std::memcpy(bytes.data(), from, sizeof(Number));
  if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
  return std::bit_cast<Number>(bytes);
}

}  // namespace tarvolt
