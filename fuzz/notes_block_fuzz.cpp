// Any bytes as a notes block: what is read from them and written again must read the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "files/notes_block.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  const std::string_view raw(reinterpret_cast<const char*>(data), size);
  const ParsedNotes first = ParseNotes(raw);
  Require(first.freeText.size() <= raw.size());
  Require(first.notations.count >= 0 && first.notations.count < Notations::kSlots);
  Require(first.metadata.Records().size() <= Metadata::kMaxRecords);

  // Items may hold tokens and marks of their own, so only the flags, which are written first, must come back.
  NotesOptions options;
  options.usingUT = first.usingUT;
  options.lmst = first.lmst;
  options.noTimeStamps = first.noTimeStamps;
  options.timeRefZero = first.timeRefZero;
  ChartWindow window;
  window.channelLabels = first.labels;
  window.metadata = first.metadata;
  window.notations = first.notations;
  if (first.freeText.find("*[[*") != std::string::npos || first.freeText.find("*]]*") != std::string::npos) return 0;
  if (!first.freeText.empty() && first.freeText.back() == '*') return 0;  // would make a mark with the one behind it
  const ParsedNotes second = ParseNotes(BuildNotes(window, first.freeText, options));
  Require(second.usingUT || !first.usingUT);
  Require(second.lmst || !first.lmst);
  Require(second.noTimeStamps || !first.noTimeStamps);
  Require(second.timeRefZero || !first.timeRefZero);
  return 0;
}
