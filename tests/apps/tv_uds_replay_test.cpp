// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <sstream>

#include "apps/tv-uds/signals/replay_source.h"

namespace tarvolt::uds {
namespace {

std::unique_ptr<ReplaySource> Read(const std::string& text, std::string& why) {
  std::istringstream stream(text);
  return ReplaySource::Read(stream, why);
}

TEST(TvUdsReplay, ReadsTheSetsOfEveryForm) {
  std::string why;
  const auto replay = Read("# day 1\n\n1 -2.5\t+3e-2\r\n4,5 ;\t6  # cloudy\n   # more\n  .5; 1E3,-0 \n7 8 9", why);
  ASSERT_TRUE(replay) << why;
  EXPECT_EQ(replay->Channels(), 3);
  EXPECT_EQ(replay->Set(0), (std::vector<double>{1, -2.5, 0.03}));
  EXPECT_EQ(replay->Set(1), (std::vector<double>{4, 5, 6}));
  EXPECT_EQ(replay->Set(2), (std::vector<double>{0.5, 1000, 0}));
  EXPECT_EQ(replay->Set(3), (std::vector<double>{7, 8, 9}));
  EXPECT_EQ(replay->Set(4), std::nullopt);
  EXPECT_EQ(replay->Set(-1), std::nullopt);
  EXPECT_TRUE(replay->KeepsEverySet());
}

TEST(TvUdsReplay, NamesTheBadLine) {
  std::string longest = "1 2";
  longest.insert(longest.begin(), ReplaySource::kLongestLine - 3, ' ');
  const struct {
    std::string lines;
    const char* why;
  } cases[] = {
      {"1,,2", "line 3: not numbers alone"},
      {",1,2", "line 3: not numbers alone"},
      {"1 2x", "line 3: not numbers alone"},
      {"1 nan", "line 3: not numbers alone"},
      {"1 1e999", "line 3: not numbers alone"},
      {"1 +-2", "line 3: not numbers alone"},
      {"1 0x10", "line 3: not numbers alone"},
      {std::string("1 2\0junk", 8), "line 3: not numbers alone"},
      {"1", "line 3: 1 values, but 2 in the lines before"},
      {"1 2 3 4 5 6 7 8 9", "line 3: more than 8 values"},
      {longest + " ", "line 3: longer than 4096 characters"},
  };
  for (const auto& c : cases) {
    std::string why;
    EXPECT_FALSE(Read("10 20\n# fine\n" + c.lines + "\n30 40\n", why)) << c.lines;
    EXPECT_EQ(why, c.why);
  }
  std::string why;
  EXPECT_TRUE(Read(longest + "\n3 4\n" + longest, why)) << why;
  EXPECT_FALSE(Read("# nothing\n\n", why));
  EXPECT_EQ(why, "there are no numbers in it");
}

}  // namespace
}  // namespace tarvolt::uds
