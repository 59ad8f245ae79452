// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/equation_file.h"

#include <algorithm>

#include "automation/channel_equations/equation_check.h"
#include "config/text_file.h"

namespace tarvolt {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

std::string CleanEquation(std::string_view text) {
  std::string clean(text);
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

Outcome SaveEquationFile(FileSystem& files, const std::filesystem::path& path, const EquationSet& set) {
  if (const Outcome fits = CheckLengths(set); !fits) return fits;
  std::string problem;
  if (!ReplaceTextFile(files, path, WriteEquations(set), problem)) return Failure{problem};
  return Done();
}

Outcome LoadEquationFile(FileSystem& files, const std::filesystem::path& path, EquationSet& set) {
  std::string problem;
  const std::optional<std::string> contents = ReadTextFile(files, path, problem);
  if (!contents) return Failure{problem};
  EquationSet read = set;
  ParseEquations(*contents, read);
  if (const Outcome fits = CheckLengths(read); !fits) return fits;
  set = read;
  return Done();
}

}  // namespace tarvolt
