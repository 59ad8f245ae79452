// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a notes block: what is read from them and written again must read the same.

#include <cstddef>
#include <cstdint>
#include <string>

#include "files/format/notes_block.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  const std::string_view raw(reinterpret_cast<const char*>(data), size);
  const NotesBlock first = ParseNotes(raw);
  Require(first.freeText.size() <= raw.size());
  Require(first.notations.count >= 0 && first.notations.count < Notations::kSlots);
  Require(first.metadata.Records().size() <= Metadata::kMaxRecords);

  // Items may hold tokens and marks of their own, so only the flags, which are written first, must come back.
  // Free text that holds a mark, or makes one with what follows it, is not protected: a known weakness of the format.
  const std::string front = first.freeText + "*[[*";
  if (front.find("*[[*") != first.freeText.size() || front.find("*]]*") != std::string::npos) return 0;
  const NotesBlock second = ParseNotes(BuildNotes(first, static_cast<int>(first.labels.size())));
  Require(second.usingUT || !first.usingUT);
  Require(second.lmst || !first.lmst);
  Require(second.noTimeStamps || !first.noTimeStamps);
  Require(second.timeRefZero || !first.timeRefZero);
  return 0;
}
