// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "logs/metadata.h"
#include "logs/notations.h"

namespace tarvolt {

/// What the notes block of a data file says.
struct NotesBlock {
  std::string freeText;
  bool usingUT = false;
  bool integers = false;
  bool lmst = false;
  bool noTimeStamps = false;
  bool timeRefZero = false;
  std::array<std::string, 9> labels;
  std::array<std::string, 9> offsets;  ///< as the text that stands in the file
  std::string xAxisLabel;
  std::string yAxisLabel;
  Metadata metadata;
  Notations notations;
};

/// Takes a raw notes block apart. Never fails: what cannot be understood is left out, and text without the two marks is
/// free text as a whole.
NotesBlock ParseNotes(std::string_view raw);

/// The text without the first framing in it, which goes only when its marks are more than 4 characters apart.
std::string WithoutFraming(std::string_view text);

/// The bytes of a block for a file of that many channels, 9 at most: free text, then the framing with all items.
/// Framing in the free text goes; nothing else is escaped.
std::string BuildNotes(const NotesBlock& notes, int channels);

}  // namespace tarvolt
