// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/path_text.h"

#include <cstddef>
#include <optional>

#include "text/ansi.h"

namespace tarvolt {
namespace {

struct LeadByte {
  std::size_t following = 0;
  unsigned lowestNext = 0x80;  // the bounds of the second byte shut out overlong forms, surrogates and overflow
  unsigned highestNext = 0xBF;
};

std::optional<LeadByte> ReadLeadByte(unsigned byte) {
  if (byte < 0x80) return LeadByte{0};
  if (byte >= 0xC2 && byte <= 0xDF) return LeadByte{1};
  if (byte == 0xE0) return LeadByte{2, 0xA0, 0xBF};
  if (byte == 0xED) return LeadByte{2, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return LeadByte{2};
  if (byte == 0xF0) return LeadByte{3, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return LeadByte{3};
  if (byte == 0xF4) return LeadByte{3, 0x80, 0x8F};
  return std::nullopt;
}

bool IsPlain(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const auto lead = ReadLeadByte(static_cast<unsigned char>(text[i++]));
    if (!lead || lead->following > text.size() - i) return false;
    for (std::size_t k = 0; k < lead->following; ++k) {
      const auto byte = static_cast<unsigned char>(text[i++]);
      if (byte < (k == 0 ? lead->lowestNext : 0x80) || byte > (k == 0 ? lead->highestNext : 0xBF)) return false;
    }
  }
  return true;
}

bool HasAnsiForm(std::string_view utf8) {
  return Utf8FromAnsi(AnsiFromUtf8(utf8)) == utf8;
}

// Single bytes that happen to be UTF-8 would be taken for it.
std::string PathTextFromUtf8(std::string_view utf8) {
  std::string ansi = AnsiFromUtf8(utf8);
  const bool isClear = IsPlain(ansi) || !IsUtf8(ansi);
  return isClear && Utf8FromAnsi(ansi) == utf8 ? ansi : std::string(utf8);
}

std::string Utf8FromPathText(std::string_view path) {
  return IsUtf8(path) ? std::string(path) : Utf8FromAnsi(path);
}

}  // namespace tarvolt
