// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/strip_chart.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

namespace tarvolt {
namespace {

StripChart ChartOf(int channels, int samples) {
  StripChart chart;
  chart.SetChannelCount(channels);
  for (int i = 0; i < samples; ++i) {
    const std::int32_t index = chart.AddTime(1000 + i);
    for (int channel = 0; channel < channels; ++channel) chart.SetValue(channel, index, 10 * channel + i);
  }
  return chart;
}

TEST(StripChart, AFullStoreRefusesSamplesAndKeepsWhatItHas) {
  StripChart chart = ChartOf(1, 3);
  chart.SetCapacity(4);
  EXPECT_EQ(chart.AddTime(1003), 3);
  EXPECT_EQ(chart.AddTime(1004), 4) << "refused: the index is the count";
  chart.SetValue(0, 4, 77);
  EXPECT_EQ(chart.Count(), 4);
  EXPECT_EQ(chart.DataMax(), 2);
  chart.SetCapacity(-1);
  EXPECT_EQ(chart.AddTime(1004), 4);
  EXPECT_EQ(chart.Count(), 4) << "a smaller capacity drops nothing";
  EXPECT_EQ(chart.GetTime(3), 1003);
}

TEST(StripChart, AnIndexWithoutASampleIsNamedForTimesAndHarmlessForValues) {
  StripChart chart = ChartOf(2, 2);
  for (const std::int32_t index : {-1, 2, std::numeric_limits<std::int32_t>::max()}) {
    try {
      chart.GetTime(index);
      FAIL() << index;
    } catch (const std::out_of_range& error) {
      EXPECT_NE(std::string(error.what()).find("TIME INDEX"), std::string::npos);
    }
    chart.SetValue(0, index, 5);
    EXPECT_EQ(chart.GetValue(0, index), 0);
  }
  for (const int channel : {-1, 2}) {
    chart.SetValue(channel, 0, 1e9);
    EXPECT_EQ(chart.GetValue(channel, 0), 0);
    EXPECT_EQ(chart.ChannelMax(channel), 0);
    EXPECT_TRUE(chart.Range(channel, 0, 1).IsEmpty());
  }
  EXPECT_EQ(chart.DataMax(), 11);
}

TEST(StripChart, RangesOfTheDataFollowTheValuesThatWereWritten) {
  StripChart chart;
  EXPECT_EQ(chart.DataMin(), 0);
  EXPECT_EQ(chart.DataMax(), 0);
  chart.SetChannelCount(2);
  chart.AddTime(1);
  EXPECT_EQ(chart.DataMin(), 0);
  chart.SetValue(0, 0, 50);
  EXPECT_EQ(chart.DataMin(), 50) << "the second channel's unwritten 0 does not count";
  EXPECT_EQ(chart.ChannelMin(1), 0);
  chart.SetValue(1, 0, -3);
  EXPECT_EQ(chart.DataMin(), -3);
  EXPECT_EQ(chart.DataMax(), 50);
  EXPECT_EQ(chart.ChannelMin(0), 50);
  EXPECT_EQ(chart.ChannelMax(1), -3);
  EXPECT_EQ(chart.Range(0, -5, 5), (MinMax{50, 50})) << "cut to the store";
  EXPECT_TRUE(chart.Range(0, 1, 0).IsEmpty());
}

TEST(StripChart, ClearedAndTakenStoresKeepTheirChannelsAndCapacity) {
  StripChart chart = ChartOf(3, 5);
  chart.SetCapacity(6);
  chart.SetChannelCount(1);
  EXPECT_EQ(chart.ChannelCount(), 3) << "samples are stored";

  const SampleColumns taken = chart.TakeSamples();
  EXPECT_EQ(taken.Count(), 5);
  EXPECT_EQ(taken.Value(2, 4), 24);
  EXPECT_EQ(chart.Count(), 0);
  EXPECT_EQ(chart.DataMax(), 0);

  chart.SetValue(2, chart.AddTime(2000), 8);
  EXPECT_EQ(chart.ChannelMax(2), 8);
  chart.ClearData();
  EXPECT_EQ(chart.Count(), 0);
  EXPECT_EQ(chart.Capacity(), 6);
  chart.SetChannelCount(0);
  EXPECT_EQ(chart.ChannelCount(), 1);
  chart.SetChannelCount(100);
  EXPECT_EQ(chart.ChannelCount(), StripChart::kMaxChannels);
}

TEST(StripChart, SamplesAskForNoRepaintButClearingDoes) {
  StripChart chart;
  const auto before = chart.RepaintRequests;
  chart.SetValue(0, chart.AddTime(1), 4);
  EXPECT_EQ(chart.RepaintRequests, before);
  chart.ClearData();
  EXPECT_NE(chart.RepaintRequests, before);
}

}  // namespace
}  // namespace tarvolt
