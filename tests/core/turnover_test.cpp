// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "station/on_a_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using Turnover = OnAStation;

// For files whose names do not sort as they were written.
std::vector<double> Sorted(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values;
}

TEST_F(Turnover, AFullStoreStartsANewLogAndLosesNothing) {
  station.Set("MaxArrayCount", 10).StartChart().RunForSets(25);
  ASSERT_EQ(station.FilesSaved().size(), 2u);
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved()[0]).size(), 10u);
  EXPECT_EQ(station.FirstChannelInFilesAndStore(), Ramp(25));
  EXPECT_TRUE(station.Running());
  station.StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 3u);
  EXPECT_EQ(station.FirstChannelInFilesAndStore(), Ramp(25));
}

TEST_F(Turnover, ATimedLogEndsAfterItsDuration) {
  station.Set("MaxDuration", "0.000694444444444444").StartChart();  // one minute
  station.RunFor(185s).StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 4u);
  EXPECT_NEAR(static_cast<double>(station.FirstChannelIn(station.FilesSaved()[1]).size()), 600, 1);
  const std::vector<double> all = station.FirstChannelInFilesAndStore();
  EXPECT_EQ(all, Ramp(static_cast<int>(all.size())));
}

TEST_F(Turnover, APlannedRestartEndsTheLogAtItsTimeOfDay) {
  Station other(1, {2010, 1, 2, 23, 59, 0, 0});
  other.Set("UseRestartTime", true).Set("RestartTime", "00:00:30").StartChart().RunFor(3min).StopChart();
  ASSERT_EQ(other.FilesSaved().size(), 2u);
  EXPECT_NE(other.FilesSaved()[1].find("UT100103000030"), std::string::npos) << other.FilesSaved()[1];
  const std::vector<double> all = other.FirstChannelInFilesAndStore();
  EXPECT_EQ(all, Ramp(static_cast<int>(all.size())));
}

TEST_F(Turnover, WithoutContinuousTheRunStopsAndSaves) {
  station.Set("MaxArrayCount", 10).Set("Continuous", false).StartChart().RunForSets(25);
  EXPECT_FALSE(station.Running());
  EXPECT_NE(station.View().Title.find("  Logging Stopped."), std::string::npos);
  EXPECT_EQ(station.OnlySaved(), Ramp(10));
  station.Set("Continuous", true).StartChart().RunForSets(40);
  EXPECT_TRUE(station.Running());
}

// Who wants a new log and no saving loses the old one: that is the rule.
TEST_F(Turnover, WithoutAutosaveAContinuousRunDropsItsFullLogs) {
  station.Set("MaxArrayCount", 10).Set("AutoSaveStandAlone", false).StartChart().RunForSets(25);
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.FilesSaved().empty());
  EXPECT_EQ(station.Run().Dcount, 5);
}

TEST_F(Turnover, TheThresholdSavesAtEquality) {
  station.Set("MaxArrayCount", 10).Set("SaveIF", 1).Set("SaveIFVal", 19).StartChart();
  station.RunForSets(20);  // 0..9 stay below, 10..19 reach 19
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved()[0])[0], 10);
}

TEST_F(Turnover, ALogOfTwoSamplesStopsTheRunForWantOfData) {
  station.Set("MaxArrayCount", 2).StartChart().RunForSets(4);
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.Logged(" Could Not Save File..No Data. "));
}

// Stamps that begin again at midnight, and a sidereal day that ends within a log.
TEST_F(Turnover, LogsWhoseStampsBeginAgainLoseNothing) {
  Station zero(1, {2010, 1, 2, 13, 20, 0, 0});
  zero.Set("TimeRefZero", true).Set("MaxArrayCount", 100).StartChart().RunForSets(350).StopChart();
  EXPECT_EQ(zero.FirstChannelInFilesAndStore(), Ramp(350));

  // Sidereal midnight at Greenwich falls at 17:12 UT on this day.
  Station sidereal(1, {2010, 1, 2, 17, 0, 0, 0});
  sidereal.uds.PushesEvery(10s);
  sidereal.Set("LogLMST", true).Set("MaxDuration", "0.0208333333333333").StartChart().RunForSets(720).StopChart();
  EXPECT_EQ(sidereal.FilesSaved().size(), 4u);
  EXPECT_EQ(Sorted(sidereal.FirstChannelInFilesAndStore()), Ramp(720));
}

// The source's clock is an hour ahead: a restart or a full log must not be due again with the next sample.
TEST_F(Turnover, ASourceAheadOfTheClockTurnsOverOnce) {
  Station other(1, {2010, 1, 2, 11, 59, 0, 0});
  other.uds.StampsWith([](std::int64_t set) { return StampOf({2010, 1, 2, 12, 59, 0, 0}) + set * 0.1 / 86400; });
  other.Set("UseRestartTime", true).Set("RestartTime", "13:00:00").StartChart().RunForSets(1200).StopChart();
  EXPECT_EQ(other.FilesSaved().size(), 2u);
  EXPECT_EQ(other.FirstChannelInFilesAndStore(), Ramp(1200));
}

TEST_F(Turnover, TwoLogsOfOneSecondDoNotShareAName) {
  station.uds.PushesEvery(10ms);
  station.Set("MaxArrayCount", 10).StartChart().RunForSets(200).StopChart();
  EXPECT_EQ(station.FilesSaved().size(), 20u);
  EXPECT_EQ(Sorted(station.FirstChannelInFilesAndStore()), Ramp(200));
}

}  // namespace
}  // namespace tarvolt
