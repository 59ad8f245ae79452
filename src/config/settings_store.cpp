// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settings_store.h"

#include <array>

#include "config/settings_table.h"
#include "config/text_file.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::array<std::string_view, 6> kSectionNames = {"Settings", "Colors",     "TickGrid",
                                                           "Recent",   "LogEntries", "Export"};

std::string SectionName(Section section) {
  return std::string(kSectionNames.at(static_cast<std::size_t>(section)));
}

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// True for a byte that would be taken for something else, or lost, when it stood in a line as it is.
bool NeedsEscape(char c, bool atAnEnd, std::string_view delimiters) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 0x7F || c == '\\' || (c == ' ' && atAnEnd) ||
         delimiters.find(c) != std::string_view::npos;
}

/// Text as it stands in the file: a byte that would not survive is "\" and its two hexadecimal digits, in capitals.
/// People can edit the file, so all other bytes stand as they are.
std::string Escape(std::string_view text, std::string_view delimiters = {}) {
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!NeedsEscape(text[i], i == 0 || i + 1 == text.size(), delimiters)) {
      escaped += text[i];
      continue;
    }
    const auto byte = static_cast<unsigned char>(text[i]);
    escaped += '\\';
    escaped += kHexDigits[byte >> 4];
    escaped += kHexDigits[byte & 15];
  }
  return escaped;
}

// A backslash that begins no escape is itself, as in a path that a person has typed.
std::string Unescape(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    plain += text[i];
    if (text[i] != '\\' || text.size() - i < 3) continue;
    const std::size_t high = kHexDigits.find(text[i + 1]);
    const std::size_t low = kHexDigits.find(text[i + 2]);
    if (high == std::string_view::npos || low == std::string_view::npos) continue;
    plain.back() = static_cast<char>(high << 4 | low);
    i += 2;
  }
  return plain;
}

}  // namespace

bool SettingsStore::NameOrder::operator()(const std::string& a, const std::string& b) const {
  return Upper(a) < Upper(b);
}

SettingsStore::SettingsStore(FileSystem& files, std::filesystem::path file) : files_(files), file_(std::move(file)) {}

void SettingsStore::OnProblem(Problem problem) {
  problem_ = std::move(problem);
}

void SettingsStore::Load() {
  values_.clear();
  changed_ = false;
  writable_ = true;
  if (!files_.FileExists(file_)) return;
  std::string problem;
  const auto text = ReadTextFile(files_, file_, problem);
  if (!text) return SetAside(problem);
  ReadLines(*text);
}

void SettingsStore::ReadLines(std::string_view text) {
  Values* section = nullptr;
  std::int64_t number = 0;
  std::int64_t firstBad = 0;
  std::int64_t bad = 0;
  while (!text.empty()) {
    ++number;
    if (ReadLine(Trim(TakeLine(text)), section)) continue;
    if (++bad == 1) firstBad = number;
  }
  if (bad == 0) return;
  if (values_.empty()) return SetAside("it holds no settings");
  Tell("Settings in " + file_.string() + ": lines left out because they could not be understood: " + NumberText(bad) +
       ", the first is line " + NumberText(firstBad));
}

/// False for a line that is neither empty nor a section nor a value of a section.
bool SettingsStore::ReadLine(std::string_view line, Values*& section) {
  if (line.empty()) return true;
  if (line.front() == '[') {
    // Values behind a damaged section line belong to no section rather than to the one before.
    const std::string name = line.ends_with(']') ? Unescape(line.substr(1, line.size() - 2)) : std::string();
    section = name.empty() ? nullptr : &values_[name];
    return section != nullptr;
  }
  const std::size_t equals = line.find('=');
  if (section == nullptr || equals == std::string_view::npos || equals == 0) return false;
  (*section)[Unescape(Trim(line.substr(0, equals)))] = Unescape(Trim(line.substr(equals + 1)));
  return true;
}

void SettingsStore::SetAside(const std::string& reason) {
  constexpr int kNames = 100;
  values_.clear();
  std::filesystem::path aside;
  for (int i = 1; i <= kNames; ++i) {
    aside = file_;
    aside += ".damaged" + NumberText(std::int64_t{i});
    if (!files_.FileExists(aside)) break;
  }
  std::error_code error;
  files_.Rename(file_, aside, error);
  writable_ = !error;
  Tell("Settings in " + file_.string() + " could not be read: " + reason +
       (writable_
            ? ". The file is kept as " + aside.string() + " and all settings have their defaults."
            : ". It could not be set aside (" + error.message() + "), so changes will not be stored in this run."));
}

std::string SettingsStore::GetSetting(Section section, std::string_view key) const {
  return GetSetting(section, key, DefaultText(section, key));
}

std::string SettingsStore::GetSetting(Section section, std::string_view key, std::string_view fallback) const {
  return Get(SectionName(section), key, fallback);
}

std::string_view LastingName(std::string_view card) {
  const std::size_t colon = card.find(':');
  const bool isDescribed = colon != card.npos && colon > 0 && card.substr(colon).starts_with(": ");
  return isDescribed ? card.substr(0, colon) : card;
}

std::string SettingsStore::GetCardSetting(std::string_view card, std::string_view key,
                                          std::string_view fallback) const {
  return Get(std::string(LastingName(card)), key, fallback);
}

std::string SettingsStore::Get(const std::string& section, std::string_view key, std::string_view fallback) const {
  const auto values = values_.find(section);
  if (values == values_.end()) return std::string(fallback);
  const auto value = values->second.find(std::string(key));
  return value == values->second.end() ? std::string(fallback) : value->second;
}

void SettingsStore::SaveSetting(Section section, std::string_view key, std::string_view text) {
  Save(SectionName(section), key, text);
}

void SettingsStore::SaveCardSetting(std::string_view card, std::string_view key, std::string_view text) {
  Save(std::string(LastingName(card)), key, text);
}

void SettingsStore::Save(const std::string& section, std::string_view key, std::string_view text) {
  if (key.empty()) return;
  const auto [value, isNew] = values_[section].try_emplace(std::string(key), text);
  if (isNew || value->second != text) {
    value->second = text;
    changed_ = true;
  }
  if (!batching_) WriteIfChanged();
}

void SettingsStore::BeginBatch() {
  batching_ = true;
}

void SettingsStore::EndBatch() {
  batching_ = false;
  WriteIfChanged();
}

std::string SettingsStore::Render() const {
  std::string text;
  for (const auto& [section, values] : values_) {
    text += '[' + Escape(section) + "]\n";
    for (const auto& [key, value] : values) text += Escape(key, "=[") + '=' + Escape(value) + '\n';
  }
  return text;
}

void SettingsStore::WriteIfChanged() {
  if (!changed_ || !writable_) return;
  std::string problem;
  changed_ = !ReplaceTextFile(files_, file_, Render(), problem);
  if (changed_) Tell("Settings could not be stored in " + file_.string() + ": " + problem);
}

void SettingsStore::Tell(const std::string& words) const {
  if (problem_) problem_(words);
}

}  // namespace tarvolt
