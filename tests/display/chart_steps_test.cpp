// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/chart_steps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace tarvolt {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

StripChart ChartOf(int samples) {
  StripChart chart;
  chart.SetChannelCount(2);
  for (int i = 0; i < samples; ++i) {
    chart.AddTime(100 + i);
    chart.SetValue(0, i, i);
    chart.SetValue(1, i, -2.0 * i);
  }
  return chart;
}

TEST(ChartSteps, XStepsKeepTheLeftSideAndMoveByHalfThePercentage) {
  StripChart chart = ChartOf(10);
  SetRange(chart, {100, 108, 0, 1});
  IncX(chart, 25);
  EXPECT_EQ(RangeOf(chart), (ChartRange{100, 109, 0, 1}));
  SetRange(chart, {100, 108, 0, 1});
  DecX(chart, 100);
  EXPECT_EQ(RangeOf(chart), (ChartRange{100, 104, 0, 1})) << "100 per cent halves";
  DecX(chart, 32000);
  EXPECT_GT(chart.XAxisMax, chart.XAxisMin) << "no step turns the range over";
}

TEST(ChartSteps, YStepsAreAboutTheMiddleButABottomAtZeroStays) {
  StripChart chart;
  SetRange(chart, {0, 1, 10, 20});
  IncY(chart, 100);
  EXPECT_EQ(RangeOf(chart), (ChartRange{0, 1, 7.5, 22.5}));
  SetRange(chart, {0, 1, 0, 8});
  DecY(chart, 50);
  EXPECT_EQ(RangeOf(chart), (ChartRange{0, 1, 0, 6}));
  SetRange(chart, {0, 1, -4, 8});
  IncY(chart, 50);
  EXPECT_EQ(RangeOf(chart), (ChartRange{0, 1, -5, 10}));
  SetRange(chart, {0, 1, -1e308, 1e308});
  for (int i = 0; i < 20; ++i) IncY(chart, 100);
  EXPECT_TRUE(std::isfinite(chart.YAxisMax - chart.YAxisMin) || std::isfinite(chart.YAxisMax));
}

TEST(ChartSteps, ScrollingMovesAQuarterAndNotPastTheData) {
  StripChart chart = ChartOf(101);  // times 100 to 200
  SetRange(chart, {140, 160, 0, 8});
  ScrollLeft(chart);
  EXPECT_EQ(RangeOf(chart), (ChartRange{135, 155, 0, 8}));
  SetRange(chart, {103, 123, 0, 8});
  ScrollLeft(chart);
  EXPECT_EQ(RangeOf(chart), (ChartRange{100, 120, 0, 8}));
  ScrollLeft(chart);
  EXPECT_EQ(chart.XAxisMin, 100);
  SetRange(chart, {178, 198, 0, 8});
  ScrollRight(chart);
  EXPECT_EQ(RangeOf(chart), (ChartRange{180, 200, 0, 8}));
  SetRange(chart, {50, 70, 0, 8});
  ScrollLeft(chart);
  EXPECT_EQ(chart.XAxisMin, 50) << "a view before the data stays";
  ScrollUp(chart);
  EXPECT_EQ(chart.YAxisMin, 2);
  ScrollDown(chart);
  ScrollDown(chart);
  EXPECT_EQ(chart.YAxisMin, -2);
  StripChart empty;
  ScrollLeft(empty);
  ScrollRight(empty);
  EXPECT_EQ(RangeOf(empty), ChartRange());
}

TEST(ChartSteps, ARangeOfNoHeightGetsATenthOnEachSide) {
  StripChart chart;
  SetRange(chart, {0, 1, 5, 5});
  EXPECT_DOUBLE_EQ(chart.YAxisMin, 4.9);
  EXPECT_DOUBLE_EQ(chart.YAxisMax, 5.1);
  SetRange(chart, {0, kInfinity, 1, 2});
  EXPECT_EQ(chart.XAxisMax, 1) << "what is not finite leaves its axis";
  EXPECT_EQ(chart.YAxisMax, 2);
  SetRange(chart, {0, 1, std::nan(""), 3});
  EXPECT_EQ(chart.YAxisMax, 2);
}

