// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/observer_macros.h"

#include <algorithm>

#include "config/text_file.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::string_view kHeading = "Tarvolt Observer Log Macros";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kMarks = "~*";

std::string KeyOf(const char* base, int macro) {
  return base + NumberText(std::int64_t{macro});
}

}  // namespace

std::optional<OMacroAction> ReadOMacro(std::string_view text) {
  constexpr std::size_t kMostMarks = 2;
  if (text.size() < kMostMarks) return std::nullopt;
  OMacroAction action;
  const std::size_t ending = text.size() - kMostMarks;
  action.text = text.substr(0, ending);
  for (const char c : text.substr(ending)) {
    if (kMarks.find(c) == std::string_view::npos) action.text += c;
    if (c == '~') action.stamped = true;
    if (c == '*') action.marked = true;
  }
  return action;
}

std::string CleanOMacroText(std::string_view text, std::size_t longest) {
  std::string clean(text.substr(0, longest));
  std::replace_if(
      clean.begin(), clean.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
  return clean;
}

// The default of the key, which stands for a button that nobody has configured.
constexpr std::string_view kUnsetMacro = " text";

OMacroSet GetOMacros(const SettingsStore& store) {
  OMacroSet macros;
  for (int i = 0; i < kOMacros; ++i) {
    const auto stored = [&](const char* base) { return store.GetSetting(Section::Settings, KeyOf(base, i)); };
    macros[i].caption = CleanOMacroText(stored("oMacroCaption"), OMacro::kLongestCaption);
    const std::string text = stored("oMacro");
    if (text != kUnsetMacro) macros[i].text = CleanOMacroText(text, OMacro::kLongestText);
  }
  return macros;
}

void SaveOMacros(SettingsStore& store, const OMacroSet& macros) {
  store.BeginBatch();
  for (int i = 0; i < kOMacros; ++i) {
    store.SaveSetting(Section::Settings, KeyOf("oMacroCaption", i), macros[i].caption);
    store.SaveSetting(Section::Settings, KeyOf("oMacro", i), macros[i].text);
  }
  store.EndBatch();
}

std::string WriteOMacros(const OMacroSet& macros) {
  std::string contents = std::string(kHeading).append(kLineEnd);
  for (const OMacro& macro : macros) {
    contents.append(CleanOMacroText(macro.caption, OMacro::kLongestCaption)).append(kLineEnd);
    contents.append(CleanOMacroText(macro.text, OMacro::kLongestText)).append(kLineEnd);
  }
  return contents;
}

std::optional<OMacroSet> ParseOMacros(std::string_view contents) {
  if (TakeLine(contents) != kHeading) return std::nullopt;
  OMacroSet macros;
  for (OMacro& macro : macros) {
    macro.caption = CleanOMacroText(TakeLine(contents), OMacro::kLongestCaption);
    macro.text = CleanOMacroText(TakeLine(contents), OMacro::kLongestText);
  }
  return macros;
}

}  // namespace tarvolt
