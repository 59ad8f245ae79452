// SPDX-License-Identifier: GPL-3.0-or-later
#include "architecture/source_tree.h"

#include <algorithm>
#include <fstream>
#include <regex>

namespace tarvolt {

namespace {

std::vector<std::string> ReadLines(const std::filesystem::path& path) {
  std::ifstream stream(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// Blanks string literals and line comments of one line.
std::string CodeOfLine(const std::string& line) {
  std::string code;
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (quote != 0) {
      if (c == '\\') {
        ++i;
      } else if (c == quote) {
        quote = 0;
      }
      continue;
    }
    if (c == '/' && i + 1 < line.size() && line[i + 1] == '/') break;
    const bool digitSeparator = c == '\'' && i > 0 && std::isalnum(static_cast<unsigned char>(line[i - 1])) != 0;
    if (c == '"' || (c == '\'' && !digitSeparator)) {
      quote = c;
      continue;
    }
    code += c;
  }
  return code;
}

}  // namespace

std::vector<std::string> SourceFile::Includes() const {
  static const std::regex kInclude("^\\s*#include \"([^\"]+)\"");
  std::vector<std::string> includes;
  for (const std::string& line : lines) {
    std::smatch match;
    if (std::regex_search(line, match, kInclude)) includes.push_back(match[1]);
  }
  return includes;
}

std::string SourceFile::Floor() const {
  auto part = path.begin();
  if (part == path.end() || *part != "src" || ++part == path.end()) return "";
  return part->string();
}

std::vector<SourceFile> ReadSourceTree() {
  const std::filesystem::path root = TARVOLT_SOURCE_FOLDER;
  std::vector<SourceFile> tree;
  for (const char* folder : {"src", "tests", "fuzz", "bench"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
      const std::string extension = entry.path().extension().string();
      if (extension != ".h" && extension != ".cpp") continue;
      tree.push_back({entry.path().lexically_relative(root), ReadLines(entry.path())});
    }
  }
  std::sort(tree.begin(), tree.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
  return tree;
}

std::vector<std::string> CodeOnly(const std::vector<std::string>& lines) {
  std::vector<std::string> code;
  code.reserve(lines.size());
  for (const std::string& line : lines) code.push_back(CodeOfLine(line));
  return code;
}

}  // namespace tarvolt
