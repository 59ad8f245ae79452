// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/notations.h"

#include <utility>

#include "text/ansi.h"

namespace tarvolt {
namespace {

std::string FitForFile(std::string text) {
  for (const char* mark : {"\xFE", "\xFF", "\r", "\n", "*[[*", "*]]*"}) text = ReplaceAll(text, mark, " ");
  return text;
}

}  // namespace

void Notations::Add(Notation notation) {
  notation.text = FitForFile(std::move(notation.text));
  if (Trim(notation.text).empty()) return;
  slots[count] = std::move(notation);
  if (count < kSlots - 1) ++count;
}

Notations Notations::Kept(const std::function<bool(Notation&)>& keep) const {
  Notations kept;
  for (Notation notation : slots) {
    if (notation.text.empty() || notation.text == kDeletedNotation || !keep(notation)) continue;
    kept.slots[kept.count] = std::move(notation);
    if (kept.count < kSlots - 1) ++kept.count;
  }
  return kept;
}

Notations Notations::Within(std::int32_t first, std::int32_t last) const {
  return Kept([first, last](Notation& notation) {
    const bool within = notation.index >= first && notation.index <= last;
    notation.index -= first;
    return within;
  });
}

}  // namespace tarvolt
