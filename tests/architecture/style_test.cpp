// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <regex>

#include "architecture/source_tree.h"

namespace tarvolt {
namespace {

constexpr std::size_t kLongestFile = 400;

void ExpectAbsent(const SourceFile& file, const std::string& pattern, const std::string& why) {
  const std::regex banned(pattern);
  const std::vector<std::string> code = CodeOnly(file.lines);
  for (std::size_t i = 0; i < code.size(); ++i) {
    EXPECT_FALSE(std::regex_search(code[i], banned)) << file.path << ":" << i + 1 << " " << why << "\n"
                                                     << file.lines[i];
  }
}

TEST(Style, FilesHaveOneSubject) {
  for (const SourceFile& file : ReadSourceTree()) EXPECT_LE(file.lines.size(), kLongestFile) << file.path;
}

TEST(Style, NumbersBecomeTextInOnePlace) {
  for (const SourceFile& file : ReadSourceTree()) {
    if (file.Floor().empty()) continue;
    ExpectAbsent(file, "std::to_string|setlocale|stringstream", "numbers go through text/");
  }
}

TEST(Style, OnlyTheHostWaitsAndOnlyProgramsPrint) {
  for (const SourceFile& file : ReadSourceTree()) {
    const std::string floor = file.Floor();
    if (floor.empty()) continue;
    if (floor != "apps") ExpectAbsent(file, "\\bprintf\\s*\\(|std::cout|std::cerr", "printing is for programs");
    if (floor != "apps" && floor != "host") {
      ExpectAbsent(file, "sleep_for|\\bu?sleep\\s*\\(|std::thread|std::mutex", "one thread, and waits yield");
    }
  }
}

TEST(Style, NoGlobalStateAndNoFriendsForTests) {
  for (const SourceFile& file : ReadSourceTree()) {
    if (file.Floor().empty()) continue;
    ExpectAbsent(file, "FRIEND_TEST|\\bfriend class\\b", "tests use what is public");
    ExpectAbsent(file, "^(static|inline|extern) (?!constexpr|const\\b)[A-Za-z:<>_0-9]+ [A-Za-z_0-9]+( = .*|\\{.*)?;$",
                 "no global variables");
  }
}

TEST(Style, SourcesArePlainUtf8WithoutTabs) {
  for (const SourceFile& file : ReadSourceTree()) {
    for (const std::string& line : file.lines) {
      EXPECT_EQ(line.find('\t'), std::string::npos) << file.path << ": " << line;
      EXPECT_EQ(line.find('\r'), std::string::npos) << file.path << ": " << line;
    }
  }
}

}  // namespace
}  // namespace tarvolt
