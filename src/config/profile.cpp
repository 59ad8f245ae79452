// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/profile.h"

#include <algorithm>
#include <optional>
#include <set>

#include "config/home_path.h"
#include "config/settings_row.h"
#include "config/text_file.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

/// A profile holds some two hundred lines.
constexpr std::size_t kLineLimit = 100000;

constexpr char kEndOfValue = ';';

bool HoldsKey(std::string_view upperLine, std::string_view upperKey) {
  // Meant to be found anywhere in the line: a key that is the tail of a longer one, or that stands in a value, counts.
  for (std::size_t at = upperLine.find(upperKey); at != std::string_view::npos; at = upperLine.find(upperKey, at + 1)) {
    const std::string_view behind = upperLine.substr(at + upperKey.size());
    if (behind.starts_with('=') || behind.starts_with(" =")) return true;
  }
  return false;
}

/// The value of a line that holds a "=". Blanks in front of the closing ";" are part of it.
std::string ValueOfLine(std::string_view line) {
  std::string value = Trim(line.substr(line.find('=') + 1));
  if (value.ends_with(kEndOfValue)) value.pop_back();
  return value;
}

/// Every key of the list, upper-cased.
std::set<std::string> KeysOfProfiles() {
  std::set<std::string> keys;
  for (const SettingRow& row : ProfileRows()) {
    for (int index = 0; index < row.count; ++index) keys.insert(Upper(row.ProfileKey(index)));
  }
  return keys;
}

/// The lines of a profile, with their upper-case form made once for all keys.
class ProfileLines {
 public:
  void Add(std::string_view line) {
    lines_.emplace_back(line);
    upperLines_.push_back(Upper(line));
  }

  std::size_t Size() const { return lines_.size(); }

  /// A key counts at the begin of a line alone: anywhere else the short ones stand in any file by chance.
  bool HoldsSomeOf(const std::set<std::string>& upperKeys) const {
    return std::any_of(upperLines_.begin(), upperLines_.end(), [&](const std::string& line) {
      return upperKeys.contains(Trim(std::string_view(line).substr(0, line.find('='))));
    });
  }

  std::string Value(std::string_view key, std::string_view fallback) const {
    const std::string upperKey = Upper(key);
    const auto found = std::find_if(upperLines_.begin(), upperLines_.end(),
                                    [&](const std::string& line) { return HoldsKey(line, upperKey); });
    if (found == upperLines_.end()) return std::string(fallback);
    std::string value = ValueOfLine(lines_[static_cast<std::size_t>(found - upperLines_.begin())]);
    return value.empty() ? std::string(fallback) : value;
  }

 private:
  std::vector<std::string> lines_;
  std::vector<std::string> upperLines_;
};

Result<ProfileLines> ReadProfileLines(FileSystem& files, const std::filesystem::path& path) {
  std::string problem;
  const std::optional<std::string> text = ReadTextFile(files, path, problem);
  if (!text) return Failure{problem};
  ProfileLines lines;
  for (std::string_view rest = *text; !rest.empty();) {
    const std::string_view line = TakeLine(rest);
    if (line.find('=') == std::string_view::npos) continue;
    if (lines.Size() == kLineLimit) return Failure{"it has too many lines"};
    lines.Add(line);
  }
  if (!lines.HoldsSomeOf(KeysOfProfiles())) return Failure{"it is no profile: it has no line with a known key"};
  return lines;
}

/// A line end inside a value would make lines of its own of what is behind it.
std::string OnOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return text;
}

std::string LineOf(const SettingRow& row, int index, const Settings& settings) {
  if (!row.fixedLine.empty()) return std::string(row.fixedLine);
  return row.ProfileKey(index) + " = " + OnOneLine(row.Text(settings, index)) + kEndOfValue;
}

}  // namespace

std::string GetProfileValue(const std::vector<std::string>& lines, std::string_view key, std::string_view fallback) {
  ProfileLines profile;
  for (const std::string& line : lines) profile.Add(line);
  return profile.Value(key, fallback);
}

Outcome LoadProfileFile(FileSystem& files, const std::filesystem::path& path, const SettingOverrides& overrides,
                        const std::string& home, Settings& settings) {
  if (path.empty()) return Failure{"it has no name"};
  const Result<ProfileLines> lines = ReadProfileLines(files, path);
  if (!lines) return Failure{lines.Words()};
  for (const SettingRow& row : ProfileRows()) {
    if (row.lineOnly) continue;
    for (int index = 0; index < row.count; ++index) {
      const std::string value = lines->Value(row.ProfileKey(index), row.Fallback(index));
      row.Set(settings, index, row.IsUnderHome() ? PathFromStored(value, home) : value);
    }
  }
  ApplyOverrides(overrides, home, settings);
  return Done();
}

Outcome SaveProfileFile(FileSystem& files, const std::filesystem::path& path, const Settings& settings) {
  std::string text;
  for (const SettingRow& row : ProfileRows()) {
    for (int index = 0; index < row.count; ++index) text += LineOf(row, index, settings) + "\r\n";
  }
  std::string problem;
  if (!ReplaceTextFile(files, path, text, problem)) return Failure{problem};
  return Done();
}

}  // namespace tarvolt
