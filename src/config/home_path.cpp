// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/home_path.h"

#include <algorithm>
#include <filesystem>

namespace tarvolt {
namespace {

constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

std::string WithSeparator(const std::string& home) {
  return home.ends_with(kSeparator) ? home : home + kSeparator;
}

}  // namespace

std::string PathFromStored(std::string_view text, const std::string& home) {
  const bool relative = text.starts_with('\\') && !text.starts_with("\\\\");  // two begin a network path
  if (!relative || home.empty()) return std::string(text);
  std::string rest(text.substr(1));
  std::replace(rest.begin(), rest.end(), '\\', kSeparator);
  return WithSeparator(home) + rest;
}

std::string StoredFromPath(std::string_view path, const std::string& home) {
  if (home.empty() || !path.starts_with(WithSeparator(home))) return std::string(path);
  std::string rest(path.substr(WithSeparator(home).size()));
  const bool readsBack = !rest.starts_with(kSeparator) && (kSeparator == '\\' || rest.find('\\') == std::string::npos);
  if (!readsBack) return std::string(path);
  std::replace(rest.begin(), rest.end(), kSeparator, '\\');
  return '\\' + rest;
}

}  // namespace tarvolt
