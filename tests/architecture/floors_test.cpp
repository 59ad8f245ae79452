// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <regex>
#include <set>

#include "architecture/source_tree.h"

namespace tarvolt {
namespace {

const std::map<std::string, int> kFloors = {
    {"platform", 1}, {"text", 1},       {"timebase", 2}, {"config", 2},  {"host", 2}, {"display", 3},
    {"logs", 3},     {"model", 4},      {"files", 5},    {"sources", 5}, {"net", 6},  {"audio", 6},
    {"analysis", 6}, {"automation", 7}, {"core", 8},     {"forms", 9},   {"apps", 10}};

TEST(Floors, EveryFolderOfTheSourceHasItsFloor) {
  std::set<std::string> seen;
  for (const SourceFile& file : ReadSourceTree()) {
    const std::string floor = file.Floor();
    if (floor.empty()) continue;
    seen.insert(floor);
    EXPECT_TRUE(kFloors.count(floor)) << file.path;
  }
  EXPECT_TRUE(seen.count("core") && seen.count("platform")) << "the tree was not read";
}

TEST(Floors, NoIncludeRunsUpOrSideways) {
  for (const SourceFile& file : ReadSourceTree()) {
    const std::string floor = file.Floor();
    if (floor.empty()) continue;
    for (const std::string& path : file.Includes()) {
      const std::string included = path.substr(0, path.find('/'));
      if (included == floor || kFloors.count(included) == 0) continue;
      EXPECT_LT(kFloors.at(included), kFloors.at(floor)) << file.path << ": " << path;
      EXPECT_TRUE(included != "host" || floor == "apps") << file.path << ": " << path;
    }
  }
}

// The codec of data files works on bytes and values alone, so that any program can use it.
TEST(Floors, TheFileFormatKnowsNeitherWindowNorSettings) {
  static const std::regex kPure(
      "(text|timebase|platform|files/format)/.*|display/sample_columns\\.h|logs/(metadata|notations)\\.h|"
      "model/data_file_header\\.h");
  std::size_t includes = 0;
  for (const SourceFile& file : ReadSourceTree()) {
    if (!file.path.generic_string().starts_with("src/files/format/")) continue;
    includes += file.Includes().size();
    for (const std::string& path : file.Includes()) EXPECT_TRUE(std::regex_match(path, kPure)) << file.path << path;
  }
  EXPECT_GT(includes, 0u) << "the folder was not read";
}

TEST(Floors, OnlyTheEdgesKnowQt) {
  static const std::regex kQt("^\\s*#include <Q[A-Za-z]");
  const std::set<std::string> edges = {"host", "forms", "apps"};
  for (const SourceFile& file : ReadSourceTree()) {
    if (file.Floor().empty() || edges.count(file.Floor())) continue;
    for (const std::string& line : file.lines) EXPECT_FALSE(std::regex_search(line, kQt)) << file.path << ": " << line;
  }
}

TEST(Floors, PlatformHoldsNoCode) {
  for (const SourceFile& file : ReadSourceTree()) {
    if (file.Floor() != "platform") continue;
    EXPECT_EQ(file.path.extension(), ".h") << file.path;
  }
}

// Two headers that include each other, directly or by a detour, make a circle.
TEST(Floors, NoCircleOfHeaders) {
  std::map<std::string, std::vector<std::string>> includes;
  for (const SourceFile& file : ReadSourceTree()) {
    if (file.Floor().empty() || file.path.extension() != ".h") continue;
    includes[file.path.lexically_relative("src").string()] = file.Includes();
  }
  std::map<std::string, int> state;  // 1 being walked, 2 done
  std::function<bool(const std::string&)> circles = [&](const std::string& header) {
    if (state[header] == 2) return false;
    if (state[header] == 1) return true;
    state[header] = 1;
    for (const std::string& next : includes[header]) {
      if (circles(next)) return true;
    }
    state[header] = 2;
    return false;
  };
  std::vector<std::string> headers;
  for (const auto& [header, list] : includes) headers.push_back(header);
  for (const std::string& header : headers) EXPECT_FALSE(circles(header)) << header;
}

}  // namespace
}  // namespace tarvolt