TEST(ChartSteps, FittingTakesTheActiveChannelsOnly) {
  StripChart chart = ChartOf(5);
  FitY(chart, 1);
  EXPECT_EQ(chart.YAxisMin, 0);
  EXPECT_EQ(chart.YAxisMax, 4);
  FitY(chart, 2);
  EXPECT_EQ(chart.YAxisMin, -8);
  FitX(chart);
  EXPECT_EQ(chart.XAxisMin, 100);
  EXPECT_EQ(chart.XAxisMax, 104);
  StripChart one = ChartOf(1);
  FitX(one);
  FitY(one, 2);
  EXPECT_EQ(one.XAxisMin, one.XAxisMax) << "one sample has no width";
  EXPECT_EQ(one.YAxisMax, 0.1);
}

TEST(ChartSteps, FollowingMovesTheViewOnlyWhenTheNewestLeavesIt) {
  StripChart chart = ChartOf(11);  // newest at 110
  chart.AutoScroll = true;
  chart.Mode = ChartMode::Tracking;
  SetRange(chart, {100, 112, 0, 1});
  FollowNewest(chart);
  EXPECT_EQ(chart.XAxisMin, 100);
  SetRange(chart, {100, 104, 0, 1});
  FollowNewest(chart);
  EXPECT_EQ(RangeOf(chart), (ChartRange{106, 110, 0, 1}));
  for (const bool browsing : {true, false}) {
    SetRange(chart, {100, 104, 0, 1});
    chart.Mode = browsing ? ChartMode::Browsing : ChartMode::Tracking;
    chart.AutoScroll = browsing;
    FollowNewest(chart);
    EXPECT_EQ(chart.XAxisMax, 104);
  }
}

StripChart ChartOfTimes(const std::vector<double>& times) {
  StripChart chart;
  for (const double time : times) chart.AddTime(time);
  return chart;
}

TEST(ChartSteps, IndicesOfTheViewAgreeWithAWalkFromTheFirstSample) {
  const double nan = std::nan("");
  for (const auto& times : std::vector<std::vector<double>>{
           {1, 2, 2, 2, 5, 7}, {1, 2, 5, 7, 3, 4, 6}, {nan, 5, 4, nan, 2, 3, nan}, {1, nan}, {nan}, {3, 2}}) {
    StripChart chart = ChartOfTimes(times);
    for (double left = 0; left <= 8; left += 0.5) {
      for (double right = left; right <= 9; right += 0.5) {
        SetRange(chart, {left, right, 0, 1});
        std::int32_t first = chart.Count() - 1;
        std::int32_t last = -1;
        for (std::int32_t i = chart.Count() - 1; i >= 0; --i)
          if (chart.GetTime(i) >= left) first = i;
        for (std::int32_t i = 0; i < chart.Count(); ++i)
          if (chart.GetTime(i) <= right) last = i;
        EXPECT_EQ(FindXaxisMinIndex(chart), first) << left;
        EXPECT_EQ(FindXaxisMaxIndex(chart), last) << right;
      }
    }
  }
  const StripChart rising = ChartOfTimes({1, 2, 2, 2, 5, 7});
  EXPECT_EQ(NearestIndex(rising, 3.4), 3);
  EXPECT_EQ(NearestIndex(rising, 3.6), 4);
  EXPECT_EQ(NearestIndex(rising, -9), 0);
  EXPECT_EQ(NearestIndex(rising, 99), 5);
  EXPECT_EQ(NearestIndex(StripChart(), 1), -1);
}

TEST(ChartSteps, TimesThatStepBackAreSeenWhole) {
  const double nan = std::nan("");
  StripChart chart = ChartOfTimes({10, 20, 30, 5, nan, 15, 40, 26});
  EXPECT_EQ(chart.Samples().FirstStepBack(), 3);
  FitX(chart);
  EXPECT_EQ(chart.XAxisMin, 5);
  EXPECT_EQ(chart.XAxisMax, 40);
  EXPECT_EQ(NearestIndex(chart, 14), 5);
  EXPECT_EQ(NearestIndex(chart, -9), 3);
  EXPECT_EQ(NearestIndex(chart, 27), 7);
  EXPECT_EQ(NearestIndex(ChartOfTimes({nan, nan}), 1), 0);
  SetRange(chart, {20, 28, 0, 1});
  for (int i = 0; i < 9; ++i) ScrollRight(chart);
  EXPECT_EQ(chart.XAxisMax, 40);
  for (int i = 0; i < 20; ++i) ScrollLeft(chart);
  EXPECT_EQ(chart.XAxisMin, 5);
  EXPECT_TRUE(ChartOfTimes({1, 1, 2}).Samples().TimesRise()) << "equal stamps are no step";
  chart.ClearData();
  chart.AddTime(1);
  EXPECT_TRUE(chart.Samples().TimesRise()) << "of the samples that are there";
}

}  // namespace
}  // namespace tarvolt
