#pragma once

#include <array>
#include <string>
#include <string_view>

#include "logs/metadata.h"
#include "logs/notations.h"
#include "model/chart_window.h"

namespace tarvolt {

/// What the notes block of a data file says.
struct ParsedNotes {
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
ParsedNotes ParseNotes(std::string_view raw);

/// The text without the first framing in it, which goes only when its marks are more than 4 characters apart.
std::string WithoutFraming(std::string_view text);

/// Which tokens and which notations a block gets.
struct NotesOptions {
  bool usingUT = false;
  bool lmst = false;
  bool noTimeStamps = false;
  bool timeRefZero = false;
  bool integers = false;
  bool onlyView = false;  ///< keep only the notations of the samples first..last, counted from first
  std::int32_t first = 0;
  std::int32_t last = 0;
};

/// The block of this chart: free text, then the framing with all items. Nothing is escaped.
std::string BuildNotes(const ChartWindow& window, std::string_view freeText, const NotesOptions& options);

}  // namespace tarvolt
