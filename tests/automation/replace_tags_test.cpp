// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/replace_tags.h"

#include <gtest/gtest.h>

#include "sim/sim_host.h"

namespace tarvolt {
namespace {

class ReplaceTagsTest : public ::testing::Test {
 protected:
  ReplaceTagsTest() : host(1, {2026, 3, 9, 7, 5, 4, 0}) {
    run.TotalSamples = 41;
    run.time.utOffset = 1.0 / 24;
  }
  std::string Expand(std::string_view text) { return ReplaceTags(text, host.Record(), run); }

  SimHost host;
  RunState run;
};

TEST_F(ReplaceTagsTest, EveryTagIsExpandedWhereverItStands) {
  EXPECT_EQ(Expand("a[SAMPLE NUMBER],[SAMPLE NUMBER]"), "a 41, 41");
  EXPECT_EQ(Expand("[DATE TIME] [DATE TIME]"), "260309080504 260309080504") << "in the base of the log";
  EXPECT_EQ(Expand("at [DATE FORMAT yyyy/mm/dd hh:nn:ss] UT"), "at 2026/03/09 08:05:04 UT");
  EXPECT_EQ(Expand("<[INTERNET IP]>"), "<" + host.network.LocalAddress() + ">");
}

TEST_F(ReplaceTagsTest, OtherBracketsStay) {
  for (const char* text : {"", "[x] > [5]", "[sample number]", "[SAMPLE NUMBER", "[DATE TIM]"}) {
    EXPECT_EQ(Expand(text), text);
  }
}

TEST_F(ReplaceTagsTest, ADateFormatTakesAllClosingBracketsWithIt) {
  EXPECT_EQ(Expand("[a] [DATE FORMAT hh][b]"), "[a 08[b");
  EXPECT_EQ(Expand("[DATE FORMAT hh] [DATE FORMAT nn]"), "08 nn") << "only the first is filled in";
  EXPECT_EQ(Expand("[DATE FORMAT hh] [DATE TIME]"), "08 [DATE TIME");
  EXPECT_EQ(Expand("[DATE FORMAT hh"), "hh") << "one that does not close";
}

}  // namespace
}  // namespace tarvolt
