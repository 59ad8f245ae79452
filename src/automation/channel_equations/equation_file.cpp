#include "automation/channel_equations/equation_file.h"

#include <algorithm>

#include "config/text_file.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string KeyOf(const char* base, std::size_t channel) {
  return base + NumberText(static_cast<std::int64_t>(channel));
}

}  // namespace

std::string CleanEquation(std::string_view text) {
  std::string clean(text.substr(0, kLongestChannelEquation));
  std::replace_if(
      clean.begin(), clean.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
  return clean;
}

std::string WriteEquations(const EquationSet& set) {
  std::string contents;
  for (const std::string& equation : set.EquString) contents.append(CleanEquation(equation)).append(kLineEnd);
  return contents;
}

void ParseEquations(std::string_view contents, EquationSet& set) {
  for (std::string& equation : set.EquString) {
    if (contents.empty()) return;
    equation = CleanEquation(TakeLine(contents));
  }
}

bool SaveEquationFile(FileSystem& files, const std::filesystem::path& path, const EquationSet& set,
                      std::string& problem) {
  return ReplaceTextFile(files, path, WriteEquations(set), problem);
}

bool LoadEquationFile(FileSystem& files, const std::filesystem::path& path, EquationSet& set, std::string& problem) {
  const std::optional<std::string> contents = ReadTextFile(files, path, problem);
  if (!contents) return false;
  ParseEquations(*contents, set);
  return true;
}

EquationSet LoadDefaultEquations(const SettingsStore& store) {
  EquationSet set;
  for (std::size_t i = 0; i < set.EquString.size(); ++i) {
    set.EquString[i] = store.GetSetting(Section::Settings, KeyOf("Equ", i));
    set.ApplyToCH[i] = RoundToInt16(Val(store.GetSetting(Section::Settings, KeyOf("ApplyToCH", i))));
  }
  return set;
}

void SaveDefaultEquations(SettingsStore& store, const EquationSet& set) {
  store.BeginBatch();
  for (std::size_t i = 0; i < set.EquString.size(); ++i) {
    store.SaveSetting(Section::Settings, KeyOf("Equ", i), set.EquString[i]);
    store.SaveSetting(Section::Settings, KeyOf("ApplyToCH", i), NumberText(std::int64_t{set.ApplyToCH[i]}));
  }
  store.EndBatch();
}

}  // namespace tarvolt
