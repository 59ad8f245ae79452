#include "config/profile.h"

#include <algorithm>

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

/// The lines of a profile, with their upper-case form made once for all keys.
class ProfileLines {
 public:
  void Add(std::string_view line) {
    lines_.emplace_back(line);
    upperLines_.push_back(Upper(line));
  }

  std::size_t Size() const { return lines_.size(); }

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

bool ReadProfileLines(std::string_view text, ProfileLines& lines, std::string& problem) {
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (line.find('=') == std::string_view::npos) continue;
    if (lines.Size() == kLineLimit) {
      problem = "it has too many lines";
      return false;
    }
    lines.Add(line);
  }
  return true;
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

bool LoadProfileFile(FileSystem& files, const std::filesystem::path& path, const SettingOverrides& overrides,
                     const std::string& home, Settings& settings, std::string& problem) {
  if (path.empty()) return false;
  const auto text = ReadTextFile(files, path, problem);
  ProfileLines lines;
  if (!text || !ReadProfileLines(*text, lines, problem)) return false;
  for (const SettingRow& row : ProfileRows()) {
    if (row.lineOnly) continue;
    for (int index = 0; index < row.count; ++index) {
      const std::string value = lines.Value(row.ProfileKey(index), row.Fallback(index));
      row.Set(settings, index, row.IsUnderHome() ? PathFromStored(value, home) : value);
    }
  }
  ApplyOverrides(overrides, home, settings);
  return true;
}

bool SaveProfileFile(FileSystem& files, const std::filesystem::path& path, const Settings& settings,
                     std::string& problem) {
  std::string text;
  for (const SettingRow& row : ProfileRows()) {
    for (int index = 0; index < row.count; ++index) text += LineOf(row, index, settings) + "\r\n";
  }
  return ReplaceTextFile(files, path, text, problem);
}

}  // namespace tarvolt
