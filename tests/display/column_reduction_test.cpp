// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/column_reduction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace tarvolt {
namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

bool Same(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

// Every sample looked at, one after the other.
std::map<int, PixelColumn> BruteForce(const StripChart& chart, double xMin, double xMax, int width) {
  std::map<int, PixelColumn> columns;
  for (std::int32_t i = 0; i < chart.Count(); ++i) {
    const double time = chart.GetTime(i);
    if (!(time >= xMin && time <= xMax)) continue;
    int x = 0;
    while (x < width - 1 && time >= xMin + (xMax - xMin) * (static_cast<double>(x + 1) / width)) ++x;
    const double value = chart.GetValue(0, i);
    if (columns.find(x) == columns.end()) {
      columns[x] = {
          x,    value, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), value,
          time, time};
    }
    PixelColumn& column = columns[x];
    column.last = value;
    column.lastTime = time;
    if (std::isnan(value)) continue;
    column.lowest = std::min(column.lowest, value);
    column.highest = std::max(column.highest, value);
  }
  return columns;
}

// Columns of several stretches of one pixel, put together.
std::map<int, PixelColumn> ByPixel(const std::vector<PixelColumn>& columns) {
  std::map<int, PixelColumn> byPixel;
  for (const PixelColumn& column : columns) {
    PixelColumn& all = byPixel.try_emplace(column.x, column).first->second;
    all.lowest = std::min(all.lowest, column.lowest);
    all.highest = std::max(all.highest, column.highest);
    all.last = column.last;
    all.lastTime = column.lastTime;
  }
  return byPixel;
}

// How the stamps of a round come: rising, with a few steps back, or in no order and with some that are no numbers.
double NextTime(double time, int kind, std::mt19937& engine) {
  if (kind == 2) return engine() % 20 == 0 ? kNotANumber : 40000 + engine() % 10'000 / 86400.0;
  if (kind == 1 && engine() % 1000 == 0) return 40000 + (time - 40000) * (engine() % 100) / 100;
  return time + (engine() % 7 == 0 ? 40.0 : engine() % 3) / 86400;  // gaps and equal stamps
}

TEST(ColumnReduction, ColumnsAgreeWithALookAtEverySample) {
  std::mt19937 engine(7);
  for (int round = 0; round < 240; ++round) {
    StripChart chart;
    const int samples = static_cast<int>(engine() % 5000);
    double time = 40000;
    for (int i = 0; i < samples; ++i) {
      time = NextTime(time, round % 3, engine);
      chart.AddTime(time);
      const bool hole = engine() % 50 == 0;
      const bool spike = engine() % 500 == 0;
      chart.SetValue(0, i, hole ? kNotANumber : spike ? 1e300 : engine() % 1000 / 10.0);
    }
    const double span = std::max(chart.Samples().TimeSpan().highest - 40000, 0.0) + 1e-9;
    const double xMin = 40000 + span * (engine() % 100) / 200;
    const double xMax = xMin + span * (1 + engine() % 100) / 100;
    const int width = 30 + static_cast<int>(engine() % 600);  // few samples a column, so that edges are exact
    const auto expected = BruteForce(chart, xMin, xMax, width);
    const auto columns = ReduceToColumns(chart, 0, FindColumnEdges(chart, xMin, xMax, width));
    const auto byPixel = ByPixel(columns);
    ASSERT_EQ(byPixel.size(), expected.size()) << round;
    if (chart.Samples().TimesRise()) {
      ASSERT_EQ(columns.size(), expected.size()) << round;
    }
    for (const auto& [x, column] : byPixel) {
      ASSERT_EQ(expected.count(column.x), 1u) << round << " column " << column.x;
      const PixelColumn& wanted = expected.at(column.x);
      EXPECT_TRUE(column.firstTime == wanted.firstTime && column.lastTime == wanted.lastTime) << round;
      EXPECT_TRUE(Same(column.first, wanted.first) && Same(column.last, wanted.last)) << round << " " << column.x;
      if (wanted.lowest > wanted.highest) {
        EXPECT_GT(column.lowest, column.highest) << "no sample of the column is a number";
      } else {
        EXPECT_TRUE(column.lowest == wanted.lowest && column.highest == wanted.highest) << round << " " << column.x;
      }
    }
  }
}

TEST(ColumnReduction, EdgesOfDenseColumnsMoveBySixteenthsAndLoseNothing) {
  StripChart chart;
  constexpr int kSamples = 100'000;
  for (int i = 0; i < kSamples; ++i) {
    chart.AddTime(i);
    chart.SetValue(0, i, i == 77'777 ? 1e9 : i % 10);
  }
  for (const int width : {1, 3, 50, 190, 199}) {
    const ColumnEdges edges = FindColumnEdges(chart, 0.5, kSamples - 1, width);
    ASSERT_EQ(edges.spans.size(), static_cast<std::size_t>(width));
    EXPECT_EQ(edges.spans.front().begin, 1);
    EXPECT_EQ(edges.spans.back().end, kSamples) << "the last sample lies on the right edge";
    for (int x = 1; x < width; ++x) {
      const double exact = 0.5 + (kSamples - 1.5) * x / width;
      EXPECT_EQ(edges.spans[x].begin, edges.spans[x - 1].end);
      EXPECT_LE(edges.spans[x].begin, exact + 1);
      EXPECT_GE(edges.spans[x].begin, exact - 1 - kSamples / width / 16.0);
    }
    double highest = 0;
    for (const PixelColumn& column : ReduceToColumns(chart, 0, edges)) highest = std::max(highest, column.highest);
    EXPECT_EQ(highest, 1e9);
  }
}

TEST(ColumnReduction, ASteppedClockIsDrawnInTheOrderOfTheSamplesUnlessItStepsTooOften) {
  StripChart twice;
  for (int i = 0; i < 200; ++i) twice.AddTime(i % 100);
  const auto columns = ReduceToColumns(twice, 0, FindColumnEdges(twice, 0, 99, 10));
  ASSERT_EQ(columns.size(), 20u);
  EXPECT_EQ(columns[9].x, 9);
  EXPECT_EQ(columns[10].x, 0) << "each pass has its own line";
  StripChart often;
  for (int i = 0; i < 2000; ++i) often.AddTime(i % 2 * 99);
  EXPECT_EQ(ReduceToColumns(often, 0, FindColumnEdges(often, 0, 99, 10)).size(), 2u);
}

TEST(ColumnReduction, NothingComesOfNothing) {
  StripChart chart;
  EXPECT_TRUE(ReduceToColumns(chart, 0, FindColumnEdges(chart, 0, 1, 100)).empty());
  chart.AddTime(1);
  EXPECT_TRUE(ReduceToColumns(chart, 0, FindColumnEdges(chart, 1, 1, 100)).empty()) << "no width";
  EXPECT_TRUE(ReduceToColumns(chart, 0, FindColumnEdges(chart, 0, 2, 0)).empty()) << "no pixels";
  EXPECT_TRUE(ReduceToColumns(chart, 3, FindColumnEdges(chart, 0, 2, 10)).empty()) << "no such channel";
  EXPECT_EQ(ReduceToColumns(chart, 0, FindColumnEdges(chart, 0, 1, 10)).at(0).x, 9)
      << "the right edge belongs to the last column";
}

}  // namespace
}  // namespace tarvolt
