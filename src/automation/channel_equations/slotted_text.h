// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "automation/channel_equations/datum.h"

namespace tarvolt {

/// Text in which numbers are still to be put: what is below kFirstSlot is a byte, what is above stands for a number.
using SlottedText = std::u16string;

inline constexpr char16_t kFirstSlot = 256;

inline bool IsSlot(char16_t c) {
  return c >= kFirstSlot;
}
inline std::size_t SlotOf(char16_t c) {
  return c - kFirstSlot;
}

/// The numbers of one equation, each datum once.
using Slots = std::vector<Datum>;

/// The text of the bytes alone, with `stand` in place of each number.
inline std::string BytesOf(const SlottedText& text, char stand) {
  std::string bytes;
  for (const char16_t c : text) bytes += IsSlot(c) ? stand : static_cast<char>(c);
  return bytes;
}

}  // namespace tarvolt
