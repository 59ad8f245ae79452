// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// A small text pinned to a sample of a channel.
struct Notation {
  TimeStamp stamp = 0;
  std::int32_t index = 0;
  std::string text;
  std::int16_t channel = 0;
};

/// Marks a slot whose notation was deleted; such a slot is neither drawn nor saved.
inline constexpr const char* kDeletedNotation = "DELETED ITEM";

/// The notations of one chart. The count never passes 100: what comes after the hundredth lands on slot 100, each
/// overwriting the one before (meant: it is how such files read).
struct Notations {
  static constexpr int kSlots = 101;
  std::array<Notation, kSlots> slots;
  int count = 0;

  /// Puts a notation into the next slot. What would end it in a file, the bytes 254 and 255, line ends and the marks of
  /// a notes block, becomes blanks. One without a text is none and is left out.
  void Add(Notation notation);

  /// Those that `keep` wants, which may change them, in their order and without gaps; deleted ones are never kept.
  Notations Kept(const std::function<bool(Notation&)>& keep) const;

  /// Those of the samples first..last, both included, counted from `first`.
  Notations Within(std::int32_t first, std::int32_t last) const;
};

}  // namespace tarvolt
