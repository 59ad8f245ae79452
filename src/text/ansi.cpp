// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/ansi.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tarvolt {
namespace {

/// What the bytes 128 to 159 stand for. The five bytes without a letter keep their number, so that text survives the
/// way to UTF-8 and back.
constexpr std::array<char16_t, 32> kUpperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char UpperByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 'a' && byte <= 'z') return static_cast<char>(byte - 0x20);
  if (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7) return static_cast<char>(byte - 0x20);
  if (byte == 0x9A || byte == 0x9C || byte == 0x9E) return static_cast<char>(byte - 0x10);
  if (byte == 0xFF) return static_cast<char>(0x9F);
  return c;
}

char16_t CodePointOfByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0x80 && byte <= 0x9F) return kUpperControls[byte - 0x80];
  return byte;
}

char ByteOfCodePoint(std::uint32_t codePoint) {
  if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) return static_cast<char>(codePoint);
  const auto* found = std::find(kUpperControls.begin(), kUpperControls.end(), codePoint);
  if (found == kUpperControls.end()) return '?';
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

/// Bytes of the sequence that `first` begins, 0 when it begins none.
std::size_t SequenceLength(unsigned char first) {
  if (first < 0x80) return 1;
  if (first < 0xC2) return 0;
  if (first < 0xE0) return 2;
  if (first < 0xF0) return 3;
  return first < 0xF5 ? 4 : 0;
}

/// Takes the sequence at the front of `rest` off it. A byte that begins no well-formed sequence counts alone, as a
/// code point that no byte stands for.
std::uint32_t TakeCodePoint(std::string_view& rest) {
  constexpr std::uint32_t kNone = 0x110000;
  constexpr std::array<std::uint32_t, 5> kLowest = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(rest[0]);
  const std::size_t length = SequenceLength(first);
  std::uint32_t codePoint = length < 2 ? first : first & (0x7Fu >> length);
  bool wellFormed = length != 0 && rest.size() >= length;
  for (std::size_t i = 1; wellFormed && i < length; ++i) {
    const auto next = static_cast<unsigned char>(rest[i]);
    wellFormed = (next & 0xC0) == 0x80;
    codePoint = codePoint << 6 | (next & 0x3F);
  }
  if (wellFormed && codePoint < kLowest[length]) wellFormed = false;
  rest.remove_prefix(wellFormed ? length : 1);
  return wellFormed ? codePoint : kNone;
}

}  // namespace

std::string Upper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperByte);
  return upper;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerByte);
  return lower;
}

char LowerByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 'A' && byte <= 'Z') return static_cast<char>(byte + 0x20);
  if (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7) return static_cast<char>(byte + 0x20);
  if (byte == 0x8A || byte == 0x8C || byte == 0x8E) return static_cast<char>(byte + 0x10);
  if (byte == 0x9F) return static_cast<char>(0xFF);
  return c;
}

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string PadTo(std::string_view text, std::size_t width) {
  std::string padded(text.substr(0, width));
  padded.resize(width, ' ');
  return padded;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperByte(x) == UpperByte(y); });
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(text);
  std::string replaced;
  std::size_t start = 0;
  for (std::size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, start)) {
    replaced += text.substr(start, hit - start);
    replaced += to;
    start = hit + from.size();
  }
  replaced += text.substr(start);
  return replaced;
}

std::string Utf8FromAnsi(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const char c : text) {
    const char16_t codePoint = CodePointOfByte(c);
    if (codePoint < 0x80) {
      utf8 += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
      utf8 += static_cast<char>(0xC0 | codePoint >> 6);
      utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
      utf8 += static_cast<char>(0xE0 | codePoint >> 12);
      utf8 += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
      utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
  }
  return utf8;
}

std::string AnsiFromUtf8(std::string_view text) {
  std::string ansi;
  ansi.reserve(text.size());
  while (!text.empty()) ansi += ByteOfCodePoint(TakeCodePoint(text));
  return ansi;
}

}  // namespace tarvolt
