// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/log_words.h"

#include <algorithm>

#include "text/ansi.h"

namespace tarvolt {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

bool IsWebAddress(std::string_view upper) {
  // Counted from 1: a name of at least one letter stands between the slashes and the first point.
  constexpr std::size_t kFirstPoint = 9;
  const bool hasScheme = upper.starts_with("HTTP://") || upper.starts_with("HTTPS://");
  if (!hasScheme || upper.find(' ') != std::string_view::npos) return false;
  const std::size_t point = upper.find('.');
  return point != std::string_view::npos && point + 1 >= kFirstPoint;
}

}  // namespace

std::string WordAt(std::string_view line, std::size_t column) {
  const std::size_t reference = line.find(kFileReference);
  if (reference != std::string_view::npos && column >= reference + kFileReference.size()) {
    return Trim(line.substr(reference + kFileReference.size()));
  }
  column = std::min(column, line.size());
  std::size_t begin = column;
  while (begin > 0 && !IsBlank(line[begin - 1])) --begin;
  std::size_t end = column;
  while (end < line.size() && !IsBlank(line[end])) ++end;
  return std::string(line.substr(begin, end - begin));
}

WordKind KindOfWord(std::string_view word) {
  const std::string upper = Upper(word);
  if (IsWebAddress(upper)) return WordKind::WebAddress;
  if (upper.starts_with("HTTP://") || upper.starts_with("HTTPS://")) return WordKind::None;
  if (upper.ends_with(".JPG")) return WordKind::Picture;
  if (upper.ends_with(".WAV")) return WordKind::Sound;
  if (upper.ends_with(".TXT")) return WordKind::Text;
  return WordKind::None;
}

}  // namespace tarvolt
