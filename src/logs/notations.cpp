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

}  // namespace tarvolt
